#include "wren/lsp/features/Rename.h"

#include "base/Identifier.h"
#include "resolve/Locals.h"
#include "resolve/ParsedText.h"
#include "wren/lsp/features/Meant.h"
#include "wren/lsp/features/UseRanges.h"

#include <algorithm>
#include <set>

namespace wren::lsp {

namespace {

constexpr size_t kMostRenamed = 10'000;

[[noreturn]] void Refuse(const std::string& why)
{
    throw Failure(FailureCode::RequestFailed, why);
}

// Words that resolve::IsKeyword() leaves out, since they begin declarations that it reads.
bool IsReserved(std::string_view word)
{
    static const std::set<std::string_view> kWords = {
        "struct",   "class",     "union",   "enum",     "typedef",  "namespace", "using",    "operator", "public",
        "private",  "protected", "virtual", "friend",   "explicit", "export",    "new",      "delete",   "throw",
        "try",      "catch",     "sizeof",  "typename", "extern",   "static",    "register", "inline",   "const",
        "volatile", "mutable",   "signed",  "unsigned", "noexcept", "constexpr", "and",      "or",       "not"};
    return kWords.contains(word) || resolve::IsKeyword(word);
}

// A local with all its uses; nullopt when there is no name at the place. Refuses anything else.
class LocalUses {
public:
    LocalUses(const Subject& subject, Position position) : subject(subject), place(subject.PlaceAt(position))
    {
        if (!subject.IsSource())
            return;
        const resolve::Answers answers = subject.Resolver().Meanings(place, subject.LimitsOf(1));
        name = NameAt(subject.Text(), place.offset, answers);
        if (answers.name.empty() || name.start == name.end)
            return;
        if (answers.found.empty() || answers.found.front().how != resolve::How::Local)
            Refuse("Only local variables, parameters and labels can be renamed; \"" + answers.name +
                   "\" may be used where the index cannot tell.");
        hasName = true;
        const bool more =
            subject.Resolver().ForEachUse(place, subject.LimitsOf(kMostRenamed), resolve::Resolver::Where::InText,
                                          [&](std::string_view, std::vector<resolve::Use> found) {
                                              uses = std::move(found);
                                              return true;
                                          });
        if (more)
            Refuse("\"" + answers.name + "\" is used too often to be renamed.");
    }

    bool HasName() const { return hasName; }
    ByteRange Name() const { return name; }
    const std::vector<resolve::Use>& Uses() const { return uses; }

    // Whether the name means something at one of the uses, or where the local is declared.
    bool IsTaken(const std::string& wanted) const
    {
        const resolve::ParsedTextPointer parsed = subject.Parsed();
        UseRanges ranges(subject.Text().Content(), subject.Encoding());
        for (const resolve::Use& use : uses)
            if (const size_t word = parsed->tokens.FirstFrom(ranges.OffsetOf(use));
                HidesOrIsHidden(*parsed, word, wanted))
                return true;
        return IsVisible(wanted);
    }

private:
    bool HidesOrIsHidden(const resolve::ParsedText& parsed, size_t word, const std::string& wanted) const
    {
        return resolve::FindLocal(parsed.tokens, word, wanted).has_value() || IsUsedBeside(parsed.tokens, word, wanted);
    }

    // "{ int n; use(total); }" with n as "total": what is meant there would change.
    static bool IsUsedBeside(const resolve::Tokens& tokens, size_t word, const std::string& wanted)
    {
        const size_t open = tokens[word].parent;
        const size_t end = open == resolve::kNone || tokens[open].match == resolve::kNone ? word : tokens[open].match;
        for (size_t i = word; i < end; ++i)
            if (tokens[i].IsWord() && tokens[i].text == wanted && !tokens[i - 1].Is('.') &&
                tokens[i - 1].text != "->" && !tokens[i - 1].IsMark("::"))
                return true;
        return false;
    }

    // Asks what the wanted name would mean in the place of a use.
    bool IsVisible(const std::string& wanted) const
    {
        const resolve::Use* const use = &uses.back();
        UseRanges ranges(place.text, subject.Encoding());
        const size_t offset = ranges.OffsetOf(*use);
        std::string text(place.text);
        text.replace(offset, name.end - name.start, wanted);
        const resolve::Place changed{place.path, text, offset};
        for (const resolve::Answer& each : subject.Resolver().Meanings(changed, subject.LimitsOf(20)).found)
            if (each.how != resolve::How::Name && each.offset != offset)
                return true;
        for (const symbols::Symbol& symbol : subject.Snapshot().ByName(wanted, subject.LimitsOf(50)).found)
            if (symbol.scope.empty() && subject.Snapshot().FileOf(symbol.file).path == place.path)
                return true;
        return false;
    }

    const Subject& subject;
    const resolve::Place place;
    ByteRange name;
    bool hasName = false;
    std::vector<resolve::Use> uses;
};

Json EditOf(const Subject& subject, const LocalUses& local, const RenameParams& params, const RequestContext& context)
{
    UseRanges ranges(subject.Text().Content(), subject.Encoding());
    Json edits = Json::array();
    for (const resolve::Use& use : local.Uses())
        edits.push_back({{"range", ranges.Of(use)}, {"newText", params.newName}});
    if (!context.client.Can("workspace/workspaceEdit/documentChanges"))
        return {{"changes", {{subject.Uri(), edits}}}};
    const auto open = context.documents->find(PathOfDocument(params.uri));
    const Json version = open == context.documents->end() ? Json() : Json(open->second->version);
    Json change;
    change["textDocument"] = {{"uri", subject.Uri()}, {"version", version}};
    change["edits"] = edits;
    return {{"documentChanges", Json::array({change})}};
}

} // namespace

void from_json(const Json& json, RenameParams& params)
{
    from_json(json, static_cast<TextDocumentPositionParams&>(params));
    params.newName = Member<std::string>(json, "newName");
}

Json PrepareRename(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    const LocalUses local(subject, params.position);
    if (!local.HasName())
        return nullptr;
    const ByteRange name = local.Name();
    return {{"range", subject.Text().RangeOf(name.start, name.end, subject.Encoding())},
            {"placeholder", subject.Text().Content().substr(name.start, name.end - name.start)}};
}

Json Rename(const RenameParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    const LocalUses local(subject, params.position);
    if (!local.HasName())
        return nullptr;
    if (!base::IsIdentifier(params.newName))
        Refuse("\"" + params.newName + "\" is not a name.");
    if (IsReserved(params.newName))
        Refuse("\"" + params.newName + "\" is a keyword.");
    const ByteRange name = local.Name();
    const bool isSame = subject.Text().Content().compare(name.start, name.end - name.start, params.newName) == 0;
    if (!isSame && local.IsTaken(params.newName))
        Refuse("\"" + params.newName + "\" is visible there already.");
    return EditOf(subject, local, params, context);
}

Json RenameProvider(const ClientAbilities& client)
{
    return client.Can("textDocument/rename/prepareSupport") ? Json({{"prepareProvider", true}}) : Json(true);
}

} // namespace wren::lsp
