#include "resolve/ParsedText.h"
#include "resolve/Resolver.h"
#include "tests/support/SnapshotOf.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace resolve {
namespace {

struct NothingToRead : Sources {
    std::optional<std::string> Read(const std::string&) const override { return std::nullopt; }
};

class ParsedTextsTest : public testing::Test {
protected:
    ParsedTextPointer Get(const std::string& path, const std::string& text)
    {
        return kept.Get(path, text, texts.Parser());
    }

    static std::string Names(const ParsedText& text)
    {
        std::string names;
        for (const tagging::Symbol& symbol : text.parsed->symbols)
            names += std::string(symbol.name) + ":" + std::to_string(symbol.line) + " ";
        return names;
    }

    TextsParser texts;
    ParsedTexts kept;
};

TEST_F(ParsedTextsTest, ParsesATextOnceForAllWhoAskAtTheSameTime)
{
    std::string text;
    for (int i = 0; i < 2000; ++i)
        text += "int f" + std::to_string(i) + "(int a) { return a; }\n";
    std::vector<ParsedTextPointer> got(8);
    std::vector<std::thread> askers;
    for (ParsedTextPointer& each : got)
        askers.emplace_back([&, at = &each] { *at = Get("a.c", text); });
    for (std::thread& asker : askers)
        asker.join();
    for (const ParsedTextPointer& each : got)
        EXPECT_EQ(each, got.front());
    EXPECT_EQ(got.front()->parsed->symbols.size(), 2000U);
}

TEST_F(ParsedTextsTest, KnowsTheSymbolsOfEachVersion)
{
    EXPECT_EQ(Names(*Get("a.c", "int f(void)\n{\n    return 1;\n}\nint g;\n")), "f:1 g:5 ");
    EXPECT_EQ(Names(*Get("a.c", "int f(void)\n{\n    return 1;\n\n}\nint g;\n")), "f:1 g:6 ");
    EXPECT_EQ(Names(*Get("a.c", "int f(void)\n{\n    return 1;\n\n}\nint h;\n")), "f:1 h:6 ");
    EXPECT_EQ(Names(*Get("a.c", "int f(void)\n{\n    return 1; }\nint g(void) {\n}\nint h;\n")), "f:1 g:4 h:6 ");
}

TEST_F(ParsedTextsTest, KeepsOneVersionOfEachText)
{
    const ParsedTextPointer first = Get("a.c", "int a;");
    const ParsedTextPointer other = Get("b.c", "int a;");
    EXPECT_EQ(Get("a.c", "int a;"), first);
    Get("a.c", "int b;");
    EXPECT_NE(Get("a.c", "int a;"), first);
    EXPECT_EQ(Get("b.c", "int a;"), other);
}

TEST_F(ParsedTextsTest, DropsTextsThatWereNotAskedForWhenTheyAreTooMany)
{
    const std::string large = "int a;" + std::string(900'000, ' ');
    const ParsedTextPointer first = Get("a.c", large);
    const ParsedTextPointer second = Get("b.c", large);
    EXPECT_EQ(Get("a.c", large), first);
    Get("c.c", large);
    EXPECT_EQ(Get("a.c", large), first);
    EXPECT_NE(Get("b.c", large), second);
}

TEST_F(ParsedTextsTest, HasATextThatWasReadAhead)
{
    const auto snapshot = texts.Snapshot({{"a.h", "int a;\n"}});
    const NothingToRead sources;
    const std::string text = "#include \"a.h\"\nint b;\n";
    Resolver(*snapshot, sources, texts.Parser(), &kept).ReadAhead({"b.c", text, 0});
    tagging::Settings none;
    none.ctags.program = "/nonexistent";
    tagging::TextParser broken(none);
    EXPECT_EQ(Names(*kept.Get("b.c", text, broken)), "b:2 ");
}

TEST_F(ParsedTextsTest, SaysWhyATextHasNoSymbols)
{
    tagging::Settings none;
    none.ctags.program = "/nonexistent";
    tagging::TextParser broken(none);
    const ParsedTextPointer parsed = kept.Get("a.c", "int a;", broken);
    EXPECT_TRUE(parsed->problem);
    EXPECT_EQ(Names(*parsed), "");
    EXPECT_EQ(Names(*Get("a.c", "int a; ")), "a:1 ");
}

TEST_F(ParsedTextsTest, AnswersForTextsThatChangeWhileOthersAsk)
{
    std::vector<std::thread> askers;
    for (int asker = 0; asker < 4; ++asker)
        askers.emplace_back([&, asker] {
            for (int version = 0; version < 25; ++version) {
                const std::string lines(static_cast<size_t>((version * 7 + asker) % 11), '\n');
                const ParsedTextPointer got = Get("a.c", "int f(void)\n{\n" + lines + "}\nint g;\n");
                EXPECT_EQ(Names(*got), "f:1 g:" + std::to_string(lines.size() + 4) + " ");
            }
        });
    for (std::thread& asker : askers)
        asker.join();
}

} // namespace
} // namespace resolve
