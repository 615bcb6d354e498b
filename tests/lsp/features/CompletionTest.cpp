// Names that fit a place.
#include "tests/lsp/features/FeatureFixture.h"

#include <gmock/gmock.h>

namespace {

using lsp_test::FeatureFixture;
using lsp_test::FeatureOptions;
using lsp_test::Json;
using testing::HasSubstr;
using testing::Not;

std::string Labels(const Json& list)
{
    std::string labels;
    for (const Json& item : list["items"])
        labels += (labels.empty() ? "" : " ") + item["label"].get<std::string>();
    return labels;
}

Json Complete(const std::string& text, const FeatureOptions& options = {}, const Json& more = Json::object())
{
    return FeatureFixture(text, options).Ask("textDocument/completion", more);
}

Json ByCharacter(const std::string& character)
{
    return {{"context", {{"triggerKind", 2}, {"triggerCharacter", character}}}};
}

constexpr const char* kShape = "struct Shape { int size; int area(int a, int b); private: int secret; };\n";

} // namespace

TEST(Completion, Places)
{
    const std::string shape = kShape;
    const struct {
        const char* why;
        std::string text;
        const char* labels;
    } kCases[] = {
        {"members", shape + "int f(Shape* s) { return s->|; }", "area size secret"},
        {"a few letters of a member", shape + "int f(Shape& s) { return s.sz|; }", "size"},
        {"in the class itself", "class A { int own; void f(); };\nvoid A::f() { this->o| }", "own"},
        {"a local", "int f() { int counter = 0; return coun|; }", "counter"},
        {"letters of a local", "int f() { int my_counter = 0; return mcou|; }", "my_counter"},
        {"a comment", "int counter; // coun|", ""},
        {"a string", "int counter; char a[] = \"coun|\";", ""},
        {"an unfinished comment", "int counter; /* coun|", ""},
        {"a keyword", "int f() { contin| }", "continue"},
        {"no keyword behind an operator", shape + "int f(Shape& s) { s.contin|; }", ""},
        {"a file", "== shape.h\nint a;\n== sub/x.h\nint b;\n== a.cpp\n#include \"sh|\"\n", "shape.h"},
        {"a file in a directory", "== sub/x.h\nint b;\n== sub/x.txt\n\n== a.cpp\n#include \"sub/|\"\n", "x.h"},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(Labels(Complete(each.text)), each.labels) << each.why;
}

TEST(Completion, ACharacterAsksOnlyWhereItMeansSomething)
{
    const struct {
        const char* why;
        std::string text;
        const char* character;
        bool answers;
    } kCases[] = {
        {"an arrow", std::string(kShape) + "int f(Shape* s) { return s->|; }", ">", true},
        {"greater than", "int f(int a) { return a >|; }", ">", false},
        {"a scope", "namespace n { int x; }\nint y = n::|;", ":", true},
        {"a label", "int f() { out:| return 1; }", ":", false},
        {"a blank in C", "int x; int f() { return |; }", " ", false},
        {"an index", "int a[2]; int f() { return a[|]; }", "[", false},
        {"a quote of a string", "const char* a = \"|\";", "\"", false},
        {"an include", "== x.h\n\n== a.c\n#include \"|\"\n", "\"", true},
        {"a division", "int f(int a) { return a /|; }", "/", false},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(!Labels(Complete(each.text, {}, ByCharacter(each.character))).empty(), each.answers) << each.why;
}

TEST(Completion, ReplacesOnlyTheWord)
{
    const Json list = Complete("int counter;\nint f() { return 1+coun|ter_x; }");
    ASSERT_FALSE(list["items"].empty());
    EXPECT_EQ(list["items"][0]["textEdit"]["newText"], "counter");
    EXPECT_EQ(list["items"][0]["textEdit"]["range"],
              (Json{{"start", {{"line", 1}, {"character", 19}}}, {"end", {{"line", 1}, {"character", 23}}}}));
}

TEST(Completion, OffersBothRangesToAClientThatTakesThem)
{
    FeatureOptions options;
    options.capabilities["textDocument"]["completion"]["completionItem"]["insertReplaceSupport"] = true;
    const Json list = Complete("int counter;\nint f() { return coun|ter; }", options);
    ASSERT_FALSE(list["items"].empty());
    EXPECT_EQ(list["items"][0]["textEdit"]["insert"]["end"]["character"], 21);
    EXPECT_EQ(list["items"][0]["textEdit"]["replace"]["end"]["character"], 24);
}

TEST(Completion, SnippetsNeedAClientThatTakesThemAndASetting)
{
    const std::string text = std::string(kShape) + "int f(Shape* s) { return s->ar|; }";
    FeatureOptions options;
    EXPECT_EQ(Complete(text, options)["items"][0]["textEdit"]["newText"], "area");
    options.capabilities["textDocument"]["completion"]["completionItem"]["snippetSupport"] = true;
    EXPECT_EQ(Complete(text, options)["items"][0]["textEdit"]["newText"], "area(${1:int a}, ${2:int b})");
    EXPECT_EQ(Complete(std::string(kShape) + "int f(Shape* s) { return s->ar|(1); }",
                       options)["items"][0]["textEdit"]["newText"],
              "area");
    options.settings.snippets = false;
    EXPECT_EQ(Complete(text, options)["items"][0]["textEdit"]["newText"], "area");
}

TEST(Completion, IsIncompleteBeyondTheLimit)
{
    FeatureOptions options;
    options.settings.completionLimit = 2;
    const std::string text = "struct S { int a1; int a2; int a3; };\nint f(S* s) { return s->|; }";
    const Json list = Complete(text, options);
    EXPECT_EQ(list["items"].size(), 2u);
    EXPECT_EQ(list["isIncomplete"], true);
    options.settings.completionLimit = 3;
    EXPECT_EQ(Complete(text, options)["isIncomplete"], false);
}

TEST(Completion, DocumentationComesWithResolve)
{
    const FeatureFixture fixture("== a.c\n// Counts.\nint counter(int a);\nint f(void) { return coun|; }\n");
    const Json list = fixture.Ask("textDocument/completion");
    ASSERT_FALSE(list["items"].empty());
    EXPECT_EQ(fixture.Handle("completionItem/resolve", list["items"][0])["documentation"]["value"], "Counts.");
    Json moved = list["items"][0];
    moved["data"]["line"] = 1'000'000'000;
    EXPECT_FALSE(fixture.Handle("completionItem/resolve", moved).contains("documentation"));
    moved["data"]["uri"] = "file:///nowhere/at/all.c";
    EXPECT_FALSE(fixture.Handle("completionItem/resolve", moved).contains("documentation"));
}

TEST(Completion, DetailComesWithResolve)
{
    const FeatureFixture fixture(std::string(kShape) + "int f(Shape* s) { return s->ar|; }");
    const Json list = fixture.Ask("textDocument/completion");
    ASSERT_FALSE(list["items"].empty());
    EXPECT_FALSE(list["items"][0].contains("detail"));
    EXPECT_EQ(fixture.Handle("completionItem/resolve", list["items"][0])["detail"], "int Shape::area(int a, int b)");
}
