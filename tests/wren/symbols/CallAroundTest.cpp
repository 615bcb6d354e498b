#include "wren/symbols/CallAround.h"

#include <gtest/gtest.h>
#include <string>

namespace {

// The name of the innermost call and its active argument: "g 1".
std::string CallIn(std::string text)
{
    const size_t caret = text.find('|');
    text.erase(caret, 1);
    const resolve::Tokens tokens(text);
    const std::optional<wren::CallAround> call = wren::FindCall(tokens, caret);
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
