// The symbols whose names match a few typed letters best.

#include "symbols/store/Fuzzy.h"
#include "symbols/store/FuzzyNarrowing.h"
#include "symbols/store/View.h"

#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <tuple>

namespace symbols {

namespace {

constexpr std::uint32_t kFewNames = 20'000;
constexpr std::uint32_t kCollected = 256; // names at once

struct Query {
    std::string_view name;
    FuzzyNarrowing::By by = FuzzyNarrowing::By::Nothing;
    std::string_view within = {};

    static Query Of(std::string_view pattern)
    {
        if (const size_t colons = pattern.rfind("::"); colons != std::string_view::npos)
            return {pattern.substr(colons + 2), FuzzyNarrowing::By::Scope, pattern.substr(0, colons)};
        if (const size_t slash = pattern.rfind('/'); slash != std::string_view::npos)
            return {pattern.substr(slash + 1), FuzzyNarrowing::By::Path, pattern.substr(0, slash)};
        return {pattern};
    }
};

struct Rank { // smaller is better
    int kind;
    bool isSystem; // among equal kinds, the project's names come first
    size_t length;
    std::string_view name;

    auto operator<=>(const Rank&) const = default;
    int Score() const { return ((kNoMatch - kind) * 2 + !isSystem) * 256 - static_cast<int>(length); }
};

} // namespace

// Looks through the names by length. The more good matches it has, the better a name must be to come in, and the more
// names are ruled out by their traits.
class View::FuzzySearch {
public:
    FuzzySearch(const View& view, std::string_view pattern, Limits limits)
        : view(view), query(Query::Of(pattern)), pattern(query.name), limits(limits),
          narrowing(query.by, query.within, limits.cancel)
    {
    }

    FuzzyMatches Run()
    {
        if (pattern.IsEmpty() && query.within.empty())
            return {};
        for (const Part& part : view.parts) {
            if (part.isSystem && !limits.withSystem)
                continue;
            narrowing.Enter(part);
            if (!LookInNarrowed(part))
                LookIn(part);
        }
        matches.more = IsCancelled();
        Fill();
        return std::move(matches);
    }

private:
    bool IsCancelled() const { return limits.cancel != nullptr && limits.cancel->IsCancelled(); }

    // The worst kind in which a name of this length comes in.
    int WorstKind(const Part& part, size_t length) const
    {
        if (best.size() <= limits.results)
            return kAnywhere;
        const Rank& last = std::prev(best.end())->first;
        return std::tuple(part.isSystem, length) > std::tuple(last.isSystem, last.length) ? last.kind - 1 : last.kind;
    }

    bool LookInNarrowed(const Part& part)
    {
        const std::optional<std::vector<TextNumber>> names = narrowing.Names();
        for (size_t i = 0; names && i < names->size(); i++) {
            const std::optional<std::string_view> name = part.segment->Text((*names)[i]);
            const int kind = name ? pattern.KindOf(*name) : kNoMatch;
            const auto key = kind < kNoMatch ? part.segment->FindKey(*name) : std::nullopt;
            if (key)
                Take(part, *key, kind);
            if (i % kStepsBetweenChecks == 0 && IsCancelled())
                break;
        }
        return names.has_value();
    }

    void LookIn(const Part& part)
    {
        const bool hasBeginnings = LookAtBeginnings(part);
        for (const Segment::FuzzyNames& names : part.segment->AllFuzzyNames()) {
            const int worst = WorstKind(part, names.length);
            if (IsCancelled() || worst < (hasBeginnings ? kBeginning + 1 : kWhole))
                return;
            if (names.count > 0 && names.length >= std::min(pattern.Letters().size(), kLongestFuzzy))
                LookAtLength(part, names, hasBeginnings);
        }
    }

    // Names that begin with the pattern are the best ones. Where they are few, looking at them first rules out most
    // others. False when they are many: then they are found soon anyway.
    bool LookAtBeginnings(const Part& part)
    {
        const Segment& segment = *part.segment;
        const std::uint32_t from = segment.FirstNameFrom(pattern.Letters());
        const std::uint32_t to = segment.NameAfter(pattern.Letters());
        if (pattern.IsEmpty() || to - from > kFewNames)
            return false;
        for (std::uint32_t i = from; i < to; i++) {
            const std::optional<std::uint32_t> key = segment.KeyOfName(i);
            const std::optional<std::string_view> name = key ? segment.KeyText(*key) : std::nullopt;
            if (const int kind = name ? pattern.KindOf(*name) : kNoMatch; kind <= kBeginning)
                Take(part, *key, kind);
        }
        return true;
    }

