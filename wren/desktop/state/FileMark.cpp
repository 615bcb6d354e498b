#include "wren/desktop/state/FileMark.h"

#include "wren/core/Documents.h"

#include <QCryptographicHash>

#include <optional>

namespace wren {

namespace {

std::string DigestOfText(std::string_view text)
{
    if (static_cast<std::int64_t>(text.size()) > FileMark::kLargestCompared)
        return "";
    const auto bytes = QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
    return QCryptographicHash::hash(bytes, QCryptographicHash::Blake2b_160).toHex().toStdString();
}

} // namespace

FileMark MarkOf(const std::optional<base::FileIdentity>& stamp, std::string_view text)
{
    return {stamp, DigestOfText(text)};
}

bool HasChanged(const std::string& path, const FileMark& mark)
{
    const std::optional<base::FileIdentity> now = base::FileIdentity::At(path);
    if (!now || !mark.stamp)
        return now != mark.stamp;
    const std::string content = mark.content.empty() ? "" : DigestOf(path, now);
    return content.empty() ? !now->IsSameOnSomeDevice(*mark.stamp) : content != mark.content;
}

std::string DigestOf(const std::string& path, const std::optional<base::FileIdentity>& stamp)
{
    if (!stamp || stamp->size > FileMark::kLargestCompared || base::FileIdentity::At(path) != stamp)
        return "";
    std::string ignored;
    const std::optional<std::string> text = ReadWholeFile(path, &ignored);
    return text && base::FileIdentity::At(path) == stamp ? DigestOfText(*text) : "";
}

} // namespace wren
