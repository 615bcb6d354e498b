int main(void) { puts("x"); printf("y"); }
