#include "wren/lsp/features/Hover.h"

#include "resolve/ParsedText.h"
#include "wren/lsp/features/Meant.h"
#include "wren/lsp/session/Subject.h"
#include "wren/symbols/MeaningCard.h"

namespace wren::lsp {

namespace {

constexpr size_t kMostCandidates = 100;

const char* LanguageOf(const Subject& subject)
{
    const resolve::ParsedTextPointer parsed = subject.Parsed();
    if (parsed->IsObjectiveC())
        return parsed->IsCplusplus() ? "objective-cpp" : "objective-c";
    return parsed->IsCplusplus() ? "cpp" : "c";
}

// Each line of the comment stays one.
std::string CommentAsMarkdown(const std::string& comment)
{
    std::string text;
    for (const char c : comment) {
        const bool atStart = text.empty() || text.back() == '\n';
        if (c == '<' || c == '*' || c == '\\' ||
            (atStart && (c == '#' || c == '-' || c == '+' || c == '>' || c == '=')))
            text += '\\';
        text += c == '\n' ? "  \n" : std::string(1, c);
    }
    return text;
}

std::string TextOfCard(const MeaningCard& card, const char* language)
{
    const bool isMarkdown = language != nullptr;
    std::string text;
    const auto add = [&](const std::string& part) {
        if (!part.empty())
            text += (text.empty() ? "" : "\n\n") + part;
    };
    std::string code = card.scope.empty() ? "" : "// in " + card.scope + "\n";
    code += card.declaration;
    if (!card.value.empty())
        code += "\n// = " + card.value;
    const std::string fence = code.find("```") == std::string::npos ? "```" : "~~~~";
    if (!card.declaration.empty())
        add(isMarkdown ? fence + language + "\n" + code + "\n" + fence : code);
    add(isMarkdown ? CommentAsMarkdown(card.comment) : card.comment);
    add(isMarkdown && card.place.find('`') == std::string::npos ? "`" + card.place + "`" : card.place);
    if (card.others > 0)
        add("and " + std::to_string(card.others) + " more");
    if (card.isFoundByName)
        add("found by its name");
    return text;
}

} // namespace

Json Hover(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    if (!subject.IsSource())
        return nullptr;
    const resolve::Place place = subject.PlaceAt(params.position);
    const resolve::Answers answers = subject.Resolver().Meanings(place, subject.LimitsOf(kMostCandidates));
    const auto read = [&subject](const std::string& path) {
        const TextPointer text = subject.TextOf(path); // kept by the subject
        return text == nullptr ? std::nullopt : std::optional(text->Source());
    };
    const std::optional<MeaningCard> card = CardOf(answers.found, subject.Snapshot(), read);
    if (!card)
        return nullptr;
    const bool isMarkdown =
        context.client.FirstOf("textDocument/hover/contentFormat", {"markdown", "plaintext"}) == "markdown";
    const ByteRange name = NameAt(subject.Text(), place.offset, answers);
    return {{"contents",
             {{"kind", isMarkdown ? "markdown" : "plaintext"},
              {"value", TextOfCard(*card, isMarkdown ? LanguageOf(subject) : nullptr)}}},
            {"range", subject.Text().RangeOf(name.start, name.end, subject.Encoding())}};
}

} // namespace wren::lsp
