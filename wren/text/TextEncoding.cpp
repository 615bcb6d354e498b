#include "wren/text/TextEncoding.h"

#include "base/Utf8.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iconv.h>
#include <optional>
#include <utility>

namespace wren {

namespace {

constexpr std::string_view kMark = "\xef\xbb\xbf"; // U+FEFF in UTF-8
constexpr const char* kWithMark = " with BOM";
constexpr const char* kNotUtf8 = "not UTF-8";

struct Family {
    const char* name;
    const char* label;
    std::string_view mark; // "" when a mark has no sense in it
};

using namespace std::string_view_literals;

constexpr std::array kFamilies{
    Family{"UTF-8", "UTF-8", kMark},
    Family{"UTF-16LE", "UTF-16 LE", "\xff\xfe"},
    Family{"UTF-16BE", "UTF-16 BE", "\xfe\xff"},
    Family{"ISO-8859-1", "ISO 8859-1", ""},
    Family{"ISO-8859-15", "ISO 8859-15", ""},
    Family{"WINDOWS-1252", "Windows 1252", ""},
    Family{"ISO-8859-2", "ISO 8859-2", ""},
    Family{"WINDOWS-1250", "Windows 1250", ""},
    Family{"WINDOWS-1251", "Windows 1251", ""},
    Family{"KOI8-R", "KOI8-R", ""},
    Family{"EUC-JP", "EUC-JP", ""},
    Family{"SHIFT_JIS", "Shift JIS", ""},
    Family{"EUC-KR", "EUC-KR", ""},
    Family{"GB18030", "GB 18030", ""},
    Family{"BIG5", "Big5", ""},
    Family{"UTF-32LE", "UTF-32 LE", "\xff\xfe\0\0"sv},
    Family{"UTF-32BE", "UTF-32 BE", "\0\0\xfe\xff"sv},
};

const Family* FamilyOf(std::string_view name)
{
    const auto found = std::ranges::find(kFamilies, name, &Family::name);
    return found == kFamilies.end() ? nullptr : &*found;
}

std::string_view MarkBytes(const TextEncoding& encoding)
{
    const Family* family = FamilyOf(encoding.name);
    return family == nullptr || !encoding.hasMark ? "" : family->mark;
}

// Latin letters in UTF-16 are every other byte, with NUL bytes between them. Other files with NUL bytes have them
// elsewhere, or have no line ends.
std::optional<TextEncoding> Utf16WithoutMark(std::string_view bytes)
{
    constexpr size_t kSample = 4096;
    constexpr size_t kLeast = 16;
    const std::string_view sample = bytes.substr(0, kSample);
    if (bytes.size() % 2 != 0 || sample.size() < kLeast)
        return std::nullopt;
    std::array<size_t, 2> nuls = {}; // at even offsets, and at odd ones
    for (size_t at = 0; at < sample.size(); ++at)
        if (sample[at] == '\0')
            ++nuls[at % 2];
    const bool isLittle = nuls[0] == 0;
    const size_t most = sample.size() / 2;
    const bool hasLineEnd = sample.find(isLittle ? "\n\0"sv : "\0\n"sv) != std::string_view::npos;
    if ((!isLittle && nuls[1] != 0) || nuls[isLittle ? 1 : 0] * 10 < most * 9 || !hasLineEnd)
        return std::nullopt;
    return TextEncoding{isLittle ? "UTF-16LE" : "UTF-16BE", false};
}

class Converter {
public:
    Converter(const std::string& to, const std::string& from) : handle(::iconv_open(to.c_str(), from.c_str())) {}
    ~Converter()
    {
        if (IsOpen())
            ::iconv_close(handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool IsOpen() const { return handle != iconv_t(-1); } // NOLINT: iconv_open(3) gives -1 for a failure

    // How many bytes were converted: all, or those before the first character that cannot be.
    size_t Convert(std::string& bytes, std::string* result) const
    {
        char* in = bytes.data();
        size_t left = bytes.size();
        while (left > 0 && Step(&in, &left, result))
            continue;
        if (left == 0)
            Step(nullptr, nullptr, result);
        return bytes.size() - left;
    }

private:
    // True when the room for the result was the only problem.
    bool Step(char** in, size_t* left, std::string* result) const
    {
        std::array<char, 65'536> room;
        char* out = room.data();
        size_t free = room.size();
        const bool failed = ::iconv(handle, in, left, &out, &free) == size_t(-1);
        const int reason = errno;
        result->append(room.data(), room.size() - free);
        return failed && reason == E2BIG;
    }

    const iconv_t handle;
};

base::Error Unknown(const TextEncoding& encoding)
{
    return {"this system does not know the encoding " + LabelOf(encoding)};
}

// Lines end with LF, CR or both.
long LineAt(std::string_view text, size_t offset)
{
    long line = 1;
    for (size_t at = 0; at < offset; ++at)
        if (text[at] == '\n' || (text[at] == '\r' && (at + 1 == text.size() || text[at + 1] != '\n')))
            ++line;
    return line;
}

base::Error NotIn(const TextEncoding& encoding, std::string_view text, size_t offset)
{
    const std::string_view character = base::FirstCharacter(text.substr(offset));
    return {"line " + std::to_string(LineAt(text, offset)) + ": " +
            (base::IsStray(character) ? "a byte that is no character" : "\"" + std::string(character) + "\"") +
            " is not in " + LabelOf(encoding)};
}

} // namespace

const std::vector<TextEncoding>& Encodings()
{
    static const std::vector<TextEncoding> all = [] {
        std::vector<TextEncoding> each;
        for (const Family& family : kFamilies) {
            const bool isUtf8 = family.name == TextEncoding().name;
            each.push_back({family.name, !isUtf8 && !family.mark.empty()});
            if (isUtf8)
                each.push_back({family.name, true});
        }
        return each;
    }();
    return all;
}

std::string LabelOf(const TextEncoding& encoding)
{
    const Family* family = FamilyOf(encoding.name);
    const std::string label = family == nullptr ? kNotUtf8 : family->label;
    return encoding.hasMark ? label + kWithMark : label;
}

TextEncoding EncodingLabelled(std::string_view label)
{
    TextEncoding encoding;
    if (label == kNotUtf8)
        return {"", false};
    encoding.hasMark = label.ends_with(kWithMark);
    if (encoding.hasMark)
        label.remove_suffix(std::string_view(kWithMark).size());
    const auto found = std::ranges::find(kFamilies, label, &Family::label);
    if (found == kFamilies.end() || (encoding.hasMark && found->mark.empty()))
        return {};
    encoding.name = found->name;
    return encoding;
}

TextEncoding PlainEncodingOf(std::string_view bytes)
{
    return {base::IsValidUtf8(bytes) ? TextEncoding().name : "", false};
}

TextEncoding DetectEncoding(std::string_view bytes)
{
    const Family* marked = nullptr;
    for (const Family& family : kFamilies) // the longest mark: that of UTF-32 LE begins with that of UTF-16 LE
        if (bytes.starts_with(family.mark) && family.mark.size() > (marked == nullptr ? 0 : marked->mark.size()))
            marked = &family;
    if (marked != nullptr)
        return {marked->name, true};
    if (const std::optional<TextEncoding> found = Utf16WithoutMark(bytes))
        return *found;
    return PlainEncodingOf(bytes);
}

base::Result<DecodedText> Decode(std::string bytes, const TextEncoding& encoding)
{
    const Family* family = FamilyOf(encoding.name);
    if (family == nullptr)
        return DecodedText{std::move(bytes), {"", false}};
    const TextEncoding found = {encoding.name, !family->mark.empty() && bytes.starts_with(family->mark)};
    const size_t start = found.hasMark ? family->mark.size() : 0;
    if (found == TextEncoding())
        return DecodedText{bytes, PlainEncodingOf(bytes)};
    if (found.name == TextEncoding().name)
        return DecodedText{bytes.substr(start), found};
    const Converter converter("UTF-8", encoding.name);
    if (!converter.IsOpen())
        return Unknown(encoding);
    std::string rest = bytes.substr(start);
    DecodedText decoded = {"", found};
    const size_t converted = converter.Convert(rest, &decoded.text);
    if (converted < rest.size())
        return base::Error{"its byte " + std::to_string(start + converted + 1) + " is not " +
                           LabelOf({encoding.name, false})};
    const base::Result<std::string> again = Encode(decoded.text, found);
    if (!again || *again != bytes)
        return base::Error{"as " + LabelOf({encoding.name, false}) + " it could not be saved without a change"};
    return decoded;
}

DecodedText DecodeAs(std::string bytes, const TextEncoding& expected)
{
    const TextEncoding usual;
    const TextEncoding detected = DetectEncoding(bytes);
    const bool isExpected = expected != usual && !expected.name.empty();
    const bool isSure = detected.hasMark || (detected == usual && isExpected && !base::IsAscii(bytes));
    if (isExpected && !isSure)
        if (base::Result<DecodedText> decoded = Decode(bytes, expected))
            return std::move(*decoded);
    if (detected != usual)
        if (base::Result<DecodedText> decoded = Decode(bytes, detected))
            return std::move(*decoded);
    return {std::move(bytes), detected == usual ? usual : TextEncoding{"", false}};
}

base::Result<std::string> Encode(std::string text, const TextEncoding& encoding)
{
    if (encoding.name.empty())
        return text;
    std::string bytes(MarkBytes(encoding));
    if (encoding.name == TextEncoding().name)
        return bytes.empty() ? std::move(text) : bytes + text;
    const Converter converter(encoding.name, "UTF-8");
    if (!converter.IsOpen())
        return Unknown(encoding);
    const size_t converted = converter.Convert(text, &bytes);
    if (converted < text.size())
        return NotIn(encoding, text, converted);
    return bytes;
}

} // namespace wren
