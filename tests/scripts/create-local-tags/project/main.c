int main(void) { shapes(); }
