#include "wren/symbols/FittingNames.h"

#include "resolve/Locals.h"
#include "symbols/store/Fuzzy.h"
#include "wren/symbols/IncludedFiles.h"
#include "wren/symbols/Keywords.h"
#include "wren/symbols/NamedSymbols.h"

#include <algorithm>
#include <unordered_set>

namespace wren {

namespace {

using Sort = TextPlace::Sort;
using tagging::Symbol;

constexpr size_t kMostSearched = 2000; // that letters are looked for in

class Collector {
public:
    Collector(const FittingQuestion& question, const std::function<void(const FittingName&)>& sink)
        : question(question), where(question.where), sink(sink),
          typed(question.place.text.substr(where.start, question.place.offset - where.start)), fuzzy(typed),
          limit(question.limits.results)
    {
    }

    bool Collect()
    {
        if (where.sort == Sort::Include)
            AddFiles();
        else if (where.sort != Sort::Nothing)
            AddNames();
        return more;
    }

private:
    void AddFiles()
    {
        for (const std::string& name : FilesToInclude(where, typed, question.workspace, question.place.path, limit + 1))
            Add({FittingName::Sort::File, name, nullptr, ""});
    }

    void AddNames()
    {
        ownClass = ClassAround();
        const resolve::Candidates near = Ask(question.place.offset, limit + 1);
        more = near.more;
        AddCandidates(near, false);
        AddKeywords();
        AddCandidates(near, true);
        if (typed.empty() || seen.size() >= limit)
            return;
        if (where.sort == Sort::Unqualified)
            AddOwnWithLetters();
        else
            AddWithLetters(Ask(where.start, kMostSearched));
    }

    resolve::Candidates Ask(size_t at, size_t results) const
    {
        resolve::Place place = question.place;
        place.offset = at;
        return question.resolver.Complete(place, {results, question.limits.cancel});
    }

    // Members that only the class itself uses come last elsewhere.
    bool IsClosed(const Symbol& symbol) const
    {
        const bool isOpen = symbol.access == Symbol::Access::None || symbol.access == Symbol::Access::Public;
        return !isOpen && symbol.scope != ownClass;
    }

    // The class of the member function around the place; "" for none.
    std::string ClassAround() const
    {
        const std::string_view before = question.place.text.substr(0, where.start);
        const auto line = static_cast<unsigned>(1 + std::ranges::count(before, '\n'));
        std::string scope;
        for (const Symbol& symbol : question.parsed.parsed->symbols)
            if (IsCallable(symbol.kind) && symbol.line <= line && line <= symbol.endLine)
                scope = symbol.scope;
        return scope;
    }

    void AddCandidates(const resolve::Candidates& candidates, bool closed)
    {
        for (const resolve::Candidate& each : candidates.found)
            if (IsClosed(each.symbol) == closed)
                AddSymbol(each.symbol, each.path);
    }

    void AddWithLetters(const resolve::Candidates& candidates)
    {
        for (const resolve::Candidate& each : candidates.found)
            if (fuzzy.KindOf(each.symbol.name) < symbols::kNoMatch)
                AddSymbol(each.symbol, each.path);
    }

    // Locals, and what this text declares: all others would be too many to look at.
    void AddOwnWithLetters()
    {
        const resolve::Tokens& tokens = question.parsed.tokens;
        if (tokens.Count() > 0)
            resolve::ForEachLocal(tokens, std::min(tokens.FirstFrom(where.start), tokens.Count() - 1),
                                  [&](const resolve::LocalName& local) {
                                      AddLocal(tokens[local.name], local.kind);
                                      return true;
                                  });
        for (const Symbol& symbol : question.parsed.parsed->symbols)
            if (symbol.scope.empty())
                AddIfLetters(symbol);
    }

    void AddLocal(const resolve::Token& token, tagging::SymbolKind kind)
    {
        Symbol symbol;
        symbol.name = token.text;
        symbol.line = token.line;
        symbol.kind = kind;
        if (token.offset < where.start)
            AddIfLetters(symbol);
    }

    void AddIfLetters(const Symbol& symbol)
    {
        if (fuzzy.KindOf(symbol.name) < symbols::kNoMatch && !symbol.name.starts_with("__anon"))
            AddSymbol(symbol, question.place.path);
    }

    void AddKeywords()
    {
        if (where.sort == Sort::Unqualified && !typed.empty())
            for (const std::string_view word : KeywordsOf(question.parsed.parsed->language))
                if (word.starts_with(typed) && word != typed)
                    Add({FittingName::Sort::Keyword, word, nullptr, ""});
    }

    void AddSymbol(const Symbol& symbol, std::string_view path)
    {
        Add({FittingName::Sort::Symbol, symbol.name, &symbol, path});
    }

    void Add(const FittingName& name)
    {
        if (seen.contains(std::string(name.name)))
            return;
        if (seen.size() >= limit) {
            more = true;
            return;
        }
        seen.emplace(name.name);
        sink(name);
    }

    const FittingQuestion& question;
    const TextPlace& where;
    const std::function<void(const FittingName&)>& sink;
    const std::string typed;
    const symbols::FuzzyPattern fuzzy;
    const size_t limit;
    std::string ownClass;
    std::unordered_set<std::string> seen;
    bool more = false;
};

} // namespace

bool ForEachFittingName(const FittingQuestion& question, const std::function<void(const FittingName&)>& sink)
{
    return Collector(question, sink).Collect();
}

} // namespace wren
