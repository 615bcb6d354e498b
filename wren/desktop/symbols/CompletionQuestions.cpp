#include "wren/desktop/symbols/CompletionQuestions.h"

#include "wren/desktop/symbols/AskedSubject.h"
#include "wren/desktop/symbols/PaletteQuestions.h"
#include "wren/symbols/FittingNames.h"
#include "wren/symbols/ShownNames.h"
#include "wren/symbols/Signatures.h"

#include <string_view>

namespace wren {

namespace {

constexpr size_t kMostCompletions = 500;

std::string_view LeafOf(std::string_view path)
{
    return path.substr(path.rfind('/') + 1);
}

// "(int a, int b) : size_t"
std::string DetailOf(const tagging::Symbol& symbol)
{
    std::string detail = WithBlanksBehindCommas(symbol.signature);
    if (!symbol.type.empty())
        detail += (detail.empty() ? "" : " : ") + std::string(symbol.type);
    return WithoutMadeNames(detail);
}

PaletteItem CompletionFor(const FittingName& name)
{
    PaletteItem item;
    item.name = name.name;
    if (name.symbol == nullptr)
        return item;
    item.kind = name.symbol->kind;
    item.detail = DetailOf(*name.symbol);
    item.where = LeafOf(name.path);
    item.line = name.symbol->line;
    return item;
}

} // namespace

CompletionAnswer CompletionsAt(const AskedText& asked, const Question& question)
{
    const AskedSubject subject(asked, question);
    const resolve::ParsedTextPointer parsed = subject.Parsed();
    CompletionAnswer answer;
    answer.where = PlaceIn(*asked.text, parsed->tokens, asked.offset);
    answer.more = ForEachFittingName({subject.Resolver(), subject.Workspace(), *parsed, subject.Place(), answer.where,
                                      subject.Limits(kMostCompletions)},
                                     [&](const FittingName& name) { answer.items.push_back(CompletionFor(name)); });
    return answer;
}

bool IsLocal(const PaletteItem& item)
{
    return item.kind == tagging::SymbolKind::Local || item.kind == tagging::SymbolKind::Parameter;
}

std::vector<PaletteItem> Fitting(const std::vector<PaletteItem>& items, const std::string& typed, bool localsOnly)
{
    std::vector<PaletteItem> fitting;
    for (const PaletteItem& item : items)
        if (!localsOnly || (IsLocal(item) && item.name.starts_with(typed)))
            fitting.push_back(item);
    if (!typed.empty())
        Narrow(fitting, typed);
    return fitting;
}

} // namespace wren
