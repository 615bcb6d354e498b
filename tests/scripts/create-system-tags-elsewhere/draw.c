int draw(void) { shapes(); }
