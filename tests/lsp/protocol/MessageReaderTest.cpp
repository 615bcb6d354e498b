#include "wren/lsp/protocol/MessageReader.h"

#include "base/Descriptor.h"
#include "wren/lsp/protocol/Json.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using wren::lsp::MessageReader;

struct Pipe {
    Pipe()
    {
        int ends[2];
        EXPECT_EQ(::pipe(ends), 0);
        out = base::Descriptor(ends[0]);
        in = base::Descriptor(ends[1]);
    }
    void Write(const std::string& text) const
    {
        EXPECT_EQ(::write(in.Number(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    base::Descriptor out;
    base::Descriptor in;
};

// The bodies of all messages; "BROKEN" at the end when the input cannot be read on.
std::vector<std::string> Bodies(const std::string& input)
{
    Pipe pipe;
    pipe.Write(input);
    pipe.in.Close();
    MessageReader reader(pipe.out.Number());
    std::vector<std::string> bodies;
    std::string body;
    for (;;) {
        const MessageReader::Outcome outcome = reader.Read(body);
        if (outcome == MessageReader::Outcome::Broken)
            bodies.push_back("BROKEN");
        if (outcome != MessageReader::Outcome::Message)
            return bodies;
        bodies.push_back(body);
    }
}

const struct {
    const char* why;
    const char* input;
    std::vector<std::string> bodies;
} kInputs[] = {
    {"nothing", "", {}},
    {"two messages", "Content-Length: 2\r\n\r\n{}Content-Length: 1\r\n\r\n5", {"{}", "5"}},
    {"an empty message", "Content-Length: 0\r\n\r\n", {""}},
    {"bare line feeds", "Content-Length: 2\n\n{}", {"{}"}},
    {"any case, and other headers", "X: y\r\ncONTENT-lENGTH : 2 \r\nContent-Type: x; charset=utf-8\r\n\r\n{}", {"{}"}},
    {"the last length counts", "Content-Length: 9\r\nContent-Length: 2\r\n\r\n{}", {"{}"}},
    {"no length", "Content-Type: x\r\n\r\n{}", {"BROKEN"}},
    {"a blank line first", "\r\nContent-Length: 2\r\n\r\n{}", {"BROKEN"}},
    {"not a header", "Content-Length: 2\r\n\r\n{}{}\r\n\r\n", {"{}", "BROKEN"}},
    {"not a number", "Content-Length: two\r\n\r\n{}", {"BROKEN"}},
    {"a number with a tail", "Content-Length: 2x\r\n\r\n{}", {"BROKEN"}},
    {"below nothing", "Content-Length: -2\r\n\r\n{}", {"BROKEN"}},
    {"beyond all numbers", "Content-Length: 99999999999999999999\r\n\r\n{}", {"BROKEN"}},
    {"too large", "Content-Length: 67108865\r\n\r\n{}", {"BROKEN"}},
    {"an end within the header", "Content-Len", {"BROKEN"}},
    {"an end within the body", "Content-Length: 3\r\n\r\n{}", {"BROKEN"}},
};

TEST(MessageReader, TakesMessagesAndStopsWhereTheNextOneIsLost)
{
    for (const auto& each : kInputs)
        EXPECT_EQ(Bodies(each.input), each.bodies) << each.why;
}

TEST(MessageReader, RefusesAHeaderWithoutEnd)
{
    EXPECT_EQ(Bodies(std::string(20000, 'x')), std::vector<std::string>{"BROKEN"});
    std::string lines;
    for (int line = 0; line < 2000; ++line)
        lines += "A: b\r\n";
    EXPECT_EQ(Bodies(lines), std::vector<std::string>{"BROKEN"});
}

TEST(MessageReader, EndsItsWaitingWhenItHasToStop)
{
    const Pipe pipe;
    base::CancelToken stop;
    MessageReader reader(pipe.out.Number(), &stop);
    pipe.Write("Content-Length: 5\r\n\r\n{"); // the rest never comes
    std::thread other([&] { stop.Cancel(); });
    std::string body;
    EXPECT_EQ(reader.Read(body), MessageReader::Outcome::End);
    other.join();
}

TEST(ParsedMessage, RefusesWhatIsNestedTooDeeply)
{
    EXPECT_TRUE(wren::lsp::ParsedMessage(std::string(1000000, '[') + std::string(1000000, ']')).is_discarded());
    EXPECT_TRUE(wren::lsp::ParsedMessage(R"({"a": "[[[[\"[[[", "b": [[[]]]})").is_object());
    const std::string brackets(1000, '[');
    EXPECT_TRUE(wren::lsp::ParsedMessage("\"" + brackets + "\"").is_string());
}

TEST(ParsedMessage, ReadsHalfAPairOfSurrogates)
{
    const struct {
        const char* why;
        const char* text;
        const char* read; // "" for what is not JSON
    } kCases[] = {
        {"a whole pair", R"("\ud83d\ude00")", "\U0001F600"},
        {"the first half", R"("a\ud83db")", "a\uFFFDb"},
        {"the first half at the end", R"("\uD83D")", "\uFFFD"},
        {"the second half", R"("\ude00b")", "\uFFFDb"},
        {"two first halves and a second one", R"("\ud83d\ud83d\ude00")", "\uFFFD\U0001F600"},
        {"the halves in the wrong order", R"("\ude00\ud83d")", "\uFFFD\uFFFD"},
        {"a half before another escape", R"("\ud83d\n\u0041")", "\uFFFD\nA"},
        {"an escaped backslash before a half", R"("\\ud83d\ud83d")", "\\ud83d\uFFFD"},
        {"an escape that is cut", R"("\ud83d\ud8")", ""},
        {"digits that are none", R"("\ud83d\udxyz")", ""},
    };
    for (const auto& each : kCases) {
        const wren::lsp::Json read = wren::lsp::ParsedMessage(each.text);
        EXPECT_EQ(read.is_string() ? read.get<std::string>() : "", each.read) << each.why;
    }
}

} // namespace
