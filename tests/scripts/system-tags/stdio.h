int puts(const char* text);
int printf(const char* format, ...);
