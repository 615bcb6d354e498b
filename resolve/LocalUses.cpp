#include "resolve/LocalUses.h"

#include "resolve/Columns.h"
#include "resolve/KnownStatements.h"
#include "resolve/Question.h"

#include <map>
#include <optional>

namespace resolve {

namespace {

// Which local a mention of a name means. What one mention has taught, the next one need not read again.
class MentionsOfLocal {
public:
    MentionsOfLocal(const Tokens& tokens, const LocalName& local)
        : tokens(tokens), local(local), known(tokens, tokens[local.name].text)
    {
    }

    bool Means(size_t mention)
    {
        if (!tokens[mention].IsWord() || tokens[mention].text != tokens[local.name].text)
            return false;
        const Token& before = tokens[mention - 1];
        const bool isMember = before.Is('.') || before.text == "->" || before.IsMark("::");
        if (isMember && mention != local.name)
            return false;
        if (local.kind == SymbolKind::MacroParameter) // of the one directive that all tokens are in
            return true;
        return local.name == (local.kind == SymbolKind::Label ? Label(mention) : Local(mention));
    }

private:
    size_t Local(size_t mention)
    {
        const auto found = FindLocal(tokens, mention, tokens[mention].text, known);
        return found ? found->name : kNone;
    }

    size_t Label(size_t mention)
    {
        const size_t body = BodyOfLabels(tokens, mention);
        const auto [label, isNew] = labels.try_emplace(body, kNone);
        if (isNew)
            if (const auto found = FindLabel(tokens, body, tokens[mention].text))
                label->second = found->name;
        return label->second;
    }

    const Tokens& tokens;
    const LocalName& local;
    KnownStatements known;
    std::map<size_t, size_t> labels; // by the body around them
};

} // namespace

Uses UsesOfLocal(Question& question, const LocalName& local, const std::string& path, symbols::Limits limits)
{
    Uses uses;
    const Tokens& tokens = question.GetTokens();
    MentionsOfLocal mentions(tokens, local);
    Columns columns(question.GetWorld().Text().text);
    for (size_t i = 0; i < tokens.Count(); ++i) {
        if (limits.cancel != nullptr && limits.cancel->IsCancelled())
            break;
        if (!mentions.Means(i))
            continue;
        if (uses.found.size() == limits.results) {
            uses.more = true;
            break;
        }
        uses.found.push_back({path, tokens[i].line, columns.At(tokens[i].offset),
                              i == local.name ? resolve::Use::Role::Definition : resolve::Use::Role::Other});
    }
    return uses;
}

} // namespace resolve
