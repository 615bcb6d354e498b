#include "tags/NameAndQualifier.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <memory>
#include <vector>

namespace {

struct Free {
    void operator()(char* entry) const { std::free(entry); }
};
using Entry = std::unique_ptr<char, Free>;

Entry Make(const std::string& name, const std::string& qualifier)
{
    return Entry(NameAndQualifier::NewEntry(name.c_str(), static_cast<int>(name.length()), qualifier.c_str(),
                                            static_cast<int>(qualifier.length())));
}

} // namespace

TEST(NameAndQualifier, SplitsBehindTheLastColons)
{
    const struct {
        const char* why;
        const char* full;
        const char* name;
        const char* qualifier;
    } kCases[] = {
        {"a plain name leaves the qualifier alone", "a", "a", "untouched"},
        {"one level", "A::b", "b", "A"},
        {"the last colons split", "A::B::c", "c", "A::B"},
        {"the global scope is an empty qualifier", "::c", "c", ""},
        {"nothing follows", "A::", "A::", "untouched"},
        {"nothing but colons", "::", "::", "untouched"},
        {"a selector", "setValue:", "setValue:", "untouched"},
        {"a selector with two parts", "a:b:", "a:b:", "untouched"},
        {"a single colon before the end", "a:b", "a:b", "untouched"},
        {"only a colon in front", ":b", ":b", "untouched"},
        {"three colons keep one in the qualifier", "A:::b", "b", "A:"},
        {"a selector behind a scope is no name in it", "A::b:", "A::b:", "untouched"},
        {"nothing at all", "", "", "untouched"},
    };
    for (const auto& c : kCases) {
        std::string name = "old";
        std::string qualifier = "untouched";
        NameAndQualifier::Split(c.full, name, qualifier);
        EXPECT_EQ(name, c.name) << c.why;
        EXPECT_EQ(qualifier, c.qualifier) << c.why;
    }
}

TEST(NameAndQualifier, SplitsATextInPlace)
{
    std::string text = "Outer::Inner::name";
    std::string qualifier;
    NameAndQualifier::Split(text, text, qualifier);
    EXPECT_EQ(text, "name");
    EXPECT_EQ(qualifier, "Outer::Inner");

    std::string name;
    text = "Outer::Inner::name";
    NameAndQualifier::Split(text, name, text);
    EXPECT_EQ(name, "name");
    EXPECT_EQ(text, "Outer::Inner");
}

TEST(NameAndQualifier, AnEntryHoldsBothTextsAndReadsAsItsName)
{
    const Entry entry = Make("size", "vector");
    EXPECT_STREQ(entry.get(), "size");
    EXPECT_EQ(std::string(entry.get(), 12), std::string("size\0vector\0", 12));

    const char* name;
    const char* qualifier;
    EXPECT_EQ(NameAndQualifier::FromEntry(entry.get(), name, qualifier), 4);
    EXPECT_EQ(name, entry.get());
    EXPECT_STREQ(qualifier, "vector");
}

TEST(NameAndQualifier, AnEntryHasRoomForOneByteMoreThanItsTerminators)
{
    // 22 characters and three more bytes do not fit into 24, the size for just the two terminators.
    const Entry entry = Make("elevenchars", "elevenchars");
    EXPECT_GE(malloc_usable_size(entry.get()), 25u);
}

TEST(NameAndQualifier, JoinsWhatAnEntryHolds)
{
    EXPECT_EQ(NameAndQualifier::JoinFromEntry(Make("size", "vector").get()), "vector::size");
    EXPECT_EQ(NameAndQualifier::JoinFromEntry(Make("size", "").get()), "size");
    EXPECT_EQ(NameAndQualifier::JoinFromEntry(Make("", "").get()), "");
}

TEST(NameAndQualifier, EntriesAreInTheByteOrderOfNamesThenQualifiers)
{
    const struct {
        const char* why;
        Entry less;
        Entry more;
    } kCases[] = {
        {"the same name: by qualifier", Make("Foo", "B"), Make("Foo", "C")},
        {"the name comes first", Make("Bar", "Z"), Make("Foo", "A")},
        {"no qualifier before any", Make("Foo", ""), Make("Foo", "A")},
        {"a beginning before the whole", Make("Fo", "Z"), Make("Foo", "A")},
        {"capitals before small letters", Make("Zoo", "A"), Make("bar", "A")},
        {"bytes from 0x80 up come last", Make("z", ""), Make("\xc3\xa4", "")},
    };
    for (const auto& c : kCases) {
        EXPECT_TRUE(NameAndQualifier::CompareCompletionCacheEntries(c.less.get(), c.more.get())) << c.why;
        EXPECT_FALSE(NameAndQualifier::CompareCompletionCacheEntries(c.more.get(), c.less.get())) << c.why;
        EXPECT_FALSE(NameAndQualifier::CompareCompletionCacheEntries(c.less.get(), c.less.get())) << c.why;
    }
}

TEST(NameAndQualifier, EntriesAreEqualInNameAndQualifier)
{
    const Entry entry = Make("size", "vector");
    EXPECT_TRUE(NameAndQualifier::MatchCompletionCacheEntries(entry.get(), Make("size", "vector").get()));
    EXPECT_FALSE(NameAndQualifier::MatchCompletionCacheEntries(entry.get(), Make("size", "list").get()));
    EXPECT_FALSE(NameAndQualifier::MatchCompletionCacheEntries(entry.get(), Make("max", "vector").get()));
}

