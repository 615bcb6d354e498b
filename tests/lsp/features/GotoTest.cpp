// Where what a name means is declared, defined, implemented.
#include "tests/lsp/features/FeatureFixture.h"

namespace {

using lsp_test::FeatureFixture;
using lsp_test::FeatureOptions;
using lsp_test::Json;

using Places = std::vector<std::string>;

struct GotoCase {
    const char* why;
    const char* text;
};

void ExpectMarks(const char* method, const std::vector<GotoCase>& cases)
{
    for (const GotoCase& c : cases) {
        const FeatureFixture fixture(c.text);
        EXPECT_EQ(fixture.Places(fixture.Ask(method)), fixture.Marks()) << c.why;
    }
}

FeatureOptions WithLinks()
{
    FeatureOptions options;
    options.capabilities = {{"textDocument", {{"definition", {{"linkSupport", true}}}}}};
    return options;
}

// A byte of Latin-1 stands before the name, in a file that is not open.
TEST(Goto, AByteThatIsNotUtf8CountsOneInEitherEncoding)
{
    for (const char* encoding : {"utf-16", "utf-8"}) {
        FeatureOptions options;
        options.capabilities["general"]["positionEncodings"] = {encoding};
        const FeatureFixture fixture("== latin.c\n/* Gr\xfc\xdf"
                                     "e */ int area;\n== main.c\nextern int area; int x = ar|ea;\n",
                                     options);
        EXPECT_EQ(fixture.Places(fixture.Ask("textDocument/definition")), Places{"latin.c:0:16-0:20"}) << encoding;
    }
}

TEST(Goto, ADefinitionIsFoundInAnotherFile)
{
    ExpectMarks(
        "textDocument/definition",
        {{"a function", "== shape.h\nint area();\n== shape.cpp\n#include \"shape.h\"\nint «area»() { return 1; }\n"
                        "== main.cpp\n#include \"shape.h\"\nint x = ar|ea();\n"},
         {"a name in a comment", "int area; // ar|ea\n"},
         {"no name", "int area; | \n"},
         {"a local before a global", "int n;\nint f(int «n») { return n|; }\n"},
         {"a label", "void f() { goto e|nd; «end»: ; }\n"},
         {"the variable, not its type of the same name",
          "struct page { int n; };\nstruct page *«page»;\nint x = pa|ge->n;\n"},
         {"overloads by the number of arguments", "void f(int) {}\nvoid «f»(int, int) {}\nvoid g() { f|(1, 2); }\n"},
         {"an unknown receiver: all members of the name",
          "struct A { int «size»; };\nstruct B { int «size»; };\nint f() { return unknown().si|ze; }\n"}});
}

TEST(Goto, OnADefinitionTheWayLeadsBack)
{
    ExpectMarks("textDocument/definition", {{"to the declaration", "int «area»();\nint ar|ea() { return 1; }\n"},
                                            {"without one, it is its own", "int «ar|ea»() { return 1; }\n"}});
    ExpectMarks("textDocument/declaration",
                {{"to the definition", "int ar|ea();\nint «area»() { return 1; }\n"},
                 {"without one, it is its own", "int «ar|ea»();\n"},
                 {"of a use", "int «area»();\nint area() { return 1; }\nint x = ar|ea();\n"}});
}

TEST(Goto, BehindStructOnlyTagsAreMeant)
{
    ExpectMarks(
        "textDocument/definition",
        {{"behind struct", "== a.c\nstruct «stat» { int n; };\nint stat(int n) { return n; }\nstruct st|at s;\n"},
         {"before a parenthesis",
          "== a.c\nstruct stat { int n; };\nint «stat»(int n) { return n; }\nvoid f() { st|at(1); }\n"},
         {"a typedef of its tag leads to the body",
          "== a.c\ntypedef struct node node;\nstruct «node» { node *next; };\nno|de *first;\n"}});
}

TEST(Goto, BothBranchesOfAConditionAreAnswers)
{
    const FeatureFixture fixture("#ifdef FAST\nint area() { return 1; }\n#else\nint area() { return 2; }\n#endif\n"
                                 "int x = ar|ea();\n");
    EXPECT_EQ(fixture.Places(fixture.Ask("textDocument/definition")), (Places{"a.cpp:3:4-3:8", "a.cpp:1:4-1:8"}))
        << "the nearest above the place comes first";
}

TEST(Goto, AnIncludeLeadsToTheFileAndItsOriginIsTheName)
{
    const FeatureFixture fixture(
        "== lib/shape.h\nint area();\n== x/lib/shape.h\nint area();\n== main.cpp\n  #include \"lib/sha|pe.h\"\n",
        WithLinks());
    const Json links = fixture.Ask("textDocument/definition");
    ASSERT_EQ(links.size(), 1U);
    EXPECT_EQ(fixture.Places(links), Places{"lib/shape.h:0:0-0:0"});
    EXPECT_EQ(fixture.Places(links[0]["originSelectionRange"]), Places{"main.cpp:0:12-0:23"});
    EXPECT_EQ(links[0]["targetRange"], links[0]["targetSelectionRange"]);
}

TEST(Goto, ATargetIsTheWholeDeclaration)
{
    const struct {
        const char* why;
        const char* text; // the declaration is marked
    } cases[] = {
        {"a function", "int x;\n«static int\narea(int n)\n{\n  return n;\n}»\nint y = ar|ea(1);\n"},
        {"a declaration", "«extern int area(int n);» // more\nint y = ar|ea(1);\n"},
        {"one of a line", "int a; «int area;» int b;\nint y = ar|ea;\n"},
        {"a class", "/* one */\n«class Shape {\n int n;\n};»\nSha|pe s;\n"},
        {"a template", "int x;\n\n«template <class T>\nstruct Shape { T n; };»\nSha|pe<int> s;\n"},
        {"a macro", "«#define AREA(x) \\\n  (x)»\nint y = AR|EA(1);\n"},
        {"an enumerator", "enum E { A, «B = 2», C };\nint y = B|;\n"},
        {"a parameter", "int f(int a, «const int* b») { return *b|; }\n"},
        {"a member", "struct S {\npublic:\n  int a;\n  «int b;»\n};\nint f(S s) { return s.b|; }\n"},
    };
    for (const auto& c : cases) {
        const FeatureFixture fixture(c.text, WithLinks());
        const Json links = fixture.Ask("textDocument/definition");
        ASSERT_EQ(links.size(), 1U) << c.why;
        Json target = {{"uri", links[0]["targetUri"]}, {"range", links[0]["targetRange"]}};
        EXPECT_EQ(fixture.Places(target), fixture.Marks()) << c.why;
    }
}

TEST(Goto, ALineThatHasMovedIsLookedForByItsName)
{
    const FeatureFixture fixture(
        "== shape.cpp\nint area() { return 1; }\n== main.cpp\nint area();\nint x = ar|ea();\n");
    fixture.tree.Write("shape.cpp", "\n\n\nint area() { return 1; }\n");
    EXPECT_EQ(fixture.Places(fixture.Ask("textDocument/definition")), Places{"shape.cpp:3:4-3:8"});
}

TEST(Goto, ATypeDefinitionIsTheBody)
{
    ExpectMarks("textDocument/typeDefinition",
                {{"of a local", "struct «Shape» { int n; };\nvoid f() { Shape s; s|.n = 1; }\n"},
                 {"of auto", "struct «Shape» { int n; };\nShape* Make();\nvoid f() { auto s = Make(); s|->n = 1; }\n"},
                 {"of a function: its result", "struct «Shape» { int n; };\nShape* Make();\nint x = Ma|ke()->n;\n"},
                 {"of a typedef", "struct «Shape» { int n; };\ntypedef Shape Form;\nFo|rm x;\n"},
                 {"of an enumerator", "enum «Colour» { Red };\nint x = Re|d;\n"},
                 {"of a number there is none", "int n;\nint x = n|;\n"}});
}

TEST(Goto, AnImplementationIsWhatOverridesAndDerives)
{
    const std::string classes = "struct Shape { virtual void draw(); };\n"
                                "struct Circle : Shape { void draw() override {} };\n"
                                "struct Ring : Circle { void draw() override {} };\n";
    const auto implementations = [&](const std::string& use) {
        const FeatureFixture fixture(classes + use);
        return fixture.Places(fixture.Ask("textDocument/implementation"));
    };
    EXPECT_EQ(implementations("Sha|pe* s;\n"), (Places{"a.cpp:1:7-1:13", "a.cpp:2:7-2:11"}));
    EXPECT_EQ(implementations("void f(Shape* s) { s->dr|aw(); }\n"), (Places{"a.cpp:1:29-1:33", "a.cpp:2:28-2:32"}));
    ExpectMarks("textDocument/implementation", {{"of a prototype", "int ar|ea();\nint «area»() { return 1; }\n"},
                                                {"of a protocol", "== a.m\n@protocol Dra|wing\n- (void)draw;\n@end\n"
                                                                  "@interface «Shape» : NSObject <Drawing>\n@end\n"}});
}

TEST(Goto, ATextOfAnotherLanguageHasNoAnswers)
{
    FeatureFixture fixture("int n;\nint x = n|;\n");
    fixture.Open("a.cpp", fixture.caretText, "python");
    EXPECT_EQ(fixture.Ask("textDocument/definition"), Json::array());
}

TEST(Goto, AFileThatIsNotOpenIsRead)
{
    FeatureOptions closed;
    closed.isOpen = false;
    const FeatureFixture fixture("int «n»;\nint x = n|;\n", closed);
    EXPECT_EQ(fixture.Places(fixture.Ask("textDocument/definition")), fixture.Marks());
    const Json missing = {{"textDocument", {{"uri", fixture.UriOf("none.cpp")}}}};
    EXPECT_EQ(fixture.Refusal("textDocument/definition", missing),
              "-32602 " + fixture.UriOf("none.cpp") + " is not open and cannot be read");
}

} // namespace
