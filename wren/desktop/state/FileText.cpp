#include "wren/desktop/state/FileText.h"

#include "wren/core/Documents.h"

#include <utility>

namespace wren {

namespace {

struct FileBytes {
    std::string bytes;
    FileMark mark;
};

std::optional<FileBytes> Read(const std::string& path, std::string* error)
{
    const std::optional<base::FileIdentity> stamp = base::FileIdentity::At(path);
    std::optional<std::string> bytes = ReadWholeFile(path, error);
    if (!bytes)
        return std::nullopt;
    FileMark mark = MarkOf(stamp, *bytes);
    return FileBytes{std::move(*bytes), std::move(mark)};
}

} // namespace

std::optional<FileText> ReadFileText(const std::string& path, const TextEncoding& expected, std::string* error)
{
    std::optional<FileBytes> read = Read(path, error);
    if (!read)
        return std::nullopt;
    return FileText{DecodeAs(std::move(read->bytes), expected), std::move(read->mark)};
}

std::optional<FileText> ReadFileTextIn(const std::string& path, const TextEncoding& encoding, std::string* error)
{
    std::optional<FileBytes> read = Read(path, error);
    if (!read)
        return std::nullopt;
    base::Result<DecodedText> decoded = Decode(std::move(read->bytes), encoding);
    if (!decoded) {
        *error = path + ": " + decoded.Failure().Message();
        return std::nullopt;
    }
    return FileText{std::move(*decoded), std::move(read->mark)};
}

} // namespace wren