TEST(MatchName, Cases)
{
    const struct {
        const char* why;
        const char* pattern;
        const char* tag;
        bool matches;
        bool matchesInPart;
    } kCases[] = {
        {"equal names", "size", "size", true, true},
        {"a beginning", "si", "size", false, true},
        {"a shorter tag", "size", "si", false, false},
        {"another case", "Size", "size", false, false},
        {"template arguments of the pattern ignored", "vector<int>", "vector", true, true},
        {"template arguments of the tag ignored", "vector", "vector<int>", true, true},
        {"an operator is no template", "operator<", "operator", false, false},
        {"a selector is a beginning", "initWithFrame:", "initWithFrame:style:", true, true},
        {"a whole selector", "initWithFrame:style:", "initWithFrame:style:", true, true},
        {"a selector that goes on otherwise", "initWithFrame:style:", "initWithFrame:color:", false, false},
        {"a plain name is no selector", "init", "initWithFrame:", false, true},
        {"a colon is part of a selector", "initWithFrame:", "initWithFrame", false, false},
        {"a selector of a template: compared whole, as text", "a<b>:", "a<b>:c:", true, true},
        {"a selector is partly matched as a template is: up to the arguments", "a<b>:", "a", false, true},
        {"an empty pattern begins every name", "", "size", false, true},
        {"nothing in front of the template arguments", "<int>", "<long>", true, true},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(NameAndQualifier::MatchName::Match(c.pattern, c.tag), c.matches) << c.why;
        EXPECT_EQ(NameAndQualifier::MatchName::PartialMatch(c.pattern, c.tag), c.matchesInPart) << c.why;
    }
}

TEST(MatchQualifier, MatchesFromTheInnerEnd)
{
    const struct {
        const char* why;
        const char* pattern;
        const char* tag;
        bool matches;
    } kCases[] = {
        {"no qualifier asked for", "", "Outer", true},
        {"no qualifier asked for, none there", "", "", true},
        {"one asked for, none there", "Inner", "", false},
        {"the same", "Inner", "Inner", true},
        {"an outer scope before it", "Inner", "Outer::Inner", true},
        {"the end of a longer name", "Inner", "XInner", false},
        {"as long as a scope, but none", "Inner", "XYZInner", false},
        {"a scope elsewhere and the end of a longer name", "Inner", "A::XYZInner", false},
        {"a deeper scope", "Inner", "Inner::Deeper", false},
        {"two levels inside a third", "Outer::Inner", "A::Outer::Inner", true},
        {"two levels, the outer one another", "Outer::Inner", "A::Other::Inner", false},
        {"the global scope is no outer scope", "Inner", "::Inner", false},
        {"one character is an outer scope", "Inner", "A::Inner", true},
        {"template arguments ignored", "vector<int>", "vector", true},
        {"a longer pattern because of template arguments, inside a scope", "vector<int>", "std::vector", false},
        {"template arguments of the inner end", "map<K>", "std::map<K>", true},
        {"further fields of a line are part of the qualifier", "Inner", "Inner\taccess:public", false},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(NameAndQualifier::MatchQualifier::Match(c.pattern, c.tag), c.matches) << c.why;
}

TEST(MatchQualifier, LooksAtTheQualifierOfAnEntry)
{
    const NameAndQualifier::MatchQualifier qualified("Inner::name");
    EXPECT_TRUE(qualified(Make("other", "Outer::Inner").get()));
    EXPECT_FALSE(qualified(Make("name", "").get()));

    const NameAndQualifier::MatchQualifier unqualified("name");
    EXPECT_TRUE(unqualified(Make("other", "Outer").get()));
}

namespace {

template <class Less>
std::vector<std::string> EqualRange(const char* pattern, Less less)
{
    const std::vector<const char*> sorted = {"aa", "ab", "aba", "abz:", "ac", "initWith:", "initWith:b:", "initX"};
    const auto range = std::equal_range(sorted.begin(), sorted.end(), pattern, less);
    return {range.first, range.second};
}

} // namespace

TEST(PartialMatchLess, NamesThatBeginWithThePatternsNameAreEqual)
{
    using Names = std::vector<std::string>;
    EXPECT_EQ(EqualRange("ab", NameAndQualifier::PartialMatchLess("Outer::ab")), (Names{"ab", "aba", "abz:"}));
    EXPECT_EQ(EqualRange("ad", NameAndQualifier::PartialMatchLess("ad")), Names{});
    const NameAndQualifier::PartialMatchLess original("aba");
    const NameAndQualifier::PartialMatchLess copy = original;
    EXPECT_EQ(EqualRange("aba", copy), (Names{"aba"}));
}

TEST(ObjCMethodMatch, SelectorsThatBeginWithThePatternAreEqual)
{
    using Names = std::vector<std::string>;
    EXPECT_EQ(EqualRange("initWith:", ObjCMethodMatch("initWith:")), (Names{"initWith:", "initWith:b:"}));
    EXPECT_EQ(EqualRange("a::ab", ObjCMethodMatch("a::ab")), Names{}) << "nothing is split off";
    EXPECT_TRUE(ObjCMethodMatch::MatchMethodParts("a:", "a:b:"));
    EXPECT_FALSE(ObjCMethodMatch::MatchMethodParts("a:b:", "a:"));
    EXPECT_TRUE(ObjCMethodMatch::MatchMethodParts("", "a:"));
}
