// What a call takes.
#include "tests/lsp/features/FeatureFixture.h"

#include "wren/lsp/features/SignatureHelp.h"
#include "wren/lsp/features/Signatures.h"

#include <gmock/gmock.h>

namespace {

using lsp_test::FeatureFixture;
using lsp_test::FeatureOptions;
using lsp_test::Json;
using testing::ElementsAreArray;

// "int f(int a,int b)#1/2": the active one, with the active parameter and the number of signatures. "" for null.
std::string HelpFor(const std::string& text)
{
    const Json help = FeatureFixture(text).Ask("textDocument/signatureHelp");
    if (help.is_null())
        return "";
    const size_t active = help["activeSignature"];
    return help["signatures"][active]["label"].get<std::string>() + "#" +
           std::to_string(help["activeParameter"].get<int>()) + "/" + std::to_string(help["signatures"].size());
}

// The name of the innermost call and its active argument: "g 1".
std::string CallIn(std::string text)
{
    const size_t caret = text.find('|');
    text.erase(caret, 1);
    const resolve::Tokens tokens(text);
    const std::optional<wren::lsp::CallAround> call = wren::lsp::FindCall(tokens, caret);
    return call ? std::string(tokens[call->name].text) + " " + std::to_string(call->active) : "";
}

} // namespace

TEST(FindCall, Cases)
{
    const struct {
        const char* why;
        const char* text;
        const char* call;
    } kCases[] = {
        {"an empty list", "f(|)", "f 0"},
        {"the second argument", "f(a, |b)", "f 1"},
        {"an unfinished call", "{ f(a, b, |", "f 2"},
        {"the inner call", "f(g(a, |), c)", "g 1"},
        {"behind the inner call", "f(g(a, b), |c)", "f 1"},
        {"behind the call", "f(a)|;", ""},
        {"a cast", "f((int)|a, b)", "f 0"},
        {"in a cast", "f((i|nt)a, b)", "f 0"},
        {"a condition", "if (a, |b)", ""},
        {"a list in braces", "f({1, |2}, 3)", "f 0"},
        {"the body of a lambda", "f([] { a, |b; })", ""},
        {"an index", "f(a[1, |2], 3)", "f 0"},
        {"a template's arguments", "Map<int, |char> m;", "Map 1"},
        {"a call with template arguments", "Make<int, char>(1, |2)", "Make 1"},
        {"less than", "x = a < b, |c;", ""},
        {"a message", "[shelf put:book at:|2];", "put 1"},
        {"a message in a message", "[[shelf first] put:|book];", "put 0"},
        {"before the first argument", "[shelf put|:book];", ""},
        {"outside of everything", "int a;|", ""},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(CallIn(each.text), each.call) << each.why;
}

TEST(ParametersOf, Cases)
{
    const struct {
        const char* signature;
        std::vector<std::string> parameters;
    } kCases[] = {
        {"(int a,char * b)", {"int a", "char * b"}},
        {"()", {}},
        {"(void)", {}},
        {"(std::map<int,char> m,int (* f)(int,int)) const", {"std::map<int,char> m", "int (* f)(int,int)"}},
        {"<class T,int N>", {"class T", "int N"}},
        {"<template<class,class> class C,class D>", {"template<class,class> class C", "class D"}},
        {"(a, ...)", {"a", "..."}},
        {"(unfinished, b", {"unfinished"}},
        {"", {}},
    };
    for (const auto& each : kCases)
        EXPECT_THAT(wren::lsp::ParametersOf(each.signature), ElementsAreArray(each.parameters)) << each.signature;
}

TEST(SignatureHelp, Cases)
{
    const struct {
        const char* why;
        const char* text;
        const char* help;
    } kCases[] = {
        {"a function of C once, declared and defined",
         "== a.c\nint f(int, int);\nint f(int a, int b) { return a; }\nint x(void) { return f(1, |2); }\n",
         "int f(int a,int b)#1/1"},
        {"the overload that takes as many", "int f(int a); int f(int a, int b);\nint x() { return f(1, |2); }",
         "int f(int a,int b)#1/2"},
        {"a variadic's last", "int p(char* f, ...);\nint x() { return p(a, 1, 2, |3); }", "int p(char * f,...)#1/1"},
        {"one too many", "int f(int a);\nint x() { return f(1, 2|); }", "int f(int a)#1/1"},
        {"a macro", "#define M(a, b) a\nint x = M(1, |2);", "M(a,b)#1/1"},
        {"a member", "struct S { int m(int a); };\nint x(S* s) { return s->m(|); }", "int m(int a)#0/1"},
        {"a constructor", "struct S { S(int a, int b); };\nint x() { S(1, |2); }", "S(int a,int b)#1/1"},
        {"a variable that is constructed", "struct S { S(int a, int b); };\nint x() { S s(1, |2); }",
         "S(int a,int b)#1/1"},
        {"a template's arguments", "template <class K, int N> struct Map {};\nMap<int, |2> m;",
         "Map<class K,int N>#1/1"},
        {"a message",
         "== a.m\n@interface Shelf\n- (int)put:(id)book at:(int)place;\n@end\n"
         "int x(Shelf* s) { return [s put:nil at:|1]; }\n",
         "int put:at:(id book,int place)#1/1"},
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
              (Json::array({{{"label", {6, 11}}}, {{"label", {12, 17}}}})));
}
