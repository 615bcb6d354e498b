// All answers of a snapshot as one text: two indexes that hold the same answer the same.
#pragma once

#include "symbols/store/Snapshot.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Numbers of files differ between snapshots, so paths stand for them. Sizes on the disk, and times and inodes of files,
// which a copy of a tree has not in common with it, are left out.
class AnswersOf {
public:
    // 'words' are mentions to ask for, beside all names of symbols.
    explicit AnswersOf(const symbols::Snapshot& snapshot, const std::set<std::string>& words = {}) : snapshot(snapshot)
    {
        mentions.insert(words.begin(), words.end());
        Files();
        ByNames();
        ByScopes();
        ByLeaves();
        for (const std::string& word : mentions)
            Lines("mentions " + word, snapshot.FilesMentioning(word, {}));
    }

    const std::string& Text() const { return text; }

    static std::string Of(const symbols::SnapshotPointer& snapshot, const std::set<std::string>& words = {})
    {
        return snapshot == nullptr ? "no index\n" : AnswersOf(*snapshot, words).Text();
    }

    // The first lines that differ, for people; "" when none do.
    static std::string Difference(std::string_view one, std::string_view other)
    {
        if (one == other)
            return "";
        const size_t at = static_cast<size_t>(std::ranges::mismatch(one, other).in1 - one.begin());
        const auto around = [at](std::string_view all) {
            const size_t start = all.rfind('\n', at == 0 ? 0 : at - 1);
            return std::string(all.substr(start == std::string_view::npos ? 0 : start + 1, 600));
        };
        return "--- one\n" + around(one) + "\n--- the other\n" + around(other);
    }

private:
    using Files_ = std::vector<symbols::FileNumber>;

    std::string Path(symbols::FileNumber file) const { return std::string(snapshot.FileOf(file).path); }

    static std::string Number(auto value) { return std::to_string(static_cast<unsigned long long>(value)); }

    std::string Line(const symbols::Symbol& s) const
    {
        std::string line = Path(s.file) + ":" + Number(s.line) + "-" + Number(s.endLine);
        for (const std::string_view field :
             {s.name, s.scope, s.type, s.signature, s.bases, s.templateParameters, s.target})
            line += "|" + std::string(field);
        for (const auto value : {static_cast<int>(s.kind), static_cast<int>(s.scopeKind), static_cast<int>(s.access)})
            line += " " + std::to_string(value);
        line += " ";
        for (const bool is :
             {s.isDefinition, s.isFileLocal, s.isStatic, s.isScopedEnum, s.isInline, s.isVirtual, s.isSpecialization})
            line += is ? "1" : "0";
        return line;
    }
    std::string Line(const symbols::FuzzyMatch& match) const
    {
        std::string line = Number(match.score) + " at";
        for (const unsigned position : match.positions)
            line += " " + Number(position);
        return line + " " + Line(match.symbol);
    }
    std::string Line(const symbols::Include& include) const
    {
        return Path(include.file) + ":" + Number(include.line) + (include.isAngled ? " <" : " \"") +
               std::string(include.name);
    }

    template <class Items>
    void Lines(const std::string& question, const Items& items, bool more = false)
    {
        text += question + "\n";
        for (const auto& item : items)
            text += "    " + Line(item) + "\n";
        if (more)
            text += "    and more\n";
    }
    void Lines(const std::string& question, Files_ files)
    {
        std::vector<std::string> paths;
        for (const symbols::FileNumber file : files)
            paths.push_back(Path(file));
        std::ranges::sort(paths);
        text += question + "\n";
        for (const std::string& path : paths)
            text += "    " + path + "\n";
    }
    void Lines(const std::string& question, const symbols::Symbols& symbols)
    {
        Lines(question, symbols.found, symbols.more);
    }