    // Few names have all letters. They are collected first, so that their texts come from memory while others are
    // looked at.
    void LookAtLength(const Part& part, const Segment::FuzzyNames& names, bool hasBeginnings)
    {
        static_assert(kCollected <= kStepsBetweenChecks);
        const NameTraits* const traits = part.segment->TraitsOf(names);
        std::array<std::uint32_t, kCollected> collected;
        for (std::uint32_t from = 0; from < names.count && traits != nullptr; from += kCollected) {
            if (IsCancelled())
                return;
            const std::uint32_t to = std::min(names.count, from + kCollected);
            size_t count = 0;
            for (std::uint32_t i = from; i < to; i++) {
                collected[count] = i;
                count += pattern.HasLetters(traits[i]) ? 1 : 0;
            }
            if (count > 0 && !LookAtNames(part, names, traits, {collected.data(), count}, hasBeginnings))
                return;
        }
    }

    // False when the segment is damaged.
    bool LookAtNames(const Part& part, const Segment::FuzzyNames& names, const NameTraits* traits,
                     std::span<const std::uint32_t> collected, bool hasBeginnings)
    {
        constexpr size_t kAhead = 8;
        const char* const texts = part.segment->TextsOf(names);
        int worst = WorstKind(part, names.length);
        for (size_t at = 0; at < collected.size() && texts != nullptr; at++) {
            if (at + kAhead < collected.size())
                __builtin_prefetch(texts + collected[at + kAhead] * names.length);
            const std::uint32_t i = collected[at];
            // Where any order of breaks will do, the traits say little, and the name itself rules out more.
            const bool nameFirst = worst == kAnywhere;
            if (!nameFirst && !pattern.ChancesOf(traits[i], worst).Any())
                continue;
            const std::string_view name(texts + i * names.length, names.length);
            if (nameFirst && !pattern.Contains(name))
                continue;
            const int kind = pattern.KindOf(name, pattern.ChancesOf(traits[i], worst));
            if (kind > worst || kind == kNoMatch || (hasBeginnings && kind <= kBeginning))
                continue;
            if (const auto key = part.segment->KeyOfFuzzy(names.first + i))
                Take(part, *key, kind);
            worst = WorstKind(part, names.length);
        }
        return texts != nullptr;
    }

    void Take(const Part& part, std::uint32_t key, int kind)
    {
        const std::string_view name = part.segment->KeyText(key).value_or("");
        const Rank rank = {kind, part.isSystem, std::min(name.size(), kLongestFuzzy), name};
        if (best.size() > limits.results && !(rank <= std::prev(best.end())->first))
            return;
        Hits hits = HitsOf(part, key);
        if (hits.empty())
            return;
        Hits& all = best[rank];
        all.insert(all.end(), hits.begin(), hits.end());
        if (best.size() > limits.results + 1)
            best.erase(std::prev(best.end()));
    }

    Hits HitsOf(const Part& part, std::uint32_t key)
    {
        const size_t enough = limits.results < SIZE_MAX ? limits.results + 1 : limits.results;
        Hits hits;
        if (query.by == FuzzyNarrowing::By::Nothing) {
            view.Gather(part, key, KeyList::Symbols, enough, limits.cancel, &hits);
            return hits;
        }
        view.Gather(part, key, KeyList::Symbols, SIZE_MAX, limits.cancel, &hits);
        std::erase_if(hits, [this](const Hit& hit) { return !narrowing.Includes(hit.file, hit.value); });
        return hits;
    }

    void Fill()
    {
        for (auto& [rank, hits] : best) {
            view.PutInOrder(&hits, 0);
            for (const Hit& hit : hits) {
                if (matches.found.size() >= limits.results) {
                    matches.more = true;
                    return;
                }
                FuzzyMatch match;
                if (!view.Fill(*hit.part, hit.file, hit.value, &match.symbol))
                    continue;
                match.score = rank.Score();
                match.positions = pattern.Positions(match.symbol.name);
                matches.found.push_back(std::move(match));
            }
        }
    }

    const View& view;
    Query query;
    FuzzyPattern pattern;
    Limits limits;
    FuzzyNarrowing narrowing;
    std::map<Rank, Hits> best; // one name more than wanted
    FuzzyMatches matches;
};

FuzzyMatches View::Fuzzy(std::string_view pattern, Limits limits) const
{
    return FuzzySearch(*this, pattern, limits).Run();
}

} // namespace symbols
