// Functions, types and variables of C inside of implementations, and texts that look like something else.
@interface Mixed
typedef int InsideInterface;
- (int) a;
enum { kInsideInterface = 3 - 1 };
extern int FunctionInsideInterface(int x);
- (int) b;
static inline int DefinedInsideInterface(int x) { return x - 1; }
- (int) c;
@end

#define BODY(x)   \
    {             \
        return x; \
    }
#define METHOD_IN_A_MACRO - (int) hidden { return 0; }

@implementation Mixed
static int counter = 1
    - 2;
static int table[] = { 1, 2,
- 3 };
static const char *text = "- (int) inText { \
@end";
- (int) a { return '{' - '}' + '"' + '\''; }
static int Helper(int x)
{
    if (x) {
        return x
- (3);
    }
    return 0; // }
}
int (*pointer)(int) = Helper;
- (int) b /* { */
{
    const char *s = "}"; /* } */
    return s[0] + "@end"[1]; // @end {
}
struct Record { int x; };
typedef struct { int y; } Unnamed;
#if 0
- (int) putAway { don't care
@end
#endif
- (int) c
{
    id block = ^(int x) { return x; };
    @try { [self a]; } @catch (Mixed *m) { @throw; } @finally { }
    @synchronized(self) { SEL s = @selector(a:b:); }
    const char *type = @encode(struct { int x; });
    return 0;
}
union Both { int x; char y; } both;
METHOD_IN_A_MACRO
- (int) d BODY(3)
- (int) e
#ifdef NEVER
{
    if (1) {
#else
{
    if (0) {
#endif
    }
    return 0;
}
int FunctionAfter(void) { return 1; }
@end
int FunctionOutside(void) { return 2; }
