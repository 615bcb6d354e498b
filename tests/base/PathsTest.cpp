#include "base/Paths.h"

#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <unistd.h>

namespace base {
namespace {

namespace fs = std::filesystem;

// Changes the current directory and $PWD for the length of a test.
class Standing {
public:
    Standing(const std::string& directory, const std::string& named)
        : before(fs::current_path()), namedBefore(std::getenv("PWD") != nullptr ? std::getenv("PWD") : "")
    {
        fs::current_path(directory);
        ::setenv("PWD", named.c_str(), 1);
    }
    ~Standing()
    {
        fs::current_path(before);
        ::setenv("PWD", namedBefore.c_str(), 1);
    }

private:
    const fs::path before;
    const std::string namedBefore;
};

TEST(CurrentDirectory, KeepsTheUsersSymbolicLinks)
{
    const TempDirectory directory;
    fs::create_directory(directory / "real");
    fs::create_symlink("real", directory / "link");
    const struct {
        const char* why;
        std::string named, found;
    } cases[] = {
        {"through a link", directory / "link", directory / "link"},
        {"as it is", directory / "real", directory / "real"},
        {"another directory", directory.Path(), directory / "real"},
        {"gone", directory / "none", directory / "real"},
        {"not absolute", ".", directory / "real"},
        {"untidy", directory / "./link/", directory / "link"},
    };
    for (const auto& c : cases) {
        const Standing standing(directory / "real", c.named);
        EXPECT_EQ(CurrentDirectory(), c.found) << c.why;
    }
}

TEST(AbsolutePath, Cases)
{
    const struct {
        const char* why;
        const char* name;
        const char* path;
    } cases[] = {
        {"relative", "a.c", "/d/a.c"},
        {"below", "s/a.c", "/d/s/a.c"},
        {"absolute", "/e/a.c", "/e/a.c"},
        {"here", "./a.c", "/d/a.c"},
        {"here in between", "s/./a.c", "/d/s/a.c"},
        {"empty parts", "s//a.c", "/d/s/a.c"},
        {"at the root", "//a.c", "/a.c"},
        {"a name with dots", "..a/...", "/d/..a/..."},
        {"up, to what is not there", "../a.c", "/d/../a.c"},
        {"a backslash is no separator", "s\\a.c", "/d/s\\a.c"},
        {"bytes", "\xff\n\t", "/d/\xff\n\t"},
        {"nothing", "", "/d"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(AbsolutePath(c.name, "/d"), c.path) << c.why;
    EXPECT_EQ(AbsolutePath("a.c", ""), "/a.c") << "from the root";
    EXPECT_EQ(AbsolutePath("/", "/d"), "/") << "the root itself";
}

TEST(AbsolutePath, RemovesDotDotOnlyWhereThatNamesTheSameFile)
{
    const TempDirectory directory;
    directory.Write("a.c", "");
    directory.Write("other/a.c", "");
    directory.Write("other/below/b.c", "");
    fs::create_directory(directory / "plain");
    fs::create_symlink("other/below", directory / "link");
    EXPECT_EQ(AbsolutePath("plain/../a.c", directory.Path()), directory / "a.c");
    EXPECT_EQ(AbsolutePath("link/../a.c", directory.Path()), directory / "link/../a.c") << "which is other/a.c";
}

TEST(DirectoryOf, Cases)
{
    EXPECT_EQ(DirectoryOf("/a/b/tags"), "/a/b");
    EXPECT_EQ(DirectoryOf("/tags"), "");
}

TEST(Shown, EscapesLineBreaksAndControlCharacters)
{
    EXPECT_EQ(Shown("a b\\c"), "a b\\c");
    EXPECT_EQ(Shown("a\nb\tc"), "a\\nb\\tc");
    EXPECT_EQ(Shown("a\x1b[31m\x7f"), "a\\x1b[31m\\x7f");
    EXPECT_EQ(Shown("\xc3\xa9\xff"), "\xc3\xa9\xff");
    EXPECT_LE(Shown(std::string(100'000, 'x')).size(), 600u);
}

TEST(Shown, EscapesEightBitControlCharacters)
{
    const struct {
        const char* why;
        const char* text;
        const char* shown;
    } cases[] = {
        {"the first one, in UTF-8", "a\xc2\x80z", "a\\xc2\\x80z"},
        {"one that begins commands", "a\xc2\x9bz", "a\\xc2\\x9bz"},
        {"the last one", "a\xc2\x9fz", "a\\xc2\\x9fz"},
        {"the character behind them", "a\xc2\xa0z", "a\xc2\xa0z"},
        {"stray bytes", "a\x80\x9b\x9fz", "a\\x80\\x9b\\x9fz"},
        {"a byte behind them", "a\xa0z", "a\xa0z"},
        {"such bytes in characters", "\xc5\x9b \xe2\x82\xac \xf0\x9f\x98\x80",
         "\xc5\x9b \xe2\x82\xac \xf0\x9f\x98\x80"},
        {"a character without its end", "\xe2\x82", "\xe2\\x82"},
        {"with another's beginning in it", "\xe2\x82\xc2\x9b", "\xe2\\x82\\xc2\\x9b"},
        {"one that is written too long", "\xe0\x82\x9b \xf0\x80\x82\x9b \xc1\x9b",
         "\xe0\\x82\\x9b \xf0\\x80\\x82\\x9b \xc1\\x9b"},
        {"half a character of UTF-16", "\xed\xa0\x9b", "\xed\xa0\\x9b"},
        {"behind the last character", "\xf4\x90\x80\x9b \xf5\x80\x80\x9b", "\xf4\\x90\\x80\\x9b \xf5\\x80\\x80\\x9b"},
        {"the last characters", "\xf4\x8f\xbf\xbf \xef\xbf\xbd \xed\x9f\xbf",
         "\xf4\x8f\xbf\xbf \xef\xbf\xbd \xed\x9f\xbf"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Shown(c.text), c.shown) << c.why;
}

TEST(Shown, NeverCutsACharacterInTwo)
{
    for (size_t before = 0; before < 4; ++before) {
        std::string text(before, 'x');
        while (text.size() < 1000)
            text += "\xf0\x9f\x98\x80";
        const std::string shown = Shown(text);
        EXPECT_EQ(ShownLines(shown), shown) << before;
        EXPECT_LT(shown.size(), text.size()) << before;
    }
}

TEST(ShownLines, KeepsLineBreaks)
{
    EXPECT_EQ(ShownLines("one\x1b[2J\n\ttwo\xc2\x9b\n"), "one\\x1b[2J\n\\ttwo\\xc2\\x9b\n");
    EXPECT_EQ(ShownLines(""), "");
    EXPECT_EQ(ShownLines("\n\nx"), "\n\nx");
}

} // namespace
} // namespace base
