// Classes, namespaces, templates and functions of C++ around and between those of Objective-C.
namespace outer {
class Plain {
public:
    Plain() : value(-1) {}
    int Method() const { return value - 1; }
    Plain operator-(const Plain &) const;
    Plain &operator+=(int);

private:
    int value = -1;
};
template <class T, int N = 3 - 1> struct Pair {
    T a, b;
};
enum class Scoped : unsigned { One, Two };
} // namespace outer

extern "C" {
@class Forward;
@protocol Forwarded;
__attribute__((visibility("default")))
@interface InExternC
{
    outer::Plain plain;
    outer::Pair<int, 3> pair, *pairs;
    outer::Pair<outer::Pair<char>, 2> *of;
    outer::Scoped SCOPED;
}
- (outer::Plain) plain: (const outer::Plain &)p other: (outer::Pair<int> *)q;
@property outer::Pair<outer::Plain, 2> *property;
@end
int FunctionOfC(void);
}

using namespace outer;
static const char *raw = R"x(
@interface InARawString
- (void) inARawString {
@end
)" "(not its end
)x";
static int number = 1'000'000;

@implementation InExternC
Plain operator
- (const Plain &, const Plain &);
auto Arrow(int x) -> int;
- (outer::Plain) plain: (const outer::Plain &)p other: (outer::Pair<int> *)q
{
    auto lambda = [&](int x) { return x - 1; };
    struct Local {
        int x = 1'0;
    } local{};
    return outer::Plain();
}
namespace {
int InANamespace(int x) { return x
- (1); }
}
class InAnImplementation {
    void Method() { auto s = R"({)"; }
};
template <typename T> T Template(T t) { return -t; }
+ (void) afterCPlusPlus
{
    for (int i = 0; i < 3; ++i) { }
    try { throw 1; } catch (...) { }
}
@end

class AfterAll : public outer::Plain {
    InExternC *object;
};
