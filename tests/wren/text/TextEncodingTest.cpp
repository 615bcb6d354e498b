#include "wren/text/TextEncoding.h"

#include <gtest/gtest.h>

namespace wren {

namespace {

using namespace std::string_literals;

std::string Utf16(const std::string& ascii, bool isLittle)
{
    std::string bytes;
    for (const char c : ascii)
        bytes += isLittle ? std::string{c, '\0'} : std::string{'\0', c};
    return bytes;
}

struct FileCase {
    const char* why;
    std::string bytes;
    const char* label;
    std::string text;
};

const std::string kSentence = "int main(void)\n";

const FileCase kFileCases[] = {
    {"nothing", "", "UTF-8", ""},
    {"ASCII", kSentence, "UTF-8", kSentence},
    {"UTF-8", "// \xc3\xa9\n", "UTF-8", "// \xc3\xa9\n"},
    {"UTF-8 behind a mark", "\xef\xbb\xbfint a;", "UTF-8 with BOM", "int a;"},
    {"a mark alone", "\xef\xbb\xbf", "UTF-8 with BOM", ""},
    {"bytes behind a mark", "\xef\xbb\xbf\xff", "UTF-8 with BOM", "\xff"},
    {"UTF-16", "\xff\xfe" + Utf16("a\n", true), "UTF-16 LE with BOM", "a\n"},
    {"UTF-16 with the high byte first", "\xfe\xff" + Utf16("a\n", false), "UTF-16 BE with BOM", "a\n"},
    {"a letter of two units", "\xff\xfe\x3d\xd8\x00\xde"s, "UTF-16 LE with BOM", "\xf0\x9f\x98\x80"},
    {"UTF-16 without a mark", Utf16(kSentence, true), "UTF-16 LE", kSentence},
    {"the same with the high byte first", Utf16(kSentence, false), "UTF-16 BE", kSentence},
    {"UTF-32", "\xff\xfe\0\0a\0\0\0"s, "UTF-32 LE with BOM", "a"},
    {"UTF-32 with the high byte first", "\0\0\xfe\xff\0\0\0a"s, "UTF-32 BE with BOM", "a"},
    {"Latin letters in one byte", "caf\xe9\n", "not UTF-8", "caf\xe9\n"},
    {"half of a letter of two units", "\xff\xfe\x3d\xd8"s, "not UTF-8", "\xff\xfe\x3d\xd8"s},
    {"half a unit", "\xff\xfe"s + "a\0b"s, "not UTF-8", "\xff\xfe"s + "a\0b"s},
    {"NUL bytes of data", "ab\0\0\1\0\0\0\0\0\0\0\0\0\0\0\n\0"s, "UTF-8", "ab\0\0\1\0\0\0\0\0\0\0\0\0\0\0\n\0"s},
    {"NUL bytes without a line end", Utf16("abcdefghijkl", true), "UTF-8", Utf16("abcdefghijkl", true)},
};

struct ExpectedCase {
    const char* why;
    std::string bytes;
    const char* expected;
    const char* label;
    std::string text;
};

const ExpectedCase kExpectedCases[] = {
    {"what is not UTF-8", "caf\xe9", "ISO 8859-1", "ISO 8859-1", "caf\xc3\xa9"},
    {"another one", "\xf0\xd2\xc9", "KOI8-R", "KOI8-R", "\xd0\x9f\xd1\x80\xd0\xb8"},
    {"what would be the same in both", "cafe", "ISO 8859-1", "ISO 8859-1", "cafe"},
    {"UTF-8 after all", "caf\xc3\xa9", "ISO 8859-1", "UTF-8", "caf\xc3\xa9"},
    {"a mark after all", "\xff\xfe\xe9\0"s, "ISO 8859-1", "UTF-16 LE with BOM", "\xc3\xa9"},
    {"the mark has gone", Utf16(kSentence, true), "UTF-16 LE with BOM", "UTF-16 LE", kSentence},
    {"bytes that it has not", "\x81\xff", "EUC-JP", "not UTF-8", "\x81\xff"},
    {"bytes, as before", "cafe", "not UTF-8", "UTF-8", "cafe"},
};

struct RefusedCase {
    const char* why;
    const char* label;
    std::string text;
    const char* message;
};

const RefusedCase kRefusedTexts[] = {
    {"a letter that it has not", "ISO 8859-1", "a\n\xd0\x9f", "line 2: \"\xd0\x9f\" is not in ISO 8859-1"},
    {"behind old line ends", "ISO 8859-1", "a\r\rb\r\n\xe2\x82\xac", "line 4: \"\xe2\x82\xac\" is not in ISO 8859-1"},
    {"a byte that is no letter", "UTF-16 LE with BOM", "a\xff",
     "line 1: a byte that is no character is not in UTF-16 LE with BOM"},
};

} // namespace

TEST(TextEncoding, OfFiles)
{
    for (const FileCase& test : kFileCases) {
        const DecodedText decoded = DecodeAs(test.bytes, {});
        EXPECT_EQ(LabelOf(decoded.encoding), test.label) << test.why;
        EXPECT_EQ(decoded.text, test.text) << test.why;
        const base::Result<std::string> again = Encode(decoded.text, decoded.encoding);
        EXPECT_TRUE(again && *again == test.bytes) << test.why;
    }
}

TEST(TextEncoding, IsTheExpectedOneUnlessTheFileSaysMore)
{
    for (const ExpectedCase& test : kExpectedCases) {
        const DecodedText decoded = DecodeAs(test.bytes, EncodingLabelled(test.expected));
        EXPECT_EQ(LabelOf(decoded.encoding), test.label) << test.why;
        EXPECT_EQ(decoded.text, test.text) << test.why;
    }
}

TEST(TextEncoding, AllCanBeReadAndWritten)
{
    for (const TextEncoding& encoding : Encodings()) {
        EXPECT_EQ(EncodingLabelled(LabelOf(encoding)), encoding);
        const base::Result<std::string> bytes = Encode(kSentence, encoding);
        ASSERT_TRUE(bytes) << bytes.Failure().Message();
        const base::Result<DecodedText> decoded = Decode(*bytes, encoding);
        ASSERT_TRUE(decoded) << LabelOf(encoding);
        EXPECT_EQ(decoded->text, kSentence) << LabelOf(encoding);
        EXPECT_EQ(decoded->encoding, encoding);
    }
    EXPECT_EQ(EncodingLabelled("EBCDIC"), TextEncoding());
    EXPECT_EQ(EncodingLabelled("ISO 8859-1 with BOM"), TextEncoding());
}

TEST(TextEncoding, RefusesWhatItHasNot)
{
    for (const RefusedCase& test : kRefusedTexts) {
        const base::Result<std::string> bytes = Encode(test.text, EncodingLabelled(test.label));
        ASSERT_FALSE(bytes) << test.why;
        EXPECT_EQ(bytes.Failure().Message(), test.message) << test.why;
    }
}

TEST(TextEncoding, SaysWhichByteItCannotRead)
{
    const base::Result<DecodedText> decoded = Decode("ab\xff\x81", EncodingLabelled("EUC-JP"));
    ASSERT_FALSE(decoded);
    EXPECT_EQ(decoded.Failure().Message(), "its byte 3 is not EUC-JP");
}

// Big5 has this letter twice.
TEST(TextEncoding, RefusesBytesThatWouldChangeWhenSaved)
{
    const base::Result<DecodedText> decoded = Decode("\xa2\xcc", EncodingLabelled("Big5"));
    ASSERT_FALSE(decoded);
    EXPECT_EQ(decoded.Failure().Message(), "as Big5 it could not be saved without a change");
    EXPECT_TRUE(Decode("\xa4\x51", EncodingLabelled("Big5")));
}

TEST(TextEncoding, ReadsMoreThanFitsIntoOneBuffer)
{
    std::string text;
    for (int line = 0; line < 30'000; ++line)
        text += "caf\xc3\xa9 " + std::to_string(line) + "\n";
    for (const char* label : {"ISO 8859-1", "UTF-16 BE with BOM", "GB 18030"}) {
        const base::Result<std::string> bytes = Encode(text, EncodingLabelled(label));
        ASSERT_TRUE(bytes) << label;
        const base::Result<DecodedText> decoded = Decode(*bytes, EncodingLabelled(label));
        ASSERT_TRUE(decoded) << label;
        EXPECT_EQ(decoded->text, text) << label;
    }
}

} // namespace wren
