int draw(void) { return a; }
