#include "tagging/tokens/Facts.h"
#include "tagging/tokens/Keywords.h"
#include "tagging/tokens/SourceTokens.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

namespace tagging {
namespace {

using testing::ElementsAre;
using Names = std::set<std::string>;

std::string NamesIn(std::string_view text)
{
    FactFinder finder;
    std::string names;
    for (const std::string_view name : finder.Find(text).names)
        names += (names.empty() ? "" : " ") + std::string(name);
    return names;
}

struct NamesCase {
    const char* why;
    const char* text;
    const char* names;
};

const NamesCase kNames[] = {
    {"each name once, without reserved words", "int a = b + a; return a;", "a b"},
    {"names with digits and signs", "a1 _b $c a1b2", "a1 _b $c a1b2"},
    {"bytes above 127 belong to names",
     "gr\xc3\xb6\xc3\x9f"
     "e = 1;",
     "gr\xc3\xb6\xc3\x9f"
     "e"},
    {"no names in comments", "/* a */ b // c\nd /* e\nf */ g", "b d g"},
    {"a comment that looks closed at once", "/*/ a */ b", "b"},
    {"a comment of stars", "/***/ a /**** b ****/ c", "a c"},
    {"a comment that is not closed", "a /* b", "a"},
    {"a splice continues a comment", "// a \\\nb\nc", "c"},
    {"a splice of Windows, too", "// a \\\r\nb\r\nc", "c"},
    {"a slash alone", "a / b", "a b"},
    {"no names in strings", "a(\"b \\\" c\", 'd', '\\'', e)", "a e"},
    {"a string that is not closed ends with its line", "a \"b\nc", "a c"},
    {"a splice continues a string", "a \"b\\\nc\" d", "a d"},
    {"the prefix of a string is a word of its own", "L\"a\" u8\"b\"", "L u8"},
    {"no names in raw strings", "R\"(a\" b)\" c R\"x(d )\" e )x\" f", "c f"},
    {"a raw string with a prefix", "u8R\"(a)\" b", "b"},
    {"a raw string that is not closed", "a R\"(b", "a"},
    {"what only looks like a raw string", "R\"a b\" c", "R c"},
    {"no names in numbers", "0x1F 1e+5 1'000'000 0b1ull .5e3f a", "a"},
    {"a separator of digits does not begin a character", "1'0 a 'b'", "a"},
    {"names in directives", "#define A(x) b\n#if defined(C) && D\n#endif", "A x b defined C D"},
    {"no names in includes", "#include <sys/stat.h>\n#include \"b.h\"\na", "a"},
    {"names in an include by macro", "#include HEADER", "HEADER"},
    {"a sharp sign in a line is no directive", "a #include <b>", "a include b"},
    {"an apostrophe in the text of an error hides the rest of its line", "#error don't b\na", "don a"},
};

TEST(Facts, HaveTheNamesOutsideOfCommentsAndStrings)
{
    for (const NamesCase& each : kNames)
        EXPECT_EQ(NamesIn(each.text), each.names) << each.why;
}

TEST(Facts, KeepNamesApartThatAreReservedInCplusplusOnly)
{
    FactFinder finder;
    const Facts facts = finder.Find("struct class *class = new(this); while (private) a();");
    EXPECT_THAT(facts.names, ElementsAre("a"));
    EXPECT_THAT(facts.cplusplusKeywords, ElementsAre("class", "new", "this", "private"));
}

TEST(Facts, HaveIncludesOfAllForms)
{
    FactFinder finder;
    const Facts facts = finder.Find("#include <a/b.h>\n"
                                    "/* #include <no.h> */\n"
                                    "  #  import \"c.h\" // comment\n"
                                    "#include_next <d.h>\n"
                                    "@import Foundation.NSString;\n"
                                    "#include <unclosed\n"
                                    "/* at the line's start */ #include \"e.h\"\n"
                                    "x = #include \"no.h\"\n");
    using Form = Facts::Include::Form;
    std::vector<std::string> found;
    for (const Facts::Include& include : facts.includes)
        found.push_back(std::to_string(include.line) + " " + std::string(include.name) + " " +
                        (include.form == Form::Angled   ? "<>"
                         : include.form == Form::Quoted ? "\"\""
                                                        : "module"));
    EXPECT_THAT(found,
                ElementsAre("1 a/b.h <>", "3 c.h \"\"", "4 d.h <>", "5 Foundation.NSString module", "7 e.h \"\""));
}

TEST(Facts, HaveUsingDeclarations)
{
    FactFinder finder;
    const Facts facts = finder.Find("using std::vector;\nusing  a::b ;\nusing X = int;\nusing c::d, e;\n");
    std::vector<std::string> found;
    for (const Facts::Using& each : facts.usings)
        found.push_back(std::to_string(each.line) + " " + std::string(each.what));
    EXPECT_THAT(found, ElementsAre("1 std::vector", "2 a::b", "4 c::d"));
}

TEST(Facts, ShowObjectiveCOutsideOfComments)
{
    FactFinder finder;
    EXPECT_TRUE(finder.Find("@interface A").hasObjectiveC);
    EXPECT_TRUE(finder.Find("@class A;").hasObjectiveC);
    EXPECT_FALSE(finder.Find("// @interface A\nint a;").hasObjectiveC);
    EXPECT_FALSE(finder.Find("s = @\"class\"; @property").hasObjectiveC);
}

TEST(Facts, AreFoundInManyTextsWithOneFinder)
{
    FactFinder finder;
    EXPECT_THAT(finder.Find("a b").names, ElementsAre("a", "b"));
    std::string many;
    for (int i = 0; i < 5000; ++i)
        many += "name" + std::to_string(i) + " name" + std::to_string(i) + "\n";
    EXPECT_EQ(finder.Find(many).names.size(), 5000u);
    EXPECT_THAT(finder.Find("b a").names, ElementsAre("b", "a"));
    EXPECT_EQ(finder.Find(many).names.size(), 5000u);
    EXPECT_THAT(finder.Find("name1 name4999 name4999").names, ElementsAre("name1", "name4999"));
}

// The words of SourceTokens, which is slower and simpler.
void AddWords(std::string_view text, Names& names)
{
    SourceTokens tokens(text);
    Token last;
    for (Token token; tokens.Next(token); last = token) {
        if (token.kind == Token::kDirective) {
            const Directive directive(token.text);
            const bool isInclude = directive.name.starts_with("include") || directive.name == "import";
            // "#include FT_FREETYPE_H" mentions a macro.
            if (!isInclude || directive.rest.find_first_of("<\"") == std::string_view::npos)
                AddWords(directive.rest, names);
        } else if (token.kind == Token::kWord && !last.Is('@') && KindOfKeyword(token.text) == Keyword::No) {
            names.emplace(token.text);
        }
    }
}

TEST(Facts, AreThoseOfTheTokensInTheSystemsHeaders)
{
    size_t files = 0;
    FactFinder finder;
    for (const auto& entry : std::filesystem::recursive_directory_iterator("/usr/include")) {
        if (!entry.is_regular_file() || entry.path().extension() != ".h" || ++files % 10 != 0)
            continue;
        std::ostringstream content;
        content << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        const std::string text = content.str();
        Names expected;
        AddWords(text, expected);
        const Facts facts = finder.Find(text);
        EXPECT_EQ(Names(facts.names.begin(), facts.names.end()), expected) << entry.path();
    }
    EXPECT_GT(files, 100u);
}

TEST(Keywords, AreFoundByEachOfTheirLetters)
{
    EXPECT_EQ(KindOfKeyword("_Alignas"), Keyword::OfBoth);
    EXPECT_EQ(KindOfKeyword("__volatile__"), Keyword::OfBoth);
    EXPECT_EQ(KindOfKeyword("while"), Keyword::OfBoth);
    EXPECT_EQ(KindOfKeyword("new"), Keyword::OfCplusplus);
    EXPECT_EQ(KindOfKeyword("class"), Keyword::OfCplusplusOutright);
    for (const char* name : {"a", "z", "_", "$", "whiles", "whil", "self", "id", "\xff"})
        EXPECT_EQ(KindOfKeyword(name), Keyword::No) << name;
}

} // namespace
} // namespace tagging
