struct Point { int x, y; };
int area(struct Point corner);
int height(struct Point corner);
struct Point origin(void);
