// The rest of a source for a parser of C or C++, and what such a parser finds in it.
#include "tagging/objectivec/ObjectiveC.h"

#include "tests/support/RunProgram.h"
#include "tests/support/TempDirectory.h"
#include "tests/tagging/objectivec/ObjectiveCReading.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace {

struct Case {
    const char* why;
    const char* source;
    const char* rest; // with blanks as from WithoutBlanks()
};

// "line kind name" of the named declarations that ctags finds.
TagTexts CtagsFindsIn(const std::string& text, const std::string& language)
{
    const TempDirectory directory;
    std::ofstream(directory.Path() + "/source") << text;
    const ProgramRun run = RunProgram({"/usr/bin/env", "ctags", "--options=NONE", "--sort=no", "--excmd=number", "-f",
                                       "-", "--language-force=" + language, "source"},
                                      directory.Path());
    EXPECT_EQ(run.status, 0) << run.errors;
    TagTexts found;
    std::istringstream lines(run.output);
    for (std::string name, file, line, kind; lines >> name >> file >> line >> kind; std::getline(lines, name))
        if (!name.starts_with("__anon"))
            found.push_back(line.substr(0, line.find(';')) + ' ' + kind + ' ' + name);
    return found;
}

} // namespace

TEST(ObjectiveCRest, Cases)
{
    const Case cases[] = {
        {"C without Objective-C stays as it is", "int f(void)\n{\n  return -1;\n}\n",
         "int f(void)\n{\nreturn -1;\n}\n"},
        {"so do texts and comments", "// @interface A\n/* - (void) b; */ const char *c = \"@end\";",
         "// @interface A\n/* - (void) b; */ const char *c = \"@end\";"},
        {"a class goes", "@interface A : B <C>\n{\n  int d;\n}\n- (void) e;\n@end\nint f;", "\n\n\n\n\n\nint f;"},
        {"a protocol goes", "@protocol A <B>\n@optional\n- (void) c: (int)d\n  e: (int)f;\n@end", "\n\n\n\n"},
        {"forward declarations go", "@protocol A, B;\n@class C; int d;", "\nint d;"},
        {"properties go", "@interface A\n@property (copy) void (^b)(struct { int c; } d);\n@end", "\n\n"},
        {"bodies go", "@implementation A\n- b\n{\n  if (c) {\n    d();\n  }\n}\n+ e { }\n@end", "\n\n\n\n\n\n\n\n"},
        {"@synthesize goes", "@implementation A\n@synthesize b = c, d;\n@dynamic e;\n@end", "\n\n\n"},
        {"functions between methods stay",
         "@implementation A\n- b { }\nint c(int d) { return d\n- (1); }\n- e { }\n@end",
         "\n\nint c(int d) { return d\n- (1); }\n\n"},
        {"types and enumerations in a class stay",
         "@interface A\ntypedef int B;\n- c;\nenum { D = 3 - 1 };\n- e;\n@end",
         "\ntypedef int B;\n\nenum { D = 3 - 1 };\n\n"},
        {"initial values stay", "@implementation A\nint b = 1\n- 2, c[] = { 3,\n-4 };\n- d { }\n@end",
         "\nint b = 1\n- 2, c[] = { 3,\n-4 };\n\n"},
        {"directives stay, in bodies too",
         "@implementation A\n- b {\n#define C(x) \\\n  - (x) d\n#if E\n#endif\n}\n@end",
         "\n\n#define C(x) \\\n- (x) d\n#if E\n#endif\n\n"},
        {"code put away stays", "#if 0\n@interface A\n- b;\n@end\n#endif", "#if 0\n@interface A\n- b;\n@end\n#endif"},
        {"a branch inside of a declaration goes", "@interface A\n- b\n#if C\n: d;\n#else\n: e f: g;\n#endif\n@end",
         "\n\n#if C\n\n#else\n\n#endif\n"},
        {"named structures of variables stay", "@interface A { struct B { int c; } *d, e; int f; }\n@end",
         "struct B { int c; } ;\n"},
        {"enumerations of variables too", "@interface A { const enum { B, C } d; }\n@end", "enum { B, C } ;\n"},
        {"nameless structures go, nobody can use them",
         "@interface A { struct { int b; } c; union { int d; } e; }\n@end", "\n"},
        {"macros before a class go with it", "EXPORT(\"x\") __attribute__((a(b)))\nROOT @interface A\n@end", "\n\n"},
        {"and before a method", "@interface A\nMACRO\nOTHER(1, 2)\n- b;\n@end", "\n\n\n\n"},
        {"but not what a semicolon ends", "int a; EXPORT @interface B\n@end", "int a;\n"},
        {"nor braces", "extern \"C\" { EXPORT\n@interface A\n@end\n}", "extern \"C\" {\n\n\n}"},
        {"extern \"C\" may begin in a class", "@interface A\n- b;\n@end\n#ifdef C\n}\n#endif",
         "\n\n\n#ifdef C\n}\n#endif"},
        {"line breaks of another system stay", "@interface A\r\n- b;\r\n@end\r\nint c;\r\n", "\r\n\r\n\r\nint c;\r\n"},
        {"splices go, their line breaks stay", "@inter\\\nface A\n- b\\\nc;\n@end", "\n\n\n\n"},
        {"the enumerations of Objective-C's headers",
         "typedef NS_ENUM(NSInteger, A) {\n  B\n};\nNS_OPTIONS(unsigned long, C);",
         "typedef enum A {\nB\n};\nenum C ;"},
        {"without a name", "NS_ENUM(NSInteger) { A };", "enum { A };"},
        {"and what only looks so", "NS_ENUM; int NS_ENUM(", "NS_ENUM; int NS_ENUM("},
        {"C++ stays",
         "namespace A { class B { int c() { return -1; } }; }\n@implementation D\ntemplate <class T> T e;\n@end",
         "namespace A { class B { int c() { return -1; } }; }\n\ntemplate <class T> T e;\n"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(WithoutBlanks(RestOf(c.source)), c.rest) << c.why << "\n" << c.source;
        EXPECT_EQ(RestOf(c.source).size(), std::string(c.source).size()) << c.why;
    }
}

TEST(ObjectiveCRest, TheRemainingCodeKeepsItsPlace)
{
    EXPECT_EQ(RestOf("@class A; int b; @class C;\n  int d;"), "          int b;          \n  int d;");
}

// ctags' own parser of Objective-C loses or misreads each of these.

TEST(ObjectiveCRest, CtagsFindsFunctionsInsideOfAnImplementation)
{
    const char* source = "@implementation A\n"
                         "static int before(void) { return 1; }\n"
                         "- (void) method { int local; }\n"
                         "int between(int x)\n{\n  return [self method: @\"}\"];\n}\n"
                         "- (void) another { }\n"
                         "typedef struct { int x; } Type;\n"
                         "int variable = -1;\n"
                         "@end\n"
                         "int after(void) { return 1; }\n";
    EXPECT_EQ(CtagsFindsIn(RestOf(source), "C"),
              (TagTexts{"2 f before", "4 f between", "9 m x", "9 t Type", "10 v variable", "12 f after"}));
}

TEST(ObjectiveCRest, CtagsFindsAllOfCPlusPlus)
{
    const char* source = "namespace outer {\n"
                         "class Class { int Method() { return 0; } };\n"
                         "}\n"
                         "@interface A : B\n{\n  outer::Class object;\n}\n- (void) method;\n@end\n"
                         "@implementation A\n"
                         "template <class T> T Function(T t) { return t; }\n"
                         "- (void) method { outer::Class local; auto l = [&] { }; }\n"
                         "namespace inner { struct Struct { }; }\n"
                         "@end\n"
                         "int outer::Class::Other() { return 1; }\n";
    EXPECT_EQ(CtagsFindsIn(RestOf(source), "C++"), (TagTexts{"1 n outer", "2 c Class", "2 f Method", "11 f Function",
                                                             "13 n inner", "13 s Struct", "15 f Other"}));
}

TEST(ObjectiveCRest, CtagsFindsCDeclarationsInAClass)
{
    const char* source = "EXPORT_CLASS\n@interface A : B\n{\n"
                         "  struct Named { int member; } variable;\n"
                         "  int other;\n"
                         "}\n"
                         "typedef int Type;\n"
                         "- (void) method;\n"
                         "enum { One = 1, Two };\n"
                         "@end\n"
                         "typedef NS_ENUM(NSInteger, Mode) { Fast };\n"
                         "EXTERN int f(void) { return 1; }\n";
    TagTexts found = CtagsFindsIn(RestOf(source), "C");
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, (TagTexts{"11 e Fast", "11 g Mode", "12 f f", "4 m member", "4 s Named", "7 t Type", "9 e One",
                               "9 e Two"}));
}
