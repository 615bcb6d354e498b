int draw(void) { shapes(); view(); }
