#include "settings/DirectoriesText.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    const char* why;
    std::string written;
    std::string stored;
    std::string shown;
};
const Case kCases[] = {
    {"nothing", "", "", ""},
    {"one directory", "/usr/include", "/usr/include", "/usr/include"},
    {"two on two lines", "/a\n/b", "/a /b", "/a\n/b"},
    {"two with a blank", "/a /b", "/a /b", "/a\n/b"},
    {"two with a colon", "/a:/b", "/a /b", "/a\n/b"},
    {"two with a comma", "/a,/b", "/a /b", "/a\n/b"},
    {"two with a tab", "/a\t/b", "/a /b", "/a\n/b"},
    {"each separator is one", "/a, /b\n", "/a  /b ", "/a\n\n/b\n"},
    {"a blank in a name", "/My\\ Headers /b", "/My\\ Headers /b", "/My\\ Headers\n/b"},
    {"a colon in a name", "/a\\:b", "/a\\:b", "/a\\:b"},
    {"a line break in a name", "/a\\\nb", "/a\\\nb", "/a\\\nb"},
    {"a backslash in a name protects nothing more", "/a\\\\ /b", "/a\\\\ /b", "/a\\\\\n/b"},
    {"a backslash at the end", "/a\\", "/a\\", "/a\\"},
    {"letters beyond ASCII separate", "/\xC3\xBC/x", "/  /x", "/\n\n/x"},
    {"unless every byte is protected", "/\\\xC3\\\xBC/x", "/\\\xC3\\\xBC/x", "/\\\xC3\\\xBC/x"},
    {"the last control character", "/a\x1F/b", "/a /b", "/a\n/b"},
    {"the character behind the blank", "/a!b", "/a!b", "/a!b"},
    {"the last of ASCII",
     "/a\x7F"
     "b",
     "/a\x7F"
     "b",
     "/a\x7F"
     "b"},
    {"the first beyond",
     "/a\x80"
     "b",
     "/a b", "/a\nb"},
    {"the last byte",
     "/a\xFF"
     "b",
     "/a b", "/a\nb"},
    {"a byte that is 0", std::string("/a\0b", 4), "/a b", "/a\nb"},
};

TEST(Directories, AreStoredWithBlanksAndShownOnePerLine)
{
    for (const Case& c : kCases) {
        EXPECT_EQ(SystemDirectoriesStringForStore(c.written), c.stored) << c.why;
        EXPECT_EQ(SystemDirectoriesStringForControl(c.stored), c.shown) << c.why;
        EXPECT_EQ(SystemDirectoriesStringForStore(c.shown), c.stored) << c.why << ", once more";
    }
}

TEST(Directories, UnescapedSeparatorsSplitThemWhenShown)
{
    EXPECT_EQ(SystemDirectoriesStringForControl("/a:/b,/c"), "/a:/b,/c") << "only the user's separators are replaced";
    EXPECT_EQ(SystemDirectoriesStringForControl("/\xC3\xBC/x"), "/\n\n/x");
}

} // namespace
