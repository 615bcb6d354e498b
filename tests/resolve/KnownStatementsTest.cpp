// Many questions about one function read each of its statements once.
#include "resolve/KnownStatements.h"
#include "resolve/Locals.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace resolve {
namespace {

constexpr size_t kMany = 500;

std::string Repeated(const std::string& text)
{
    std::string all;
    for (size_t i = 0; i < kMany; ++i)
        all += text;
    return all;
}

size_t NameOf(const std::optional<LocalName>& found)
{
    return found ? found->name : kNone;
}

TEST(KnownStatements, ReadEachStatementOnceForAllMentions)
{
    const struct {
        const char* why;
        std::string text;
    } kCases[] = {
        {"statements", "void f(int n) {\n" + Repeated("g(n);\n") + "}\n"},
        {"statements that mention it twice", "void f(int n) {\n" + Repeated("g(n, n);\n") + "}\n"},
        {"declarations of other names", "void f() {\nint n;\n" + Repeated("int m = n;\n") + "}\n"},
        {"declarations of the name", "void f() {\n" + Repeated("g(n);\nint n;\n") + "}\n"},
        {"one expression", "int f(int n) { return n" + Repeated(" + n") + "; }\n"},
        {"a chain of conditions", "void f(int n) { if (n) ;" + Repeated(" else if (n == 1) g(n);\n") + "}\n"},
        {"blocks", "void f(int n) {\n" + Repeated("{ g(n); }\n") + "}\n"},
        {"lambdas", "void f(int n) {\n" + Repeated("run([&](int a) { g(n); });\n") + "}\n"},
        {"loops of a macro", "void f(int n) {\n" + Repeated("each(Item x, n) { g(n); }\n") + "}\n"},
    };
    for (const auto& each : kCases) {
        const Tokens tokens(each.text);
        KnownStatements known(tokens, "n");
        size_t mentions = 0;
        for (size_t i = 0; i < tokens.Count(); ++i)
            if (tokens[i].text == "n") {
                ++mentions;
                EXPECT_EQ(NameOf(FindLocal(tokens, i, "n", known)), NameOf(FindLocal(tokens, i))) << each.why;
            }
        EXPECT_GE(mentions, kMany) << each.why;
        EXPECT_GE(known.Readings(), 1U) << each.why;
        // Each line adds a few statements, headers and lists; reading all of them for each mention makes kMany * kMany.
        EXPECT_LE(known.Readings(), 6 * kMany) << each.why;
    }
}

TEST(KnownStatements, AnswerInAnyOrder)
{
    const std::string text = "void f(int n) {\n g(n);\n for (int n = 0; n < 3; ++n) { g(n); int n = 1; h(n); }\n"
                             " if (n) { int n; } else if (int n = g()) { h(n); }\n run([n](int n) { g(n); });\n"
                             " case 1: int n; h(n);\n { g(n); int n; g(n); }\n while (n) n--;\n}\nint n = n;\n";
    const Tokens tokens(text);
    std::vector<size_t> mentions;
    for (size_t i = 0; i < tokens.Count(); ++i)
        if (tokens[i].text == "n")
            mentions.push_back(i);
    KnownStatements known(tokens, "n");
    for (size_t stride : {7U, 5U, 3U, 1U})
        for (size_t i = 0; i < mentions.size(); ++i) {
            const size_t mention = mentions[i * stride % mentions.size()];
            EXPECT_EQ(NameOf(FindLocal(tokens, mention, "n", known)), NameOf(FindLocal(tokens, mention)))
                << "line " << tokens[mention].line << ", token " << mention;
        }
}

} // namespace
} // namespace resolve
