#include "tagsfile/NameOrder.h"

#include "tagsfile/FirstStop.h"
#include "tests/tagsfile/Sequence.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using namespace std::string_literals;

namespace tagsfile {

namespace {

using FileOrderSeen = std::pair<bool, off_t>;

FileOrderSeen Seen(const NameOrder& order)
{
    return {order.InOrder(), order.HeadSize()};
}

NameOrder OrderIn(const std::vector<std::string>& pieces)
{
    NameOrder order;
    std::string previous;
    for (const std::string& piece : pieces) {
        const bool goesWithoutSaying =
            previous.ends_with('\n') && piece.ends_with('\n') && order.GoesWithoutSaying(previous, piece);
        const FileOrderSeen before = Seen(order);
        order.Add(previous, piece);
        EXPECT_TRUE(!goesWithoutSaying || Seen(order) == before);
        previous = piece;
    }
    return order;
}

// The same, one byte at a time.
bool AreInOrder(const std::vector<std::string>& pieces)
{
    size_t first = 0;
    while (first < pieces.size() && pieces[first][0] == '!')
        ++first;
    for (size_t i = 0; i < pieces.size(); ++i)
        if ((i + 1 < pieces.size() && pieces[i].back() != '\n') || pieces[i][0] == '\t')
            return false;
    for (size_t i = first + 1; i < pieces.size(); ++i)
        if (pieces[i - 1].substr(0, pieces[i - 1].find_first_of("\t\n")) >
            pieces[i].substr(0, pieces[i].find_first_of("\t\n")))
            return false;
    return true;
}

} // namespace

TEST(NameOrder, TellsSortedFilesFromUnsortedOnes)
{
    const struct {
        const char* why;
        std::vector<std::string> pieces;
        bool inOrder;
    } kCases[] = {
        {"nothing", {}, true},
        {"names in order", {"a\tx\n", "b\tx\n"}, true},
        {"names out of order", {"b\tx\n", "a\tx\n"}, false},
        {"out of order in the ninth byte", {"aaaaaaaab\tx\n", "aaaaaaaaa\tx\n"}, false},
        {"equal names with files out of order: only names count", {"name\tb.h\n", "name\ta.h\n"}, true},
        {"the same line twice", {"a\tx\n", "a\tx\n"}, true},
        {"a name that goes on is behind the one that ends", {"ab\tx\n", "a\tx\n"}, false},
        {"with a control character too, which sorts in front of a tab", {"a\x01\tx\n", "a\tx\n"}, false},
        {"so lines in the order of their bytes need not have names in order", {"a\x01z\tx\n", "a\tx\n"}, false},
        {"and names in order may have lines that are not", {"a\tx\n", "a\x01\tx\n"}, true},
        {"a blank in a name sorts behind a tab", {"operator\tx\n", "operator <\tx\n"}, true},
        {"bytes from 0x80 up are behind all others", {"z\tx\n", "\xc3\xa4\tx\n"}, true},
        {"and not in front, as signed characters would be", {"\xc3\xa4\tx\n", "z\tx\n"}, false},
        {"capitals first", {"a\tx\n", "B\tx\n"}, false},
        {"no tab: the whole line is the name", {"a\n", "ab\n", "b\tx\n"}, true},
        {"no tab, out of order", {"ab\n", "a\n"}, false},
        {"an empty line at the front", {"\n", "a\tx\n"}, true},
        {"an empty line further down", {"a\tx\n", "\n"}, false},
        {"a line that begins with a tab, whose name is behind it", {"\tz\tx\n", "a\tx\n"}, false},
        {"a line that begins with a tab behind an empty one", {"\n", "\ta\tx\n"}, false},
        {"no newline at the end", {"a\tx\n", "b\tx"}, true},
        {"a line in two pieces", {"a\tx", "b\tx\n"}, false},
        {"a line of pseudo-tags in two pieces", {"!a\tx", "!b\tx\n"}, false},
        {"pseudo-tags out of order at the head", {"!b\tx\n", "!a\tx\n", "a\tx\n"}, true},
        {"a name in front of pseudo-tags", {"!a\tx\n", " x\tx\n", "a\tx\n"}, true},
        {"pseudo-tags further down, in their place", {" x\tx\n", "!a\tx\n", "a\tx\n"}, true},
        {"pseudo-tags further down, out of order", {"a\tx\n", "!a\tx\n"}, false},
        {"NUL bytes are bytes", {"a\0a\tx\n"s, "a\0b\tx\n"s, "aa\tx\n"}, true},
        {"NUL bytes out of order", {"a\0b\tx\n"s, "a\0a\tx\n"s}, false},
        {"a carriage return is a byte", {"a\r\n", "a!\r\n"}, true},
        {"a long line with a long name", {std::string(40, 'a') + "b\tx\n", std::string(40, 'a') + "c\tx\n"}, true},
        {"out of order behind many bytes", {std::string(40, 'a') + "c\tx\n", std::string(40, 'a') + "b\tx\n"}, false},
        {"long lines with one name", {"a\t" + std::string(40, 'b') + "\n", "a\t" + std::string(40, 'a') + "\n"}, true},
        {"a long line that begins with a tab",
         {std::string(40, '\1') + "\n", "\t" + std::string(40, 'a') + "\n"},
         false},
        {"once out of order, always", {"b\tx\n", "a\tx\n", "c\tx\n"}, false},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(OrderIn(c.pieces).InOrder(), c.inOrder) << c.why;
        EXPECT_EQ(AreInOrder(c.pieces), c.inOrder) << c.why;
    }
}

TEST(NameOrder, FindsTheEndOfTheHead)
{
    EXPECT_EQ(OrderIn({"!b\tx\n", "!a\n", "a\tx\n", "!c\n"}).HeadSize(), 8);
    EXPECT_EQ(OrderIn({"!a\n", "!b"}).HeadSize(), 5);
    EXPECT_EQ(OrderIn({"a\tx\n"}).HeadSize(), 0);
}

TEST(NameOrder, FindsTheSameAsAByteByByteComparison)
{
    const std::string kBytes[] = {"a", "b", "\t", "\n", "\x01", "\v", " ", "!", "\xff", "\0"s, "aaaaaaaa", "aaaaaaaab"};
    Sequence sequence;
    size_t inOrder = 0;
    constexpr int kRounds = 100'000;
    for (int round = 0; round < kRounds; ++round) {
        std::vector<std::string> pieces(1 + sequence.Below(3));
        for (std::string& piece : pieces) {
            for (size_t length = sequence.Below(5); length > 0 && !piece.ends_with('\n'); --length)
                piece += sequence.One(kBytes);
            if (!piece.ends_with('\n') && (piece.empty() || sequence.Below(20) > 0))
                piece += '\n';
        }
        ASSERT_EQ(OrderIn(pieces).InOrder(), AreInOrder(pieces)) << testing::PrintToString(pieces);
        inOrder += AreInOrder(pieces);
    }
    EXPECT_GT(inOrder, kRounds / 10u);
    EXPECT_LT(inOrder, kRounds * 9u / 10);
}

TEST(FirstStop, IsTheSameInParallelAsByteByByte)
{
    Sequence sequence;
    size_t stops[kGlance + 1] = {};
    for (int round = 0; round < 200'000; ++round) {
        char previous[kGlance];
        for (char& byte : previous)
            byte = sequence.Below(60) == 0   ? '\t'
                   : sequence.Below(60) == 0 ? '\n'
                                             : static_cast<char>(sequence.Below(256));
        char line[kGlance];
        for (size_t i = 0; i < kGlance; ++i)
            line[i] = sequence.Below(40) == 0 ? static_cast<char>(sequence.Below(256)) : previous[i];
        const size_t stop = FirstStop(previous, line);
        ASSERT_EQ(stop, FirstStopByBytes(previous, line));
        ++stops[stop];
    }
    for (const size_t count : stops)
        EXPECT_GT(count, 100u) << "each place came up";
}

} // namespace tagsfile
