int Bar();
