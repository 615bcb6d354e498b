// What a call takes.
#include "tests/lsp/features/FeatureFixture.h"

#include <gmock/gmock.h>

namespace {

using lsp_test::FeatureFixture;
using lsp_test::FeatureOptions;
using lsp_test::Json;

// "int f(int a, int b)#1/2": the active one, with the active parameter and the number of signatures. "" for null.
std::string HelpFor(const std::string& text)
{
    const Json help = FeatureFixture(text).Ask("textDocument/signatureHelp");
    if (help.is_null())
        return "";
    const size_t active = help["activeSignature"];
    return help["signatures"][active]["label"].get<std::string>() + "#" +
           std::to_string(help["activeParameter"].get<int>()) + "/" + std::to_string(help["signatures"].size());
}

} // namespace

TEST(SignatureHelp, Cases)
{
    const struct {
        const char* why;
        const char* text;
        const char* help;
    } kCases[] = {
        {"a function of C once, declared and defined",
         "== a.c\nint f(int, int);\nint f(int a, int b) { return a; }\nint x(void) { return f(1, |2); }\n",
         "int f(int a, int b)#1/1"},
        {"the overload that takes as many", "int f(int a); int f(int a, int b);\nint x() { return f(1, |2); }",
         "int f(int a, int b)#1/2"},
        {"a variadic's last", "int p(char* f, ...);\nint x() { return p(a, 1, 2, |3); }", "int p(char * f, ...)#1/1"},
        {"one too many", "int f(int a);\nint x() { return f(1, 2|); }", "int f(int a)#1/1"},
        {"a macro", "#define M(a, b) a\nint x = M(1, |2);", "M(a, b)#1/1"},
        {"a member", "struct S { int m(int a); };\nint x(S* s) { return s->m(|); }", "int m(int a)#0/1"},
        {"a constructor", "struct S { S(int a, int b); };\nint x() { S(1, |2); }", "S(int a, int b)#1/1"},
        {"a variable that is constructed", "struct S { S(int a, int b); };\nint x() { S s(1, |2); }",
         "S(int a, int b)#1/1"},
        {"a template's arguments", "template <class K, int N> struct Map {};\nMap<int, |2> m;",
         "Map<class K, int N>#1/1"},
        {"a message",
         "== a.m\n@interface Shelf\n- (int)put:(id)book at:(int)place;\n@end\n"
         "int x(Shelf* s) { return [s put:nil at:|1]; }\n",
         "int put:at:(id book, int place)#1/1"},
        {"nothing is called", "int x = (1 + |2);", ""},
        {"what is unknown", "int x = unknown(|);", ""},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(HelpFor(each.text), each.help) << each.why;
}

TEST(SignatureHelp, ParametersAreOffsetsWhereTheClientTakesThem)
{
    const std::string text = "int f(int a, int b);\nint x() { return f(|); }";
    FeatureOptions options;
    EXPECT_EQ(FeatureFixture(text, options).Ask("textDocument/signatureHelp")["signatures"][0]["parameters"],
              (Json::array({{{"label", "int a"}}, {{"label", "int b"}}})));
    options.capabilities["textDocument"]["signatureHelp"]["signatureInformation"]["parameterInformation"]
                        ["labelOffsetSupport"] = true;
    EXPECT_EQ(FeatureFixture(text, options).Ask("textDocument/signatureHelp")["signatures"][0]["parameters"],
              (Json::array({{{"label", {6, 11}}}, {{"label", {13, 18}}}})));
}
