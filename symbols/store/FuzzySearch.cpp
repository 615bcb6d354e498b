// The symbols whose names match a few typed letters best.

#include "symbols/store/Fuzzy.h"
#include "symbols/store/Names.h"
#include "symbols/store/View.h"

#include <algorithm>
#include <map>
#include <unordered_map>

namespace symbols {

namespace {

constexpr size_t kStepsBetweenChecks = 1024;

struct Query {
    FuzzyPattern name;
    FuzzyPattern scope; // empty: any
    FuzzyPattern path;  // empty: any

    static Query Of(std::string_view pattern)
    {
        if (const size_t colons = pattern.rfind("::"); colons != std::string_view::npos)
            return {FuzzyPattern(pattern.substr(colons + 2)), FuzzyPattern(pattern.substr(0, colons)),
                    FuzzyPattern("")};
        if (const size_t slash = pattern.rfind('/'); slash != std::string_view::npos)
            return {FuzzyPattern(pattern.substr(slash + 1)), FuzzyPattern(""), FuzzyPattern(pattern.substr(0, slash))};
        return {FuzzyPattern(pattern), FuzzyPattern(""), FuzzyPattern("")};
    }
};

struct Rank {
    int score;
    std::string_view name;
    bool operator<(const Rank& other) const // better
    {
        return score != other.score ? score > other.score : name < other.name;
    }
};

} // namespace

class View::FuzzySearch {
public:
    FuzzySearch(const View& view, std::string_view pattern, Limits limits)
        : view(view), query(Query::Of(pattern)), limits(limits)
    {
    }

    FuzzyMatches Run()
    {
        for (const Part& part : view.parts)
            if (!matches.more)
                LookIn(part);
        Fill();
        return std::move(matches);
    }

private:
    using Keys = std::vector<std::pair<const Part*, std::uint32_t>>;

    bool IsCancelled() { return limits.cancel != nullptr && limits.cancel->IsCancelled(); }

    void LookIn(const Part& part)
    {
        const std::uint64_t wanted = LettersOf(query.name.Letters());
        const std::uint64_t* const letters = part.segment->NameLetters();
        for (std::uint32_t i = 0; letters != nullptr && i < part.segment->NameCount(); i++) {
            if (i % kStepsBetweenChecks == 0 && IsCancelled()) {
                matches.more = true;
                return;
            }
            if ((letters[i] & wanted) == wanted)
                Try(part, i);
        }
    }

    void Try(const Part& part, std::uint32_t i)
    {
        const std::optional<std::uint32_t> key = part.segment->KeyOfName(i);
        const std::optional<std::string_view> name = key ? part.segment->KeyText(*key) : std::nullopt;
        const std::optional<int> score = name ? query.name.Score(*name) : std::nullopt;
        if (!score)
            return;
        const Rank rank{*score, *name};
        if (best.size() > limits.results && !(rank < std::prev(best.end())->first))
            return;
        if (HitsOf(part, *key, 1).empty())
            return;
        best[rank].emplace_back(&part, *key);
        if (best.size() > limits.results + 1)
            best.erase(std::prev(best.end()));
    }

    Hits HitsOf(const Part& part, std::uint32_t key, size_t count)
    {
        Hits hits;
        view.Gather(part, key, KeyList::Symbols,
                    query.scope.Letters().empty() && query.path.Letters().empty() ? count : SIZE_MAX, limits.cancel,
                    &hits);
        std::erase_if(hits, [this](const Hit& hit) { return !Fits(hit); });
        return hits;
    }

    bool Fits(const Hit& hit)
    {
        if (!query.path.Letters().empty())
            return query.path.Contains(view.PathOf(*hit.part, hit.file));
        Symbol symbol;
        return query.scope.Letters().empty() ||
               (view.Fill(*hit.part, hit.file, hit.value, &symbol) && query.scope.Contains(symbol.scope));
    }

    void Fill()
    {
        const size_t enough = limits.results < SIZE_MAX ? limits.results + 1 : limits.results;
        for (const auto& [rank, keys] : best) {
            if (matches.found.size() >= enough)
                break;
            Hits hits;
            for (const auto& [part, key] : keys)
                std::ranges::copy(HitsOf(*part, key, enough), std::back_inserter(hits));
            view.PutInOrder(&hits, 0);
            for (const Hit& hit : hits) {
                FuzzyMatch match;
                if (matches.found.size() >= enough || !view.Fill(*hit.part, hit.file, hit.value, &match.symbol))
                    continue;
                match.score = rank.score;
                match.positions = query.name.Positions(match.symbol.name);
                matches.found.push_back(std::move(match));
            }
        }
        if (matches.found.size() > limits.results) {
            matches.found.resize(limits.results);
            matches.more = true;
        }
    }

    const View& view;
    Query query;
    Limits limits;
    std::map<Rank, Keys> best; // one more than wanted
    FuzzyMatches matches;
};

FuzzyMatches View::Fuzzy(std::string_view pattern, Limits limits) const
{
    return FuzzySearch(*this, pattern, limits).Run();
}

} // namespace symbols
