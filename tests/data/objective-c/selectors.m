#define UNUSED __attribute__((unused))
#define AVAILABLE(from, to) __attribute__((deprecated("from " #from)))
#define IN
#define NORETURN __attribute__((noreturn))

@interface Selectors
- withoutType;
- withoutType: argument;
+ withoutType: argument second: another;
- (void) first: (int)a
        second: (char *)b
         third: (id)c;
- (void)
    onAnotherLine
    : (int)a // a comment: (int)b
    andAgain /* and another: */ : (int)b;
- (void) unnamed: (int)a : (int)b : (int)c;
- (void) : (int)a : (int)b;
- :a;
- (void) variadic: (id)a, ...;
- (void) variadic: (id)a and: (id)b, ... __attribute__((sentinel));
- (void (*)(int a, char b)) givesAFunction: (int (*)(id, id))function context: (void *)c;
- (void (^)(int)) givesABlock: (void (^)(id a, int *stop))block;
- (void) for: (id)a if: (id)b while: (id)c;
- (id) class;
- (oneway void) oneway: (in id)a out: (out id *)b inout: (inout id *)c by: (bycopy id)d;
- (const char *) URL AVAILABLE(10.1, 10.2);
- (int) DEPRECATED UNUSED;
- (int) a: (int)a UNUSED;
- (int) b: (int)a AVAILABLE(1, 2);
- (int) c: (int)__attribute__((unused))a d: (int)b;
- (int) e: (IN int)a f: (int[])b;
- (void) __attribute__((noreturn)) exit;
- (void) leave NORETURN;
- (struct Size { int width; int height; }) size;
- (enum Colour { Red, Green }) colour: (struct { int x; } *)a;
-(void)close:(int)a;-(void)closer:(int)a b:(int)c;+(void)closest;
- (void) split\
Name: (int)a;
- (void) $dollar: (int)a _under: (int)b é: (int)c;
- (id) nullable: (nullable id)a NSURL: (id)b;
- (instancetype) init;
@end

@implementation Selectors
- withoutType { return self; }
- withoutType: argument { return argument; }
+ withoutType: argument second: another { return another; }
- (void) first: (int)a
        second: (char *)b
         third: (id)c
{
    [self first: a - 1 second: b
           third: c];
    int x = a
- (int)b;
    x = a
+ (int)b;
}
- (void)
    onAnotherLine
    : (int)a // a comment: (int)b
    andAgain /* and another: */ : (int)b
{ if (a) { } }
- (void) unnamed: (int)a : (int)b : (int)c { [self unnamed: a : b : c]; }
- (void) : (int)a : (int)b { [self : a : b]; }
- :a { return a; }
- (void) variadic: (id)a, ... { }
- (void) variadic: (id)a and: (id)b, ... { }
- (void (*)(int a, char b)) givesAFunction: (int (*)(id, id))function context: (void *)c { return 0; }
- (void (^)(int)) givesABlock: (void (^)(id a, int *stop))block { return ^(int i) { if (i) { } }; }
- (void) for: (id)a if: (id)b while: (id)c { }
- (id) class { return self; }
@end
