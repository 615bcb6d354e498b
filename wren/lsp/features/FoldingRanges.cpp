#include "wren/lsp/features/FoldingRanges.h"

#include "resolve/Tokens.h"
#include "wren/lsp/session/Subject.h"

#include <algorithm>
#include <utility>

namespace wren::lsp {

namespace {

using Kind = FoldingRange::Kind;

class Folds {
public:
    explicit Folds(const Text& text) : text(text), tokens(text.Content()) {}

    std::vector<FoldingRange> All()
    {
        AddBlocks();
        AddBranches();
        AddIncludes();
        AddComments();
        std::ranges::sort(folds);
        folds.erase(std::unique(folds.begin(), folds.end()), folds.end());
        return std::move(folds);
    }

private:
    // From a visible first line to the last hidden one.
    void Add(size_t first, size_t last, Kind kind)
    {
        if (last > first)
            folds.push_back({first, last, kind});
    }

    size_t LineAt(size_t offset) const { return text.LineAt(offset); }

    void AddBlocks()
    {
        for (size_t number = 0; number < tokens.Count(); ++number) {
            const resolve::Token& token = tokens[number];
            if (!token.IsMark("{") || token.match == resolve::kNone || token.match < number)
                continue;
            const size_t last = LineAt(tokens[token.match].offset);
            Add(LineAt(token.offset), last == 0 ? 0 : last - 1, Kind::Code);
        }
    }

    void AddBranches()
    {
        std::vector<size_t> open; // first lines of branches
        for (const resolve::PlacedDirective& placed : tokens.Directives()) {
            const tagging::Directive directive(placed.text);
            const size_t line = LineAt(placed.offset);
            if ((directive.ContinuesBranches() || directive.EndsBranches()) && !open.empty()) {
                Add(open.back(), line == 0 ? 0 : line - 1, Kind::Code);
                open.pop_back();
                if (!directive.EndsBranches())
                    open.push_back(line);
            }
            if (directive.BeginsBranches())
                open.push_back(line);
        }
    }

    static bool IsInclude(const resolve::PlacedDirective& placed)
    {
        const std::string_view name = tagging::Directive(placed.text).name;
        return name == "include" || name == "import" || name == "include_next";
    }

    bool HasTokenBetween(const resolve::PlacedDirective& left, const resolve::PlacedDirective& right) const
    {
        return left.next != right.next;
    }

    // Blank lines and comments do not end a run.
    void AddIncludes()
    {
        const std::vector<resolve::PlacedDirective>& all = tokens.Directives();
        for (size_t first = 0; first < all.size(); ++first) {
            if (!IsInclude(all[first]))
                continue;
            size_t last = first;
            while (last + 1 < all.size() && IsInclude(all[last + 1]) && !HasTokenBetween(all[last], all[last + 1]))
                ++last;
            Add(LineAt(all[first].offset), LineAt(all[last].offset + all[last].text.size()), Kind::Imports);
            first = last;
        }
    }

    // Comments stand where there is neither a token nor a directive.
    void AddComments()
    {
        std::vector<std::pair<size_t, size_t>> taken; // begin, end
        for (size_t number = 0; number < tokens.Count(); ++number)
            taken.emplace_back(tokens[number].offset, tokens[number].End());
        for (const resolve::PlacedDirective& placed : tokens.Directives())
            taken.emplace_back(placed.offset, placed.offset + placed.text.size());
        std::ranges::sort(taken);
        taken.emplace_back(text.Content().size(), text.Content().size());
        size_t end = 0;
        for (const auto& [begin, next] : taken) {
            if (begin > end)
                AddCommentsIn(end, begin);
            end = std::max(end, next);
        }
    }

    void AddCommentsIn(size_t begin, size_t end)
    {
        const std::string_view gap = std::string_view(text.Content()).substr(0, end);
        bool inRun = false;  // of line comments
        size_t runStart = 0; // lines
        size_t runEnd = 0;
        const auto endRun = [&] {
            if (inRun)
                Add(runStart, runEnd, Kind::Comment);
            inRun = false;
        };
        for (size_t at = begin; (at = gap.find('/', at)) != std::string_view::npos;) {
            const std::string_view rest = gap.substr(at);
            const size_t line = LineAt(at);
            if (rest.starts_with("//")) {
                if (inRun && line != runEnd + 1)
                    endRun();
                runStart = inRun ? runStart : line;
                inRun = true;
                at = std::min(gap.find('\n', at), gap.size());
                runEnd = line;
            } else if (rest.starts_with("/*")) {
                endRun();
                const size_t close = gap.find("*/", at + 2);
                at = close == std::string_view::npos ? gap.size() : close + 2;
                Add(line, LineAt(at), Kind::Comment);
            } else {
                ++at;
            }
        }
        endRun();
    }

    const Text& text;
    const resolve::Tokens tokens;
    std::vector<FoldingRange> folds;
};

Json JsonOf(const FoldingRange& fold)
{
    Json json = {{"startLine", fold.startLine}, {"endLine", fold.endLine}};
    if (fold.kind != Kind::Code)
        json["kind"] = fold.kind == Kind::Comment ? "comment" : "imports";
    return json;
}

} // namespace

std::vector<FoldingRange> FoldsOf(const Text& text)
{
    return Folds(text).All();
}

Json FoldingRanges(const TextDocumentParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    Json folds = Json::array();
    if (subject.IsSource())
        for (const FoldingRange& fold : FoldsOf(subject.Text()))
            folds.push_back(JsonOf(fold));
    return folds;
}

} // namespace wren::lsp
