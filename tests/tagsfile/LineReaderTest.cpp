#include "tagsfile/LineReader.h"

#include "tests/support/HeldFile.h"
#include "tests/support/TempDirectory.h"
#include "tests/tagsfile/Sequence.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace tagsfile {

namespace {

using Pieces = std::vector<std::string>;

// The C library's view of a file, including NUL bytes: the last one in the buffer is its own terminator.
Pieces PiecesOfLibrary(const std::string& path)
{
    FILE* file = std::fopen(path.c_str(), "r");
    Pieces pieces;
    std::string text(LineReader::kPieceSize + 1, 'x');
    while (std::fgets(text.data(), static_cast<int>(text.length()), file) != nullptr) {
        pieces.push_back(text.substr(0, text.rfind('\0')));
        text.assign(text.length(), 'x');
    }
    std::fclose(file);
    return pieces;
}

Pieces PiecesOf(LineReader& reader)
{
    Pieces pieces;
    std::string previous;
    off_t offset = reader.Offset();
    for (std::string_view piece; reader.Next(piece);) {
        EXPECT_EQ(reader.Previous(), previous);
        previous = piece;
        offset += static_cast<off_t>(piece.length());
        EXPECT_EQ(reader.Offset(), offset);
        pieces.emplace_back(piece);
    }
    std::string_view none;
    EXPECT_FALSE(reader.Next(none)) << "the end stays the end";
    return pieces;
}

Pieces PiecesOf(const std::string& path)
{
    LineReader reader;
    EXPECT_TRUE(reader.Open(path.c_str()));
    Pieces pieces = PiecesOf(reader);
    reader.Close();
    return pieces;
}

// Lines of all lengths, most of them about 'usual' bytes long.
std::string RandomText(Sequence& sequence, size_t size, size_t usual)
{
    std::string text;
    while (text.length() < size) {
        const size_t longest = sequence.Below(10) == 0 ? 4 * LineReader::kPieceSize : 2 * usual + 1;
        for (size_t length = sequence.Below(longest); length > 0; --length)
            text += static_cast<char>(sequence.Below(256));
        text.append(sequence.Below(3), '\n');
    }
    return text;
}

} // namespace

