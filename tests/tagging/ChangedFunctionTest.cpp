// A text whose change lies in one function has the symbols that a parse of the whole text finds.
#include "tagging/ChangedFunction.h"
#include "tagging/SourceParser.h"
#include "tagging/ctags/CtagsAtHand.h"
#include "tagging/ctags/CtagsProgram.h"

#include "tests/support/TempDirectory.h"
#include "tests/tagging/SymbolTexts.h"

#include <csignal>
#include <gtest/gtest.h>
#include <random>

namespace tagging {
namespace {

constexpr std::string_view kShapes = R"(#include "shapes.h"
#define MANY 3
typedef struct { int width; } Box;

namespace shapes {
class Round : public Shape {
public:
    int Area() const {
        int area = 1;
        return area;
    }
    int radius;
};
}

static int
sum(int a,
    int b)
{
    struct local { int x; } first = { a };
    int total = first.x;
#if MANY
    total += b;
#endif
    /* a remark */
    return total;
}

int shapes::Round::Other() { return 1; }
struct { int late; } unnamed;
int last(void)
{
    auto twice = [](int n) { return 2 * n; };
    return twice(1);
}
)";

struct Edit {
    const char* why;
    const char* place; // the change is made behind it
    const char* old;   // what stands there
    const char* now;
};

std::string Apply(std::string text, const Edit& edit)
{
    const size_t at = text.find(edit.place + std::string(edit.old));
    EXPECT_NE(at, std::string::npos) << edit.why;
    return text.replace(at + std::string_view(edit.place).size(), std::string_view(edit.old).size(), edit.now);
}

class ChangedFunctionTest : public testing::Test {
protected:
    ChangedFunctionTest() : signalBefore(std::signal(SIGPIPE, SIG_IGN)) {}
    ~ChangedFunctionTest() override { std::signal(SIGPIPE, signalBefore); }

    std::unique_ptr<ParsedSource> Parsed(std::string_view text)
    {
        return std::move(*parser.Parse("a.cpp", text, TextParser::Locals::No));
    }

    // What the changed function alone tells; nullopt when that is not enough.
    std::optional<std::vector<std::string>> Quick(const ParsedSource& before, std::string_view textBefore,
                                                  std::string_view text)
    {
        const std::optional<ChangedFunction> changed = ChangedFunction::Find({textBefore, before}, text);
        if (!changed)
            return std::nullopt;
        const auto output = ctags.OutputFor(changed->Excerpt());
        base::TextPool texts;
        const auto symbols = output ? changed->Symbols(*output, texts) : std::nullopt;
        return symbols ? std::optional(TextsOf(*symbols)) : std::nullopt;
    }

