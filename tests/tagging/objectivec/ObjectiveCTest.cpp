// Objective-C's constructs, one rule per row. Instance variables, macros and conditions have their own tests.
#include "tagging/objectivec/ObjectiveC.h"

#include "tests/tagging/objectivec/ObjectiveCReading.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    const char* why;
    const char* source;
    TagTexts tags;
};

void Check(const std::vector<Case>& cases)
{
    for (const Case& c : cases)
        EXPECT_EQ(TagsOf(c.source), c.tags) << c.why << "\n" << c.source;
}

} // namespace

TEST(ObjectiveC, ClassesCategoriesAndProtocols)
{
    Check({
        {"an interface", "@interface Foo : Bar\n@end", {"X Foo"}},
        {"a root class", "@interface Foo\n@end", {"X Foo"}},
        {"with protocols", "@interface Foo : Bar <A, B>\n@end", {"X Foo"}},
        {"with type parameters", "@interface Foo<__covariant T : id<P>> : Bar<T> <A>\n@end", {"X Foo"}},
        {"not in the first column", "    @interface Foo : Bar\n    @end", {"X Foo"}},
        {"a blank after the '@'", "@ interface Foo : Bar\n@ end", {"X Foo"}},
        {"a header over several lines", "@interface\n  Foo\n  :\n  Bar\n@end", {"X Foo"}},
        {"an implementation", "@implementation Foo\n@end", {"R Foo"}},
        {"an implementation that repeats its superclass", "@implementation Foo : Bar\n@end", {"R Foo"}},
        {"a category belongs to its class", "@interface Foo (Cat)\n@end", {"C Cat Foo"}},
        {"a category of a class with type parameters", "@interface Foo<T> (Cat) <P>\n@end", {"C Cat Foo"}},
        {"a category's implementation", "@implementation Foo (Cat)\n@end", {"R Cat Foo"}},
        {"a class extension has no name", "@interface Foo ()\n@end", {}},
        {"what it declares belongs to the class", "@interface Foo () <P>\n- (void) a;\n@end", {"m a Foo"}},
        {"and its instance variables too", "@interface Foo () {\n  int a;\n}\n@end", {"v a Foo"}},
        {"a protocol", "@protocol P\n@end", {"P P"}},
        {"a protocol with others", "@protocol P <A, B>\n@end", {"P P"}},
        {"a forward protocol declares nothing", "@protocol P;", {}},
        {"nor do several", "@protocol P, Q\n  , R;", {}},
        {"a forward class declares nothing", "@class Foo, Bar<T>;", {}},
        {"a protocol in an expression",
         "@implementation Foo\n- a { return @protocol(P); }\n@end",
         {"R Foo", "o a Foo"}},
        {"members of a protocol",
         "@protocol P\n@optional\n- (void) a;\n@required\n@property int b;\n@end",
         {"P P", "m a P", "y b P"}},
        {"no semicolon after forward ones", "@class Foo\n@protocol P\n@end", {"P P"}},
        {"an alias", "@compatibility_alias Foo Bar;\n@interface Bar\n@end", {"X Bar"}},
        {"a module", "@import Foo.Bar;\n@interface Bar\n@end", {"X Bar"}},
    });
}