TEST(LineReader, GivesTheSamePiecesAsTheCLibrary)
{
    const TempDirectory directory;
    Sequence sequence;
    size_t longPieces = 0;
    for (int round = 0; round < 3000; ++round) {
        const std::string text = RandomText(sequence, sequence.Below(round % 10 == 0 ? 100'000 : 5000), round % 300);
        std::filesystem::remove(directory / "text"); // some systems write a replaced file to the disk at once
        const std::string path = directory.Write("text", text);
        const Pieces expected = PiecesOfLibrary(path);
        ASSERT_EQ(PiecesOf(path), expected) << "round " << round;
        for (const std::string& piece : expected)
            longPieces += piece.length() == LineReader::kPieceSize;
    }
    EXPECT_GT(longPieces, 500u);
}

TEST(LineReader, CutsLongLinesAtAnyBlockBoundary)
{
    const TempDirectory directory;
    for (const size_t place : {1022, 1023, 1024, 2046, 2047, 8191, 8192, 8193, 24576, 57344, 122880}) {
        for (const size_t extra : {0, 1, 1021, 1022, 1023, 1024, 2046}) {
            const std::string path =
                directory.Write("text", std::string(place, 'a') + "\n" + std::string(extra, 'b') + "\nlast");
            ASSERT_EQ(PiecesOf(path), PiecesOfLibrary(path)) << place << " " << extra;
        }
    }
}

TEST(LineReader, SkipsWholeLines)
{
    const TempDirectory directory;
    Sequence sequence;
    size_t passed = 0;
    for (int round = 0; round < 100; ++round) {
        const std::string path = directory.Write("text", RandomText(sequence, 100'000, static_cast<size_t>(round)));
        const Pieces pieces = PiecesOf(path);
        LineReader reader;
        ASSERT_TRUE(reader.Open(path.c_str()));
        size_t number = 0;
        off_t offset = 0;
        for (std::string_view piece; reader.Next(piece); ++number) {
            ASSERT_EQ(piece, pieces[number]);
            ASSERT_EQ(reader.Previous(), number == 0 ? "" : pieces[number - 1]);
            offset += static_cast<off_t>(piece.length());
            reader.PassOver([&](std::string_view previous, std::string_view line) {
                EXPECT_EQ(previous, pieces[number]);
                EXPECT_EQ(line, pieces[number + 1]);
                EXPECT_TRUE(previous.ends_with('\n') && line.ends_with('\n'));
                if (sequence.Below(10) == 0)
                    return false;
                ++number;
                ++passed;
                offset += static_cast<off_t>(line.length());
                return true;
            });
            ASSERT_EQ(reader.Offset(), offset);
        }
        ASSERT_EQ(number, pieces.size());
        reader.PassOver([](std::string_view, std::string_view) { return true; });
        reader.Close();
    }
    EXPECT_GT(passed, 10'000u);
}

TEST(LineReader, GoesToAnyLine)
{
    const TempDirectory directory;
    Sequence sequence;
    const std::string path = directory.Write("text", RandomText(sequence, 200'000, 40));
    const Pieces pieces = PiecesOf(path);
    LineReader reader;
    ASSERT_TRUE(reader.Open(path.c_str()));
    std::vector<off_t> offsets = {0};
    for (const std::string& piece : pieces)
        offsets.push_back(offsets.back() + static_cast<off_t>(piece.length()));
    for (int round = 0; round < 3000; ++round) {
        const size_t number = sequence.Below(pieces.size());
        reader.GoTo(offsets[number]);
        for (size_t next = number; next < pieces.size() && next < number + sequence.Below(300); ++next) {
            std::string_view piece;
            ASSERT_TRUE(reader.Next(piece));
            ASSERT_EQ(piece, pieces[next]);
            ASSERT_EQ(reader.Previous(), next == number ? "" : pieces[next - 1]) << "none in front of the first";
        }
    }
    reader.GoTo(offsets.back());
    std::string_view none;
    EXPECT_FALSE(reader.Next(none));
    reader.GoTo(0);
    reader.GoToEnd();
    EXPECT_FALSE(reader.Next(none));
    reader.Close();
}

TEST(LineReader, AnUnreadableFileHasNoLines)
{
    const TempDirectory directory;
    LineReader reader;
    std::string_view none;
    EXPECT_FALSE(reader.Next(none)) << "never opened";
    EXPECT_FALSE(reader.Open((directory / "absent").c_str()));
    EXPECT_FALSE(reader.Next(none));
    EXPECT_EQ(PiecesOf(directory.Path()), Pieces{}) << "a directory";
    ASSERT_TRUE(reader.Open(directory.Write("text", "a\nb\n").c_str()));
    EXPECT_TRUE(reader.Next(none));
    reader.Close();
    EXPECT_FALSE(reader.Next(none)) << "closed";
}

TEST(LineReader, TheEndStaysWhenTheFileGrows)
{
    const TempDirectory directory;
    const std::string path = directory.Write("text", "a\n");
    LineReader reader;
    ASSERT_TRUE(reader.Open(path.c_str()));
    EXPECT_EQ(PiecesOf(reader), Pieces{"a\n"});
    std::ofstream(path, std::ios::app) << "b\n";
    std::string_view none;
    EXPECT_FALSE(reader.Next(none));
    reader.Close();
}

TEST(LineReader, GivesLinesOfASlowFileAsTheyCome)
{
    const TempDirectory directory;
    const std::string path = directory / "slow";
    ASSERT_TRUE(MakeHeldFile(path));
    LineReader reader;
    std::thread opener([&] { EXPECT_TRUE(reader.Open(path.c_str())); });
    std::ofstream pipe(path);
    opener.join();
    std::string_view line;
    pipe << "first\nhal" << std::flush;
    ASSERT_TRUE(reader.Next(line));
    EXPECT_EQ(line, "first\n") << "and nobody waits for the rest of the second";
    pipe << "f of it\nlast" << std::flush;
    ASSERT_TRUE(reader.Next(line));
    EXPECT_EQ(line, "half of it\n");
    pipe.close();
    ASSERT_TRUE(reader.Next(line));
    EXPECT_EQ(line, "last");
    EXPECT_FALSE(reader.Next(line));
    reader.Close();
}

} // namespace tagsfile
