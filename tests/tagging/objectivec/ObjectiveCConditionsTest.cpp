// Objective-C and the preprocessor: conditions, ignored macros, disabled code.
#include "tagging/objectivec/ObjectiveC.h"

#include "tests/tagging/objectivec/ObjectiveCReading.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    const char* why;
    const char* source;
    TagTexts tags;
};

} // namespace

TEST(ObjectiveCConditions, AllBranchesAreRead)
{
    const Case cases[] = {
        {"methods in branches",
         "@interface A\n#if B\n- c;\n#elif D\n- e;\n#else\n- f;\n#endif\n- g;\n@end",
         {"X A", "m c A", "m e A", "m f A", "m g A"}},
        {"classes in branches",
         "#ifdef A\n@interface B\n- c;\n@end\n#else\n@interface D\n- e;\n@end\n#endif",
         {"X B", "m c B", "X D", "m e D"}},
        {"what follows belongs to the first",
         "#if A\n@protocol B\n#else\n@interface C (B)\n#endif\n- d;\n@end",
         {"P B", "C B C", "m d B"}},
        {"a condition without other branches", "#if A\n@end\n@interface B\n#endif\n- c;\n@end", {"X B", "m c B"}},
        {"variables in branches",
         "@interface A {\n#if EXPOSE(A)\n  int b;\n#else\n  int c;\n#endif\n  int d;\n}\n- e;\n@end",
         {"X A", "v b A", "v c A", "v d A", "m e A"}},
        {"the rest of a header in one",
         "@interface A\n#if B\n: C\n#else\n: D <E>\n#endif\n{\n  int f;\n}\n- g;\n@end",
         {"X A", "v f A", "m g A"}},
        {"protocols in one", "@interface A : B\n#if C\n<D>\n#endif\n{\n  int f;\n}\n@end", {"X A", "v f A"}},
        {"different headers",
         "#if A\n@interface B : C\n#else\n@interface B : D\n#endif\n{\n  int e;\n}\n@end",
         {"X B", "X B", "v e B"}},
        {"a method's ends",
         "@interface A\n#if B\n- c\n#else\n- d\n#endif\n;\n- e;\n@end",
         {"X A", "m c A", "m d A", "m e A"}},
        {"inside of a method only the first",
         "@interface A\n- b\n#if C\n: (int)d\n#else\n: (int)e f: (int)g\n#endif\n;\n@end",
         {"X A", "m b: A"}},
        {"unless it was put away",
         "@interface A\n- b\n#if 0\n: (int)d\n#else\n: (int)e f: (int)g\n#endif\n;\n@end",
         {"X A", "m b:f: A"}},
        {"bodies begin in branches",
         "@implementation A\n#if B\n- c {\n  if (d) {\n#else\n- c: e {\n  if (f) {\n#endif\n  }\n}\n- g { }\n@end",
         {"R A", "o c A", "o c: A", "o g A"}},
        {"bodies have them",
         "@implementation A\n- b {\n#if C\n  if (d) {\n#else\n  {\n#endif\n  }\n}\n- e { }\n@end",
         {"R A", "o b A", "o e A"}},
        {"functions have them",
         "@implementation A\nint b() {\n#if C\n  if (d) {\n#else\n  {\n#endif\n  }\n}\n- e { }\n@end",
         {"R A", "o e A"}},
        {"two ways to end",
         "@implementation A\n- b {\n#if C\n}\n#else\n  d();\n}\n#endif\n- e { }\n@end",
         {"R A", "o b A", "o e A"}},
        {"not balanced",
         "@interface A\n#else\n- b;\n#endif\n- c;\n#if D\n#if E\n- f;\n@end",
         {"X A", "m b A", "m c A", "m f A"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TagsOf(c.source), c.tags) << c.why << "\n" << c.source;
}

TEST(ObjectiveCConditions, DisabledCodeIsNotRead)
{
    const Case cases[] = {
        {"#if 0", "#if 0\n@interface A\n@end\n#endif", {}},
        {"with a comment and blanks", "  #  if /* x */ 0 // y\n@interface A\n@end\n  #  endif", {}},
        {"its other branch is", "#if 0\n@interface A\n#else\n@interface B\n#endif\n- c;\n@end", {"X B", "m c B"}},
        {"conditions in it", "#if 0\n#if A\n@interface B\n#else\n@interface C\n#endif\n@end\n#endif", {}},
        {"#elif 0",
         "#if A\n@protocol B\n@end\n#elif 0\n@protocol C\n@end\n#else\n@protocol D\n@end\n#endif",
         {"P B", "P D"}},
        {"prose in it", "#if 0\nDon't { \" /* #endif */\n- x\n#endif\n@protocol A\n@end", {"P A"}},
        {"other numbers count",
         "#if 01\n@protocol A\n@end\n#endif\n#if 0 || B\n@protocol C\n@end\n#endif",
         {"P A", "P C"}},
        {"in a body", "@implementation A\n- b {\n#if 0\n  {\n#endif\n}\n- c { }\n@end", {"R A", "o b A", "o c A"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TagsOf(c.source), c.tags) << c.why << "\n" << c.source;
}

TEST(ObjectiveCConditions, DirectivesAreNotCode)
{
    const Case cases[] = {
        {"macros over several lines",
         "#define A \\\n@interface B \\\n- c;\n@interface D\n#define E - f; \\\n  @end\n- g;\n@end",
         {"X D", "m g D"}},
        {"over lines of another system", "#define A \\\r\n@interface B\r\n@interface D\r\n@end", {"X D"}},
        {"marks", "@interface A\n#pragma mark - b;\n#warning Don't {\n- c;\n@end", {"X A", "m c A"}},
        {"a comment that goes on", "#if A /* @interface B\n@interface C */\n@interface D\n@end\n#endif", {"X D"}},
        {"a directive in a declaration",
         "@interface A\n- b: (int)c\n#import \"d.h\"\n  e: (int)f;\n@end",
         {"X A", "m b:e: A"}},
        {"a mark inside of a line is none", "@interface A\n- b; # else\n- c;\n@end", {"X A", "m b A", "m c A"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TagsOf(c.source), c.tags) << c.why << "\n" << c.source;
}

TEST(ObjectiveCConditions, IgnoredMacrosAreSkipped)
{
    const std::set<std::string> ignored = {"NOTHING", "WITH+"};
    const Case cases[] = {
        {"in a selector", "@interface A\n- NOTHING b NOTHING: (int)c NOTHING d: (int)e;\n@end", {"X A", "m b:d: A"}},
        {"before a name", "@interface NOTHING A\n- (int) WITH(f, (g)) b;\n@end", {"X A", "m b A"}},
        {"a class's name with arguments", "@interface WITH(A) B : C\n@end", {"X B"}},
        {"as what would be a name",
         "@interface A { id b NOTHING; int WITH(x) c WITH(y); }\n@end",
         {"X A", "v b A", "v c A"}},
        {"no arguments", "@interface A\n- WITH b;\n@end", {"X A", "m b A"}},
        {"only with arguments to ignore", "@interface A\n- b: NOTHING (int)c;\n@end", {"X A", "m b: A"}},
        {"arguments that are not ended", "@interface A\n- b WITH(c;\n- d;\n@end", {"X A", "m b A", "m d A"}},
        {"part of a word", "@interface NOTHINGS\n@end", {"X NOTHINGS"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TagsOf(c.source, ignored), c.tags) << c.why << "\n" << c.source;
    EXPECT_EQ(RestOf("int NOTHING a WITH (b) = WITH;", ignored), "int         a          =     ;");
}
