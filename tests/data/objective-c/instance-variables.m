#define IBOutlet
#define UNUSED __attribute__((unused))
#define EXPOSE(x) 1
#define HIDDEN_VARIABLE(x) int x;
@protocol P
@end
typedef unsigned char BOOL;
@class Other;
@interface Variables
{
    int a, *b, c[3], (*d)[4], **e;
    unsigned flag:1, other:2, :3;
    unsigned int : 0;
@private
    struct Named { int x; struct Inner { int y; } inner; } named, *pointer;
    struct { int x, y; } unnamed;
    union { int x; char y; } either;
    enum Colour { Red, Green } colour;
    struct Named again, *andAgain;
@protected
    void (*function)(int a, char b);
    int (*(*functionOfFunction)(int a))(char b);
    void (^block)(int a);
    void (^blocks[3])(int a);
    @public
    id<P> protocol;
    Other<P> *other_;
    id <P> one, two;
    IBOutlet Other *outlet;
    IBOutlet BOOL FLAG;
    BOOL URL;
    Other *attribute __attribute__((unused)), *second UNUSED;
    __weak id weak;
    Other * const constant;
    unsigned long long int words;
    long LONG;
    const volatile int qualified;
    __typeof__(1 + 2) typeOf;
    _Atomic(int) atomic;
#if EXPOSE(Variables)
    int exposed;
#else
    int hiddenOtherwise
#endif
    ; int after;
    HIDDEN_VARIABLE(hidden)
    int last
    ;
@package
}
- (void) method;
@end
@interface NoVariables : Variables { }
@end
@interface NotEven : Variables
- (void) method;
@end
@implementation NoVariables { int ofAnImplementation; }
- (void) method { int local; { } }
@end
@implementation NotEven
{
@public
    int publicOfAnImplementation;
}
- (void) method { }
@end