    void (*const signalBefore)(int);
    const TempDirectory work;
    const Settings settings = SettingsIn(work);
    TextParser parser{settings};
    CtagsAtHand ctags{settings.ctags, Parser::Cplusplus};

private:
    static Settings SettingsIn(const TempDirectory& work)
    {
        Settings settings;
        settings.ctags.program = *FindCtags(work.Path());
        settings.ctags.directory = work.Path();
        settings.ctags.temporaries = work.Path();
        settings.ctags.output = CtagsSettings::Output::Symbols;
        return settings;
    }
};

TEST_F(ChangedFunctionTest, KnowsTheSymbolsAfterAChangeInABody)
{
    constexpr Edit kEdits[] = {
        {"a letter", "total += b", "", "c"},
        {"a call", "return total", "", "(a, b)"},
        {"a new line", "int total = first.x;\n", "", "    more();\n"},
        {"a removed line", "{ a };\n", "    int total = first.x;\n", ""},
        {"a block", "/* a remark */\n", "", "    if (a) {\n        return b;\n    }\n"},
        {"a method in its class", "return area", "", " * radius"},
        {"a text with a bracket", "return total", "", " + sizeof \"{\""},
        {"a comment", "int total = first.x;", "", " // {"},
        {"a variable, which is a local", "/* a remark */", "", " static int calls = 0;"},
        {"the body of a lambda's function", "return twice(1)", "", " + twice(2)"},
    };
    const auto before = Parsed(kShapes);
    for (const Edit& edit : kEdits) {
        const std::string text = Apply(std::string(kShapes), edit);
        const auto quick = Quick(*before, kShapes, text);
        ASSERT_TRUE(quick) << edit.why;
        EXPECT_EQ(*quick, TextsOf(Parsed(text)->symbols)) << edit.why;
    }
}

TEST_F(ChangedFunctionTest, LeavesOtherChangesToAParseOfAll)
{
    constexpr Edit kEdits[] = {
        {"outside of functions", "struct { int late; } unnamed", "", "1"},
        {"a function's name", "\nsum", "", "1"},
        {"a parameter on the next line", "    int b", "", "2"},
        {"a second function", "return total;\n}", "", "\nint third(void) {}"},
        {"a bracket that closes the function", "return total;", "", "}"},
        {"a bracket that stays open", "/* a remark */", "", "{"},
        {"a parenthesis that stays open", "total += b", "", " + ("},
        {"a comment that stays open", "return total", "", "/*"},
        {"a directive", "/* a remark */\n", "", "#define MORE 1\n"},
        {"a directive that a comment hides", "int total = first.x;", "", "/*"},
        {"a condition", "#if MANY", "", "Y"},
        {"a macro on two lines", "/* a remark */", "", "\\"},
        {"a local class", "int total = first.x;", "", " struct other { int y; };"},
        {"a member of a local class", "struct local { int x", "", "y"},
        {"one more lambda", "return twice(1);", "", " auto f = [] {};"},
        {"nothing that is there any more", "static int\n", "sum(int a,\n    int b)\n{\n", ""},
    };
    const auto before = Parsed(kShapes);
    for (const Edit& edit : kEdits)
        EXPECT_FALSE(Quick(*before, kShapes, Apply(std::string(kShapes), edit))) << edit.why;
}

TEST_F(ChangedFunctionTest, HasTheSymbolsOfAWholeParseAfterRandomChanges)
{
    constexpr const char* kPieces[] = {"x",      "(",           ")",
                                       "()",     "{",           "}",
                                       "{}",     ";",           "\n",
                                       "/*",     "*/",          "\"",
                                       "'",      "\n#if A\n",   "\n#endif\n",
                                       "f(a);",  "::",          "<",
                                       "=",      "int q(int);", "struct s { int m; } v;",
                                       "[] {}",  "return a;",   "extern int e;",
                                       "\\",     "//",          "class C { void f() {} };",
                                       "struct", "enum {",      "union u"};
    std::mt19937 random(7);
    const auto below = [&](size_t count) { return static_cast<size_t>(random() % count); };
    size_t quicks = 0;
    for (int round = 0; round < 60; ++round) {
        std::string textBefore(kShapes);
        auto before = Parsed(textBefore);
        for (int step = 0; step < 4; ++step) {
            std::string text = textBefore;
            const size_t at = below(text.size());
            if (below(3) == 0)
                text.erase(at, below(10));
            else
                text.insert(at, kPieces[below(std::size(kPieces))]);
            quicks += Quick(*before, textBefore, text) ? 1 : 0;
            auto changed = std::move(*parser.ParseChanged("a.cpp", text, {textBefore, *before}));
            const auto whole = Parsed(text);
            ASSERT_EQ(TextsOf(changed->symbols), TextsOf(whole->symbols)) << textBefore << "\nbecame\n" << text;
            EXPECT_EQ(SortedNames(*changed), SortedNames(*whole));
            EXPECT_EQ(changed->contentHash, whole->contentHash);
            before = std::move(changed);
            textBefore = text;
        }
    }
    EXPECT_GT(quicks, 20U);
}

} // namespace
} // namespace tagging
