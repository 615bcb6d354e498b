#include "wren/cli/SourcePlace.h"

#include "vetch/storage/BPath.h"
#include "wren/core/Documents.h"

#include <filesystem>
#include <utility>

namespace wren {

namespace {

BEntry ParentOf(const BEntry& file)
{
    BEntry parent;
    file.GetParent(&parent);
    return parent;
}

} // namespace

std::optional<SourcePlace> ReadSource(const Place& place, WithoutColumn withoutColumn, std::string* error)
{
    const std::string file = std::filesystem::absolute(place.file);
    std::optional<std::string> text = ReadWholeFile(file, error);
    if (!text)
        return std::nullopt;
    const std::optional<long> offset = OffsetOf(place, withoutColumn, *text, error);
    if (!offset)
        return std::nullopt;
    const BEntry shown = ParentOf(BEntry(file.c_str()));
    return SourcePlace{*std::move(text), *offset, ParentOf(BEntry(file.c_str(), true)), BPath(&shown).Path()};
}

} // namespace wren
