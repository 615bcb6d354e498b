#include "wren/lsp/features/Completion.h"

#include "resolve/ParsedText.h"
#include "wren/lsp/features/CompletionItems.h"
#include "wren/lsp/session/Subject.h"
#include "wren/symbols/Comments.h"
#include "wren/symbols/DeclarationRange.h"
#include "wren/symbols/FittingNames.h"
#include "wren/symbols/ShownNames.h"
#include "wren/symbols/Signatures.h"
#include "wren/symbols/TextPlace.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace wren::lsp {

namespace {

using Sort = TextPlace::Sort;
using tagging::Symbol;

constexpr int kPlainText = 1; // the protocol's InsertTextFormat
constexpr int kSnippetText = 2;

// Whether the character that was typed begins something here.
bool Fits(const std::string& trigger, const TextPlace& place)
{
    if (trigger.empty())
        return true;
    switch (place.sort) {
    case Sort::Include:
        return true;
    case Sort::Message:
        return trigger == "[" || trigger == " " || trigger == ":";
    case Sort::Member:
        return trigger == "." || trigger == ">";
    case Sort::Qualified:
        return trigger == ":";
    default:
        return false;
    }
}

// Makes the items of one place.
class Items {
public:
    Items(const Subject& subject, const RequestContext& context, const TextPlace& place, size_t offset)
        : subject(subject), context(context), place(place), offset(offset)
    {
    }

    Json List()
    {
        const resolve::ParsedTextPointer parsed = subject.Parsed();
        const bool more = ForEachFittingName({subject.Resolver(),
                                              subject.Workspace(),
                                              *parsed,
                                              {subject.Path(), subject.Text().Content(), offset},
                                              place,
                                              subject.LimitsOf(context.settings.completionLimit)},
                                             [this](const FittingName& name) { Add(name); });
        return {{"isIncomplete", more}, {"items", std::move(items)}};
    }

private:
    static constexpr const char* kItem = "textDocument/completion/completionItem/";

    bool Can(const char* ability) const { return context.client.Can(std::string(kItem) + ability); }

    void Add(const FittingName& name)
    {
        if (name.symbol != nullptr)
            return AddSymbol(*name.symbol, std::string(name.path));
        const int kind = name.sort == FittingName::Sort::File ? kFileItem : kKeywordItem;
        Add({{"label", name.name}, {"kind", kind}}, std::string(name.name), "");
    }

    void AddSymbol(const Symbol& symbol, const std::string& path)
    {
        Json item = {{"label", symbol.name}, {"kind", CompletionKindOf(symbol)}};
        if (Can("labelDetailsSupport"))
            if (Json details = DetailsOf(symbol); !details.empty())
                item["labelDetails"] = std::move(details);
        item["data"] = {{"uri", subject.UriOf(path)},
                        {"line", symbol.line},
                        {"name", symbol.name},
                        {"scope", symbol.scope},
                        {"type", symbol.type},
                        {"signature", symbol.signature},
                        {"kind", static_cast<int>(symbol.kind)}};
        Add(std::move(item), std::string(symbol.name), SnippetOf(symbol));
    }

    static Json DetailsOf(const Symbol& symbol)
    {
        Json details = Json::object();
        if (!symbol.signature.empty())
            details["detail"] = WithoutMadeNames(WithBlanksBehindCommas(symbol.signature));
        if (!symbol.type.empty())
            details["description"] = WithoutMadeNames(std::string(symbol.type));
        return details;
    }

    bool IsCalledAlready() const
    {
        const std::string& content = subject.Text().Content();
        const size_t next = content.find_first_not_of(" \t", place.end);
        return next != std::string::npos && content[next] == '(';
    }

    // What stands left of the word is never touched.
    void Add(Json item, const std::string& text, const std::string& snippet)
    {
        const bool asSnippet =
            !snippet.empty() && context.settings.snippets && Can("snippetSupport") && !IsCalledAlready();
        const std::string inserted = asSnippet ? snippet : text;
        item["insertTextFormat"] = asSnippet ? kSnippetText : kPlainText;
        item["filterText"] = item["label"];
        char order[16];
        std::snprintf(order, sizeof order, "%05zu", items.size());
        item["sortText"] = order;
        const Range replaced = subject.Text().RangeOf(place.start, offset, subject.Encoding());
        if (Can("insertReplaceSupport"))
            item["textEdit"] = {
                {"newText", inserted},
                {"insert", replaced},
                {"replace", subject.Text().RangeOf(place.start, std::max(place.end, offset), subject.Encoding())}};
        else
            item["textEdit"] = {{"newText", inserted}, {"range", replaced}};
        items.push_back(std::move(item));
    }

    const Subject& subject;
    const RequestContext& context;
    const TextPlace& place;
    const size_t offset;
    Json items = Json::array();
};

// The comment of the declaration that an item's data tell.
std::string DocumentationOf(const Json& data, const RequestContext& context)
{
    const std::string uri = OptionalMember<std::string>(data, "uri").value_or("");
    const std::string name = OptionalMember<std::string>(data, "name").value_or("");
    const unsigned line = OptionalMember<unsigned>(data, "line").value_or(0);
    if (uri.empty() || name.empty() || line == 0)
        return "";
    try {
        const Subject subject(context, uri);
        Symbol symbol;
        symbol.name = name;
        symbol.line = line;
        symbol.kind = tagging::SymbolKind::Function;
        return CommentOf(RangeOfDeclaration(symbol, subject.Text().Source()), subject.Text().Source());
    } catch (const Failure&) { // the file is gone
        return "";
    }
}

} // namespace

void from_json(const Json& json, CompletionParams& params)
{
    params.at = json.get<TextDocumentPositionParams>();
    const Json asked = OptionalMember<Json>(json, "context").value_or(Json::object());
    constexpr int kByCharacter = 2; // the protocol's CompletionTriggerKind
    if (OptionalMember<int>(asked, "triggerKind") == kByCharacter)
        params.trigger = OptionalMember<std::string>(asked, "triggerCharacter").value_or("");
}

Json Completion(const CompletionParams& params, const RequestContext& context)
{
    Json nothing = {{"isIncomplete", false}, {"items", Json::array()}};
    const Subject subject(context, params.at.uri);
    if (!subject.IsSource())
        return nothing;
    const std::string& content = subject.Text().Content();
    const size_t offset = subject.Text().OffsetOf(params.at.position, subject.Encoding());
    const TextPlace place = PlaceIn(content, subject.Parsed()->tokens, offset);
    if (place.sort == Sort::Nothing || !Fits(params.trigger, place))
        return nothing;
    return Items(subject, context, place, offset).List();
}

Json ResolveCompletion(const Json& given, const RequestContext& context)
{
    Json item = given;
    const Json data = OptionalMember<Json>(item, "data").value_or(Json::object());
    const std::string type = OptionalMember<std::string>(data, "type").value_or("");
    const std::string scope = OptionalMember<std::string>(data, "scope").value_or("");
    const std::string name = OptionalMember<std::string>(data, "name").value_or("");
    const std::string signature = OptionalMember<std::string>(data, "signature").value_or("");
    if (!name.empty())
        item["detail"] = WithoutMadeNames((type.empty() ? "" : type + " ") + (scope.empty() ? "" : scope + "::") +
                                          name + WithBlanksBehindCommas(signature));
    if (const std::string comment = DocumentationOf(data, context); !comment.empty())
        item["documentation"] = {{"kind", "plaintext"}, {"value", comment}};
    return item;
}

} // namespace wren::lsp
