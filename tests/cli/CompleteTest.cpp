#include "wren/cli/Complete.h"

#include <gtest/gtest.h>

namespace wren {

namespace {

struct Case {
    const char* why;
    const char* text; // "[" and "]" mark the inserted text
    const char* word;
};

const Case kCases[] = {
    {"the whole text", "al[one]", "alone"},
    {"blanks around it", "int al[one] = 1;", "alone"},
    {"nothing before it", "([alone])", "alone"},
    {"the rest of the word", "al[on]e1 x", "alone1"},
    {"scopes", "x = lib::Outer::a[rm]", "lib::Outer::arm"},
    {"scopes at the beginning", "a::b::c[d]", "a::b::cd"},
    {"the global scope is no name", "x = ::a[rm]", "arm"},
    {"template arguments are no name", "vector<int>::si[ze]", "size"},
    {"one colon is no scope", "a ? b:c[d]", "cd"},
    {"a selector ends at its colon", "[x take[Book:]more", "takeBook:"},
    {"blanks for arguments that come later", "put[Book: onLevel:]", "putBook: onLevel:"},
    {"bytes from 0x80 up are no name", "\xc3\xa4n[ame]\xc3\xa4", "name"},
};

} // namespace

TEST(WordAround, Cases)
{
    for (const Case& c : kCases) {
        std::string text = c.text;
        // The start mark is the last bracket before the end mark: messages contain brackets too.
        const size_t end = text.rfind(']');
        text.erase(end, 1);
        const size_t start = text.rfind('[', end - 1);
        text.erase(start, 1);
        EXPECT_EQ(WordAround(text, start, end - 1), c.word) << c.why;
    }
}

} // namespace wren
