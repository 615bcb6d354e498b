#include "wren/lsp/features/Meant.h"

#include "base/Identifier.h"

namespace wren::lsp {

ByteRange NameAt(const Text& text, size_t offset, const resolve::Answers& answers)
{
    const std::string_view content = text.Content();
    if (!answers.found.empty() && answers.found.front().IsFile()) {
        const size_t line = text.LineStart(text.LineAt(offset));
        const size_t found = content.find(answers.name, line);
        if (found != std::string_view::npos)
            return {found, found + answers.name.size()};
    }
    const std::string_view name = base::IdentifierAround(content, offset);
    const size_t start = static_cast<size_t>(name.data() - content.data());
    return {start, start + name.size()};
}

} // namespace wren::lsp