    void Files()
    {
        const symbols::Snapshot::Size totals = snapshot.Totals();
        text += Number(totals.files) + " files, " + Number(totals.symbols) + " symbols" +
                (snapshot.IsDamaged() ? ", damaged" : "") + "\n";
        std::vector<symbols::FileNumber> all;
        snapshot.ForEachFile([&all](symbols::FileNumber number, const symbols::File&) {
            all.push_back(number);
            return true;
        });
        std::ranges::sort(all, {}, [this](symbols::FileNumber number) { return Path(number); });
        for (const symbols::FileNumber number : all)
            OneFile(number, snapshot.FileOf(number));
    }
    void OneFile(symbols::FileNumber number, const symbols::File& file)
    {
        const std::string path(file.path);
        text += "file " + path + " " + Number(file.stamp.size) + " " + Number(file.contentHash) + " " +
                Number(file.language) + (file.isSystem ? " system" : "") + (file.isOpen ? " open" : "") + "\n";
        const auto found = snapshot.FindFile(path);
        text += !found ? "    is not found\n" : *found != number ? "    is found as another\n" : "";
        const symbols::Symbols symbols = snapshot.OfFile(number);
        Lines("symbols", symbols);
        const std::vector<symbols::Include> includes = snapshot.IncludesOf(number);
        Lines("includes", includes);
        for (const symbols::Symbol& symbol : symbols.found)
            Remember(symbol);
        for (const symbols::Include& include : includes)
            leaves.insert(Leaf(include.name));
        leaves.insert(Leaf(path));
    }
    static std::string Leaf(std::string_view path) { return std::string(path.substr(path.rfind('/') + 1)); }

    void Remember(const symbols::Symbol& symbol)
    {
        names.emplace(symbol.name);
        mentions.emplace(symbol.name);
        scopes.emplace(symbol.scope);
        for (std::string_view bases = symbol.bases; !bases.empty();) {
            const size_t end = std::min(bases.find(','), bases.size());
            const std::string_view base = bases.substr(0, end);
            classes.emplace(base.substr(base.rfind(':') + 1));
            bases.remove_prefix(std::min(end + 1, bases.size()));
        }
    }

    void ByNames()
    {
        std::set<std::string> prefixes, patterns;
        for (const std::string& name : names) {
            Lines("name " + name, snapshot.ByName(name, {}));
            Lines("two of the name " + name, snapshot.ByName(name, {.results = 2}));
            prefixes.insert(name.substr(0, 1));
            prefixes.insert(Upper(name.substr(0, 2)));
            prefixes.insert(name.substr(0, 4));
            patterns.insert(EveryOther(name));
        }
        for (const std::string& prefix : prefixes) {
            Lines("prefix " + prefix, snapshot.ByPrefix(prefix, {}));
            Lines("three of the prefix " + prefix, snapshot.ByPrefix(prefix, {.results = 3}));
        }
        for (const std::string& pattern : patterns) {
            Fuzzy(pattern, 1000);
            Fuzzy(pattern, 4);
        }
    }
    static std::string Upper(std::string word)
    {
        std::ranges::transform(word, word.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
        return word;
    }
    static std::string EveryOther(const std::string& name)
    {
        std::string letters;
        for (size_t i = 0; i < name.size() && letters.size() < 6; i += 2)
            letters += name[i];
        return letters;
    }
    void Fuzzy(const std::string& pattern, size_t results)
    {
        const symbols::FuzzyMatches matches = snapshot.Fuzzy(pattern, {.results = results});
        Lines(Number(results) + " for the letters " + pattern, matches.found, matches.more);
    }

    void ByScopes()
    {
        for (const std::string& scope : scopes) {
            Lines("scope " + scope, snapshot.InScope(scope, {}));
            Lines("one of the scope " + scope, snapshot.InScope(scope, {.results = 1}));
            if (!scope.empty())
                Fuzzy(scope.substr(scope.rfind(':') + 1) + "::a", 5);
        }
        for (const std::string& base : classes)
            Lines("derived from " + base, snapshot.DerivedFrom(base, {}));
    }

    void ByLeaves()
    {
        for (const std::string& leaf : leaves) {
            Lines("files called " + leaf, snapshot.FilesWithLeaf(leaf));
            Lines("includes of " + leaf, snapshot.IncludesOfLeaf(leaf, {}));
            Fuzzy(leaf + "/f", 5);
        }
    }

    const symbols::Snapshot& snapshot;
    std::set<std::string> names, mentions, scopes, classes, leaves;
    std::string text;
};
