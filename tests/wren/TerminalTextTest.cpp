#include "wren/core/TerminalText.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

struct ShownCase {
    const char* why;
    std::string text;
    std::string shown;
};

} // namespace

TEST(TerminalText, ShowsEachControlCharacterAsAQuestionMark)
{
    using namespace std::string_literals;
    const ShownCase kCases[] = {
        {"plain text", "Area - shape.cpp", "Area - shape.cpp"},
        {"tabs and line breaks are layout", "a\tb\nc\n", "a\tb\nc\n"},
        {"a carriage return writes over the line", "good\revil", "good?evil"},
        {"escape sequences", "\x1b]0;owned\x07\x1b[2J", "?]0;owned??[2J"},
        {"NUL and DEL", "a\0b\x7f"s, "a?b?"},
        {"letters beyond ASCII", "caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x98\x80",
         "caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x98\x80"},
        {"the second half of the control characters, in UTF-8",
         "\xc2\x80\xc2\x9b"
         "1m\xc2\x9f",
         "??1m?"},
        {"what comes right behind them", "\xc2\xa0\xc2\xa9", "\xc2\xa0\xc2\xa9"},
        {"the same as bytes",
         "\x80\x9b"
         "1m\x9f",
         "??1m?"},
        {"other bytes are neither characters nor commands", "\xa0\xff\xc3", "\xa0\xff\xc3"},
        {"a byte behind a whole character", "\xc3\xa9\x9b", "\xc3\xa9?"},
        {"a character that is cut off", "\xe2\x82", "\xe2?"},
        {"a control character in a longer form than it has", "\xc0\x9b \xe0\x80\x9b \xe0\x82\x9b",
         "\xc0? \xe0?? \xe0??"},
    };
    for (const ShownCase& c : kCases)
        EXPECT_EQ(wren::ForTerminal(c.text), c.shown) << c.why;
}

TEST(TerminalText, ChangesTextsForTerminalsOnly)
{
    const std::string text = "\x1b[2J \xc2\x9b"
                             "1m";
    int pipes[2];
    ASSERT_EQ(::pipe(pipes), 0);
    EXPECT_EQ(wren::ShownOn(pipes[1], text), text) << "programs get the bytes as they are";
    ::close(pipes[0]);
    ::close(pipes[1]);
    const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    EXPECT_EQ(wren::ShownOn(terminal, text), "?[2J ?1m");
    ::close(terminal);
}
