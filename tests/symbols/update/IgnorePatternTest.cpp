#include "symbols/update/IgnorePattern.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace symbols {

namespace {

struct Case {
    const char* why;
    const char* pattern;
    const char* path; // a directory when it ends in "/"
    bool matches;
};

const Case kCases[] = {
    {"a name matches at every level", "a.c", "x/y/a.c", true},
    {"a name is whole", "a.c", "ba.c", false},
    {"a slash at the beginning binds it to the top", "/a.c", "x/a.c", false},
    {"and is not part of the name", "/a.c", "a.c", true},
    {"a slash inside binds it, too", "x/a.c", "y/x/a.c", false},
    {"a slash at the end wants a directory", "build/", "build", false},
    {"at any level", "build/", "x/build/", true},
    {"without it a directory matches as well", "build", "build/", true},
    {"a star stays in a name", "a/*", "a/b/c", false},
    {"a star may be empty", "a*", "a", true},
    {"an ending", "*.o", "x/a.o", true},
    {"an ending that is not there", "*.o", "x/a.oo", false},
    {"stars that need several tries", "*a*b*c", "xaxbxbxc", true},
    {"stars that fail", "*a*b*c", "xaxbxbx", false},
    {"two stars are directories", "**/b", "b", true},
    {"any number of them", "**/b", "x/y/b", true},
    {"in the middle", "a/**/b", "a/x/y/b", true},
    {"or none", "a/**/b", "a/b", true},
    {"whole ones only", "a/**/b", "a/xb", false},
    {"all that is inside", "a/**", "a/x/y", true},
    {"but not itself", "a/**", "a/", false},
    {"beside other characters they are one star", "a/b**c", "a/b/c", false},
    {"or two", "a/b**c", "a/bxxc", true},
    {"unless they are the first sign, as in git", "b**/c", "bx/y/c", true},
    {"a question mark is one character", "a?c", "abc", true},
    {"but no slash", "a?c/d", "a/c/d", false},
    {"a set", "a[xy]c", "ayc", true},
    {"a range", "[a-c].h", "b.h", true},
    {"not in a set", "[!a-c].h", "b.h", false},
    {"a bracket first in a set", "[]x]", "]", true},
    {"a set never takes a slash", "a[!x]b/c", "a/b/c", false},
    {"a slash in a set", "a[x/y]c", "ayc", true},
    {"a class", "[[:digit:]]x", "7x", true},
    {"classes are of ASCII", "[[:alpha:]]", "\xe4", false},
    {"an unknown class matches nothing", "[[:letter:]]", "a", false},
    {"a set without an end matches nothing", "[a", "[a", false},
    {"a backslash takes what follows literally", "\\*", "*", true},
    {"only that", "\\*", "x", false},
    {"a hash that is no comment", "\\#x", "#x", true},
    {"blanks at the end do not count", "a.c  ", "a.c", true},
    {"escaped ones do", "a\\ ", "a ", true},
    {"nor do carriage returns", "a.c\r", "a.c", true},
    {"a backslash at the end matches nothing", "a\\", "a\\", false},
    {"bytes that are not UTF-8", "\xff?", "\xff\xfe", true},
};

bool Matches(const char* text, std::string path)
{
    const bool isDirectory = path.ends_with('/');
    if (isDirectory)
        path.pop_back();
    const std::optional<IgnorePattern> pattern = IgnorePattern::Parse(text);
    return pattern && pattern->Matches(path, isDirectory);
}

} // namespace

TEST(IgnorePattern, Cases)
{
    for (const Case& c : kCases)
        EXPECT_EQ(Matches(c.pattern, c.path), c.matches) << c.why << ": " << c.pattern << " on " << c.path;
}

TEST(IgnorePattern, CommentsAndEmptyLinesAreNotPatterns)
{
    for (const char* line : {"", "# a", "   ", "\r"})
        EXPECT_FALSE(IgnorePattern::Parse(line)) << line;
}

TEST(IgnorePattern, KnowsWhetherItTakesSomethingBack)
{
    EXPECT_TRUE(IgnorePattern::Parse("!a")->IsNegative());
    EXPECT_TRUE(Matches("!a", "a"));
    EXPECT_FALSE(IgnorePattern::Parse("\\!a")->IsNegative());
    EXPECT_TRUE(Matches("\\!a", "!a"));
}

// A search that tried all ways of sharing the letters among the stars would not end.
TEST(IgnorePattern, ManyStarsEndInTime)
{
    std::string stars;
    std::string directories = "x/";
    for (int i = 0; i < 500; ++i) {
        stars += "*a";
        directories += "**/a*/";
    }
    std::string path;
    for (int i = 0; i < 2000; ++i)
        path += "a/";
    EXPECT_FALSE(Matches((stars + "b").c_str(), std::string(4000, 'a')));
    EXPECT_FALSE(Matches((directories + "b").c_str(), "x/" + path + "c"));
}

} // namespace symbols