TEST(ObjectiveC, Methods)
{
    const auto declared = [](const char* method) {
        TagTexts tags = TagsOf("@interface I\n" + std::string(method) + "\n@end");
        tags.erase(tags.begin());
        return tags;
    };
    const std::vector<Case> cases = {
        {"of instances", "- (void) a;", {"m a I"}},
        {"of classes", "+ (void) a;", {"M a I"}},
        {"with an argument", "- (void) a: (int)x;", {"m a: I"}},
        {"with several", "- (void) a: (int)x b: (int)y cc: (id)z;", {"m a:b:cc: I"}},
        {"with a list of arguments", "- (void) a: (id)x, ...;", {"m a: I"}},
        {"with arguments as C has them", "- (void) a: (id)x b: (id)z, int y, char c;", {"m a:b: I"}},
        {"parts without names", "- (void) a: (int)x : (int)y :(int)z;", {"m a::: I"}},
        {"no name at all", "- (void) : (int)x : (int)y;", {"m :: I"}},
        {"without types", "- a;\n+ b: x;\n- c: x d: y;\n-e:x:y;", {"m a I", "M b: I", "m c:d: I", "m e:: I"}},
        {"without blanks", "-(void)a:(int)x b:(int)y;", {"m a:b: I"}},
        {"not in the first column", "  - (void) a;", {"m a I"}},
        {"two on a line", "- (void) a; + (void) b;", {"m a I", "M b I"}},
        {"keywords as names", "- (Class) class;\n- (id) for: (id)x if: (id)y;", {"m class I", "m for:if: I"}},
        {"pointers to functions", "- (void (*)(int, char)) a: (int (*)(id, id))f b: (int)c;", {"m a:b: I"}},
        {"blocks", "- (void) a: (void (^)(id x, BOOL *stop))block;", {"m a: I"}},
        {"protocols in types", "- (id<P>) a: (NSArray<id<Q>> *)x;", {"m a: I"}},
        {"macros in types", "- (GS_GENERIC_CLASS(A, B) *) a: (GS_GENERIC_TYPE(T))x;", {"m a: I"}},
        {"a structure as type", "- (struct { int x; } *) a;\n- b: (struct S { int x; })c;", {"m a I", "m b: I"}},
        {"a macro after it", "- (id) a DEPRECATED;", {"m a I"}},
        {"a name that could be a macro", "- (id) URL DEPRECATED;", {"m URL I"}},
        {"a macro with arguments", "- (id) a NS_AVAILABLE(10_0, 5_0);", {"m a I"}},
        {"after arguments", "- (id) a: (int)x NS_AVAILABLE(10_0, 5_0);\n- b: (int)y UNUSED;", {"m a: I", "m b: I"}},
        {"a text in a macro", "- (id) a DEPRECATED_MSG(@\"b: (int)c; {\");\n- b;", {"m a I", "m b I"}},
        {"a macro before the name", "- (id) NS_X(1, 2) a;\n- (id) NS_X b: (int)x;", {"m a I", "m b: I"}},
        {"attributes before and after", "- (id) __attribute__((a(b))) a __attribute__((c));", {"m a I"}},
        {"attributes of arguments", "- a: (id) __attribute__((unused)) x : (id) __unused y b: z;", {"m a::b: I"}},
        {"a macro between methods", "FOO\n- a;\nFOO(x, y)\n- b;\n", {"m a I", "m b I"}},
        {"a macro that is a whole method has no name", "- (id) MAKE_NAME(a);", {}},
        {"no semicolon", "- (void) a\n- (void) b\n@property int c\n- d;", {"m a I", "m b I", "y c I", "m d I"}},
        {"a comment anywhere", "- /* b */ (void) // c\n a /* d: */ : (int) /* ; */ x;", {"m a: I"}},
        {"a splice in a word", "- (void) fir\\\nst: x;", {"m first: I"}},
        {"bytes beyond ASCII", "- (void) \xc3\xbc: x;", {"m \xc3\xbc: I"}},
        {"signs of initial values", "static int a = 1\n  - 2;\nint b = 3\n- (4);\n- c;", {"m c I"}},
        {"signs in brackets", "extern int a[3\n- 1];\n- b;", {"m b I"}},
        {"an operator", "Foo operator\n- (Foo, Foo);\n- b;", {"m b I"}},
        {"a function's result behind it", "auto f() -> int;\n- b;", {"m b I"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(declared(c.source), c.tags) << c.why << "\n" << c.source;
}

TEST(ObjectiveC, MethodDefinitions)
{
    Check({
        {"of instances and classes", "@implementation I\n- a { }\n+ b { }\n@end", {"R I", "o a I", "O b I"}},
        {"of categories", "@implementation I (C)\n- a { }\n@end", {"R C I", "o a I"}},
        {"a semicolon before the body",
         "@implementation I\n- (void) a;\n{ x(); }\n- b { }\n@end",
         {"R I", "o a I", "o b I"}},
        {"code in bodies",
         "@implementation I\n- a { if (x) { y = z\n- (b); } }\n- c { }\n@end",
         {"R I", "o a I", "o c I"}},
        {"braces in texts",
         "@implementation I\n- a { return @\"{\" \"}{\" + '{'; }\n- b { }\n@end",
         {"R I", "o a I", "o b I"}},
        {"braces in comments", "@implementation I\n- a { /* { */ // {\n }\n- b { }\n@end", {"R I", "o a I", "o b I"}},
        {"blocks and literals",
         "@implementation I\n- a { f(^{ g(@{ @1: @[ ] }); }); }\n- b { }\n@end",
         {"R I", "o a I", "o b I"}},
        {"a raw string", "@implementation I\n- a { f(R\"x({ \" )\" )x\"); }\n- b { }\n@end", {"R I", "o a I", "o b I"}},
        {"digits with separators",
         "@implementation I\n- a { return 1'000'{'; }\n- b { }\n@end",
         {"R I", "o a I", "o b I"}},
        {"functions between them",
         "@implementation I\n- a { }\nint f(int x) { return x\n- (1); }\n- b { }\n@end",
         {"R I", "o a I", "o b I"}},
    });
}

TEST(ObjectiveC, Properties)
{
    const std::vector<Case> cases = {
        {"plain", "int a;", {"a"}},
        {"with attributes", "(nonatomic, getter=isA, setter=setA:) BOOL a;", {"a"}},
        {"of an object", "(copy) NSString *a;", {"a"}},
        {"several", "int a, *b, c[3];", {"a", "b", "c"}},
        {"of a protocol", "id <P, Q> a;", {"a"}},
        {"with type arguments", "(copy) NSDictionary<NSString *, NSArray<id<P>> *> *a;", {"a"}},
        {"a block", "(copy) void (^a)(int b, void (^c)(int));", {"a"}},
        {"a block that gives a block", "(copy) void (^(^a)(int b))(char c);", {"a"}},
        {"a pointer to a function", "int (*a)(int b, char *c);", {"a"}},
        {"a pointer to an array", "int (*a)[3];", {"a"}},
        {"a structure", "struct S a;\n", {"a"}},
        {"a structure's members", "struct { int x; char y; } a;", {"a"}},
        {"qualifiers", "(class) NSString * _Nullable const a;", {"a"}},
        {"a macro after it", "id a NS_AVAILABLE(10_0, 5_0);", {"a"}},
        {"another", "NSString *a UNAVAILABLE;", {"a"}},
        {"a macro before it", "IBOutlet NSString *a;", {"a"}},
        {"one without pointer", "IBOutlet BOOL a;", {"a"}},
        {"a name in capitals", "NSURL *URL;\n@property (readonly) BOOL HTTPOnly;", {"URL", "HTTPOnly"}},
        {"an attribute", "NSString *a __attribute__((b(c)));", {"a"}},
        {"a type made by a macro", "GS_GENERIC_CLASS(NSArray, T) *a;", {"a"}},
        {"a type of C++", "std::map<int, std::vector<A::B>> a;", {"a"}},
        {"a name in capitals of a type of C++", "A::B C;", {"C"}},
        {"types of several words", "unsigned long long int a;", {"a"}},
        {"the type of an expression", "typeof(x * y) a;", {"a"}},
    };
    for (const Case& c : cases) {
        TagTexts tags{"X I"};
        for (const std::string& name : c.tags)
            tags.push_back("y " + name + " I");
        EXPECT_EQ(TagsOf("@interface I\n@property " + std::string(c.source) + "\n@end"), tags) << c.why << "\n"
                                                                                               << c.source;
    }
}

TEST(ObjectiveC, InstanceVariables)
{
    const std::vector<Case> cases = {
        {"plain", "int a;", {"a"}},
        {"several", "int a, *b, c[3], **d;", {"a", "b", "c", "d"}},
        {"access", "@private int a; @public\n@protected @package int b;", {"a", "b"}},
        {"objects", "NSString *a; id<P> b; NSArray<id<P>> *c;", {"a", "b", "c"}},
        {"bit-fields", "unsigned a:1, b:2, :3; int:4; long c:5;", {"a", "b", "c"}},
        {"functions and blocks", "void (*a)(int x); int (^b)(char y); int (*c)[3];", {"a", "b", "c"}},
        {"arrays of blocks", "void (^a[3])(int x);", {"a"}},
        {"functions with attributes", "void (CALLBACK *a)(int x);", {"a"}},
        {"structures", "struct S a; struct T { int x; } b, *c; struct { int y; } d;", {"a", "b", "c", "d"}},
        {"structures in structures", "struct S { struct T { int x; } y; } a;", {"a"}},
        {"a structure only", "struct S { int x; };", {}},
        {"outlets", "IBOutlet NSView *a; IBOutlet id b; IBOutlet BOOL FLAG;", {"a", "b", "FLAG"}},
        {"qualifiers", "__weak id a; id __strong b; NSView * const c; volatile int d;", {"a", "b", "c", "d"}},
        {"attributes", "id a __attribute__((unused)), *b UNUSED; id c NS_AVAILABLE(1, 2);", {"a", "b", "c"}},
        {"types made by macros", "GENERIC(NSArray, T) *a; GENERIC(NSArray, T) b;", {"a", "b"}},
        {"types of C++", "std::map<int, std::vector<char>> a; A::B::C D;", {"a", "D"}},
        {"a structure's members of old", "@defs(A);", {}},
        {"no semicolon at the end", "int a; int b", {"a", "b"}},
    };
    for (const Case& c : cases) {
        TagTexts tags{"X I"};
        for (const std::string& name : c.tags)
            tags.push_back("v " + name + " I");
        tags.push_back("m method I");
        EXPECT_EQ(TagsOf("@interface I {\n" + std::string(c.source) + "\n}\n- (void) method;\n@end"), tags)
            << c.why << "\n"
            << c.source;
    }
}

TEST(ObjectiveC, InstanceVariablesAreFoundWhereverTheyAreAllowed)
{
    Check({
        {"after all of the header", "@interface A<T> : B<T> <C>\n{\n  int d;\n}\n@end", {"X A", "v d A"}},
        {"after a macro", "@interface A : B MACRO\n{ int d; }\n@end", {"X A", "v d A"}},
        {"in an implementation", "@implementation A {\n  int d;\n}\n- (void) b { }\n@end", {"R A", "v d A", "o b A"}},
        {"none", "@interface A { }\n- b;\n@end", {"X A", "m b A"}},
        {"those of a function are none", "@implementation A\nint b(void) { int c; }\n@end", {"R A"}},
        {"a type right after the header", "@interface A\nstruct B { int c; };\n- d;\n@end", {"X A", "m d A"}},
        {"or an enumeration", "@implementation A\nenum { B };\n- d { }\n@end", {"R A", "o d A"}},
    });
}

// Errors of Universal Ctags 5.9 without our reader.

TEST(ObjectiveC, AForwardProtocolDoesNotSwallowTheNextClass)
{
    EXPECT_EQ(TagsWithLines("@protocol A;\n@interface B : C\n- (void) d;\n@end\n@protocol E, F;\n@protocol A\n@end"),
              (TagTexts{"2 X B", "3 m d B", "6 P A"}));
}

TEST(ObjectiveC, AClassExtensionKeepsItsFirstMethod)
{
    EXPECT_EQ(TagsWithLines("@interface A ()\n- (void) first;\n- (void) second;\n@end"),
              (TagTexts{"2 m first A", "3 m second A"}));
}

TEST(ObjectiveC, AFunctionBetweenMethodsHidesNoMethod)
{
    EXPECT_EQ(
        TagsWithLines(
            "@implementation A\n- (void) a\n{\n}\nstatic int f(int x)\n{\n  return x;\n}\n+ (void) b\n{\n}\n@end"),
        (TagTexts{"1 R A", "2 o a A", "9 O b A"}));
}

TEST(ObjectiveC, AClassMayStandInAnyColumn)
{
    EXPECT_EQ(TagsWithLines("#ifdef B\n\t  @interface A : B\n  - (void) c;\n  @end\n#endif"),
              (TagTexts{"2 X A", "3 m c A"}));
}

TEST(ObjectiveC, ASelectorHasTheLineOfItsFirstPart)
{
    EXPECT_EQ(TagsWithLines("@interface I\n- (void)\n  first: (int)x\n  second: (int)y;\n@end"),
              (TagTexts{"1 X I", "3 m first:second: I"}));
    EXPECT_EQ(TagsWithLines("@implementation\nI\n-\n(void)\n:\n(int)x\n{\n}\n@end"), (TagTexts{"2 R I", "5 o : I"}));
}

TEST(ObjectiveC, DetectsTextsThatMayHaveObjectiveC)
{
    EXPECT_TRUE(tagging::MayHaveObjectiveC("@interface"));
    EXPECT_TRUE(tagging::MayHaveObjectiveC("x\n  @implementation Foo"));
    EXPECT_TRUE(tagging::MayHaveObjectiveC("@param @protocol Foo"));
    // Without a class it declares nothing, but a C++ parser would find variables Foo and Bar.
    EXPECT_TRUE(tagging::MayHaveObjectiveC("@class Foo, Bar;"));
    EXPECT_FALSE(tagging::MayHaveObjectiveC(""));
    EXPECT_FALSE(tagging::MayHaveObjectiveC("@"));
    EXPECT_FALSE(tagging::MayHaveObjectiveC("@param interface, @see protocol class"));
}
