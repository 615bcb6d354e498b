// Who calls whom, by name as references are.
#include "wren/lsp/features/Hierarchies.h"
#include "wren/lsp/features/HierarchyItem.h"
#include "wren/lsp/features/Meant.h"
#include "wren/lsp/features/UseRanges.h"
#include "wren/symbols/CallPlaces.h"
#include "wren/symbols/NamedSymbols.h"

#include <map>
#include <optional>
#include <tuple>

namespace wren::lsp {

namespace {

constexpr size_t kMostUses = 10'000;
constexpr size_t kMostCallPlaces = 500; // of one function

// Calls by the function at their other end, in the order in which these were found.
class CallsByFunction {
public:
    explicit CallsByFunction(const Subject& subject) : subject(subject) {}

    void Add(const symbols::Symbol& function, const std::string& path, const Range& range)
    {
        const auto [at, isNew] = numbers.try_emplace({path, function.line, std::string(function.name)}, calls.size());
        if (isNew)
            calls.push_back({HierarchyItem(function, path, subject), Json::array()});
        calls[at->second].ranges.push_back(range);
    }

    // Calls that belong to nothing that has a name.
    void AddOfFile(const std::string& path, const Range& range)
    {
        const auto [at, isNew] = numbers.try_emplace({path, 0, std::string()}, calls.size());
        if (isNew)
            calls.push_back({FileItem(path, subject), Json::array()});
        calls[at->second].ranges.push_back(range);
    }

    Json As(const char* member) const // "from" or "to"
    {
        Json list = Json::array();
        for (const Call& call : calls)
            if (call.item)
                list.push_back({{member, *call.item}, {"fromRanges", call.ranges}});
        return list;
    }

private:
    struct Call {
        std::optional<Json> item;
        Json ranges;
    };

    const Subject& subject;
    std::map<std::tuple<std::string, unsigned, std::string>, size_t> numbers;
    std::vector<Call> calls;
};

bool IsMethodOfObjectiveC(tagging::SymbolKind kind)
{
    using Kind = tagging::SymbolKind;
    return kind == Kind::InstanceMethod || kind == Kind::ClassMethod || kind == Kind::InstanceMethodDeclaration ||
           kind == Kind::ClassMethodDeclaration;
}

// Messages have no parentheses.
bool IsCall(const resolve::Use& use, bool isMessage)
{
    return use.role == resolve::Use::Role::Call || (isMessage && use.role == resolve::Use::Role::Other);
}

} // namespace

Json PrepareCallHierarchy(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    return HierarchyItemsAt(params.position, IsCallable, subject);
}

Json IncomingCalls(const HierarchyParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    const resolve::Place place = subject.PlaceAt(params.selectionRange.start);
    const std::vector<resolve::Answer> meant = subject.Resolver().Meanings(place, subject.LimitsOf(1)).found;
    const bool isMessage = !meant.empty() && IsMethodOfObjectiveC(meant.front().symbol.kind);
    CallsByFunction calls(subject);
    const auto add = [&](std::string_view text, const std::vector<resolve::Use>& uses) {
        context.CheckCancelled();
        const std::optional<symbols::FileNumber> file = subject.Snapshot().FindFile(uses.front().path);
        if (!file)
            return true;
        const symbols::Symbols inFile = subject.Snapshot().OfFile(*file);
        UseRanges ranges(text, subject.Encoding());
        for (const resolve::Use& use : uses) {
            if (!IsCall(use, isMessage))
                continue;
            if (const std::optional<symbols::Symbol> caller = CallerAround(inFile, use.line))
                calls.Add(*caller, use.path, ranges.Of(use));
            else
                calls.AddOfFile(use.path, ranges.Of(use));
        }
        return true;
    };
    subject.Resolver().ForEachUse(place, subject.LimitsOf(kMostUses), resolve::Resolver::Where::Everywhere, add);
    return calls.As("from");
}

Json OutgoingCalls(const HierarchyParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    const std::string& content = subject.Text().Content();
    const size_t name = subject.Text().OffsetOf(params.selectionRange.end, subject.Encoding());
    const size_t end = subject.Text().OffsetOf(params.range.end, subject.Encoding());
    const size_t body = std::min(content.find('{', name), end);
    CallsByFunction calls(subject);
    for (const size_t offset : CallPlaces(content, body, end, kMostCallPlaces)) {
        context.CheckCancelled();
        resolve::Answers answers =
            subject.Resolver().Definition({subject.Path(), content, offset}, subject.LimitsOf(1));
        if (answers.found.empty() || !IsCallable(answers.found.front().symbol.kind))
            continue;
        const ByteRange word = NameAt(subject.Text(), offset, answers);
        calls.Add(answers.found.front().symbol, answers.found.front().path,
                  subject.Text().RangeOf(word.start, word.end, subject.Encoding()));
    }
    return calls.As("to");
}

} // namespace wren::lsp
