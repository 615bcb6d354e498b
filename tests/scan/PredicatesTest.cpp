#include "scan/Predicates.h"

#include <gtest/gtest.h>

namespace {

TEST(IsIDChar, TakesLettersDigitsAndUnderscoreOnly)
{
    const std::string identifier = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
    for (int byte = 0; byte < 256; ++byte) {
        const char ch = static_cast<char>(byte);
        const bool expected = byte != 0 && identifier.find(ch) != std::string::npos;
        EXPECT_EQ(IsIDChar(ch), expected) << "byte " << byte;
        EXPECT_EQ(IsIDCharOrColon(ch), expected || ch == ':') << "byte " << byte;
    }
}

struct KindCase {
    const char* why;
    const char* pattern;
    bool objC;
    bool multiPart;
    bool cpp;
};
const KindCase kKindCases[] = {
    {"nothing at all", "", false, false, false},
    {"a plain name", "strcpy", false, false, false},
    {"one piece of a selector", "setValue:", true, false, false},
    {"a colon and nothing else", ":", true, false, false},
    {"two pieces", "a:b:", true, true, false},
    {"a second piece that is being typed", "initWithFrame:sty", true, false, false},
    {"a scope", "std::vector", false, false, true},
    {"a scope and nothing else", "::", false, false, true},
    {"a scope rules a selector out", "a::b:", false, false, true},
    {"wherever it stands", "a:b::c", false, false, true},
    {"and however many colons there are", "a::b:c:", false, false, true},
};

TEST(PatternKind, DependsOnTheColons)
{
    for (const KindCase& c : kKindCases) {
        EXPECT_EQ(IsObjCPattern(c.pattern), c.objC) << c.why;
        EXPECT_EQ(IsMultiPartObjCPattern(c.pattern), c.multiPart) << c.why;
        EXPECT_EQ(IsCppPattern(c.pattern), c.cpp) << c.why;
    }
}

// Every pair of bytes that match; all others must not.
template <class Match>
std::string Pairs(Match match)
{
    std::string pairs;
    for (int closing = 0; closing < 256; ++closing)
        for (int ch = 0; ch < 256; ++ch)
            if (match(static_cast<char>(ch), static_cast<char>(closing)))
                pairs += {static_cast<char>(ch), static_cast<char>(closing), ' '};
    return pairs;
}

TEST(BackwardBracketMatch, MatchesThreePairs)
{
    EXPECT_EQ(Pairs(BackwardBracketMatch), "() <> [] ");
}

TEST(ObjcForwardBracketMatch, MatchesNoAngleBrackets)
{
    EXPECT_EQ(Pairs(ObjcForwardBracketMatch), ")( ][ ") << "in the arguments of a message '<' compares";
}

struct NameCase {
    const char* why;
    const char* a;
    const char* b;
    bool matches;
};
const NameCase kNameCases[] = {
    {"equal names", "vector", "vector", true},
    {"template arguments ignored", "vector<int>", "vector", true},
    {"and what they are", "vector<int>", "vector<char>", true},
    {"and the scope behind them", "vector<int>::iterator", "vector", true},
    {"arguments in arguments", "map<K, vector<V>>::value_type", "map", true},
    {"from the first '<' to the last '>'", "a<b>::c<d>", "a", true},
    {"a shorter name", "vec", "vector", false},
    {"a longer name", "vectors", "vector", false},
    {"another name as long", "factor", "vector", false},
    {"another first letter", "Vector", "vector", false},
    {"two empty names", "", "", true},
    {"an empty name", "", "vector", false},
    {"nothing before the arguments", "<int>", "", true},
    {"nothing before either's arguments", "<int>", "<char>", true},
    {"an operator is no template", "operator<", "operator", false},
    {"nor is the shift", "operator<<", "operator", false},
    {"a comparison is whole", "a<b", "a", false},
    {"a comparison equals itself", "a<b", "a<b", true},
    {"text behind the '>' makes it whole", "a<b>c", "a", false},
    {"a '>' in front is none", "a>b<c", "a>b", false},
    {"an operator that reads as a template", "operator<=>", "operator", true},
    {"bytes beyond ASCII are bytes", "caf\xC3\xA9", "caf\xC3\xA9", true},
};

TEST(MatchSkippingTemplateParams, ComparesBases)
{
    for (const NameCase& c : kNameCases) {
        EXPECT_EQ(MatchSkippingTemplateParams(c.a, c.b), c.matches) << c.why;
        EXPECT_EQ(MatchSkippingTemplateParams(c.b, c.a), c.matches) << c.why << ", the other way round";
    }
}

struct PrefixCase {
    const char* why;
    const char* a;
    const char* b;
    unsigned long n;
    bool matches;
};
const PrefixCase kPrefixCases[] = {
    {"agreeing in what was typed", "foobar", "foo", 3, true},
    {"shorter than what was typed", "fo", "foo", 3, false},
    {"both as short as each other", "fo", "fo", 3, true},
    {"nothing typed: everything matches", "x", "y", 0, true},
    {"nothing typed, and nothing there", "", "y", 0, true},
    {"a base that is cut", "foobar<int>", "foobaz", 5, true},
    {"a base shorter than what was typed", "fo<int>", "foo", 3, false},
    {"that matches a base of its length", "fo<int>", "fo", 3, true},
    {"the first letter differs", "xoobar", "foo", 3, false},
    {"only one has a base", "<int>", "foo", 1, false},
};

TEST(MatchSkippingTemplateParams, LooksNoFurtherThanTheLimit)
{
    for (const PrefixCase& c : kPrefixCases) {
        EXPECT_EQ(MatchSkippingTemplateParams(c.a, c.b, c.n), c.matches) << c.why;
        EXPECT_EQ(MatchSkippingTemplateParams(c.b, c.a, c.n), c.matches) << c.why << ", the other way round";
    }
}

TEST(StripStd, RemovesOneLeadingStd)
{
    EXPECT_EQ(StripStd("std::string"), "string");
    EXPECT_EQ(StripStd("std::std::x"), "std::x") << "a second one is kept";
    EXPECT_EQ(StripStd("std::"), "std::") << "alone it is kept: something is to be looked up";
    EXPECT_EQ(StripStd("std:"), "std:");
    EXPECT_EQ(StripStd("mystd::x"), "mystd::x");
    EXPECT_EQ(StripStd("a::std::x"), "a::std::x");
    EXPECT_EQ(StripStd(""), "");
}

} // namespace
