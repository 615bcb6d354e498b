#include "wren/lsp/features/Meant.h"

#include "base/Identifier.h"

namespace wren::lsp {

void KeepMeant(std::vector<resolve::Answer>& answers)
{
    std::erase_if(answers, [](const resolve::Answer& each) { return !each.isMeant; });
    if (answers.empty() || answers.front().how == resolve::How::Name)
        return;
    if (IsFile(answers.front())) {
        answers.erase(answers.begin() + 1, answers.end());
        return;
    }
    // A macro and an enumeration are "definitions" whatever is asked for.
    const bool wantsDefinitions = answers.front().symbol.isDefinition;
    std::erase_if(answers, [&](const resolve::Answer& each) { return each.symbol.isDefinition != wantsDefinitions; });
}

bool IsFile(const resolve::Answer& answer)
{
    return answer.symbol.kind == tagging::SymbolKind::None && answer.symbol.name.empty();
}

ByteRange NameAt(const Text& text, size_t offset, const resolve::Answers& answers)
{
    const std::string_view content = text.Content();
    if (!answers.found.empty() && IsFile(answers.found.front())) {
        const size_t line = text.LineStart(text.LineAt(offset));
        const size_t found = content.find(answers.name, line);
        if (found != std::string_view::npos)
            return {found, found + answers.name.size()};
    }
    size_t start = std::min(offset, content.size());
    size_t end = start;
    while (start > 0 && base::IsIdentifierCharacter(content[start - 1]))
        --start;
    while (end < content.size() && base::IsIdentifierCharacter(content[end]))
        ++end;
    return {start, end};
}

} // namespace wren::lsp
