#include "wren/core/Document.h"

#include <utility>

namespace wren {

Document::Document(long id, const std::string& path, std::unique_ptr<TextStore> text, bool worksheet)
    : id(id), ref(path.c_str()), worksheet(worksheet), store(std::move(text))
{
}

Document::~Document() = default;

std::string Document::Text(long start, long end) const
{
    std::string range(end - start, '\0');
    store->GetText(range.data(), start, end - start);
    return range;
}

} // namespace wren
