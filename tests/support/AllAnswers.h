// Everything that a snapshot answers, as text: two snapshots of the same files must give the same text.
#pragma once

#include "symbols/store/Snapshot.h"

#include <set>
#include <string>
#include <string_view>

class AllAnswers {
public:
    explicit AllAnswers(const symbols::Snapshot& snapshot) : snapshot(snapshot)
    {
        snapshot.ForEachFile([this](symbols::FileNumber number, const symbols::File& file) {
            AddFile(number, file);
            return true;
        });
        for (const std::string& word : words)
            AddWord(word);
        const auto totals = snapshot.Totals();
        Add("totals", std::to_string(totals.files) + ' ' + std::to_string(totals.symbols));
    }

    const std::string& Text() const { return text; }

private:
    void Add(std::string_view what, std::string_view value)
    {
        text.append(what).append(": ").append(value).append("\n");
    }

    std::string PathOf(symbols::FileNumber file) const { return std::string(snapshot.FileOf(file).path); }

    std::string TextOf(const symbols::Symbol& symbol) const
    {
        std::string out =
            PathOf(symbol.file) + ':' + std::to_string(symbol.line) + '-' + std::to_string(symbol.endLine);
        for (const std::string_view each : {symbol.name, symbol.scope, symbol.type, symbol.signature, symbol.bases,
                                            symbol.templateParameters, symbol.target})
            out.append("|").append(each);
        for (const int each :
             {int(symbol.kind), int(symbol.scopeKind), int(symbol.access), int(symbol.isDefinition),
              int(symbol.isFileLocal), int(symbol.isStatic), int(symbol.isScopedEnum), int(symbol.isInline),
              int(symbol.isVirtual), int(symbol.isSpecialization), int(symbol.isUnknownToCtags)})
            out += ' ' + std::to_string(each);
        return out;
    }

    std::string TextOf(const symbols::Symbols& symbols) const
    {
        std::string out;
        for (const symbols::Symbol& symbol : symbols.found)
            out += "\n  " + TextOf(symbol);
        return out + (symbols.more ? "\n  more" : "");
    }

    std::string TextOf(const symbols::Include& include) const
    {
        return "\n  " + PathOf(include.file) + ':' + std::to_string(include.line) + (include.isAngled ? " <" : " \"") +
               std::string(include.name);
    }

    void AddFile(symbols::FileNumber number, const symbols::File& file)
    {
        Add("file", file.path);
        Add("stamp", std::to_string(file.stamp.size) + ' ' + std::to_string(file.stamp.modified) + ' ' +
                         std::to_string(file.stamp.inode) + ' ' + std::to_string(file.contentHash) + ' ' +
                         std::to_string(int(file.language)) + (file.isSystem ? " system" : "") +
                         (file.isOpen ? " open" : ""));
        Add("found again", snapshot.FindFile(file.path) == number ? "yes" : "no");
        const symbols::Symbols symbols = snapshot.OfFile(number);
        Add("symbols", TextOf(symbols));
        for (const symbols::Symbol& symbol : symbols.found)
            for (const std::string_view each : {symbol.name, symbol.scope, symbol.bases})
                words.insert(std::string(each));
        for (const symbols::Include& include : snapshot.IncludesOf(number)) {
            Add("include", TextOf(include));
            words.insert(std::string(LeafOf(include.name)));
        }
        words.insert(std::string(LeafOf(file.path)));
        Add("text", snapshot.OpenText(number).value_or("(closed)"));
    }

    void AddWord(const std::string& word)
    {
        Add("word", word);
        for (const size_t limit : {size_t(0), size_t(1), size_t(3), size_t(1000)}) {
            const symbols::Limits limits = {limit, nullptr};
            Add("by name", TextOf(snapshot.ByName(word, limits)));
            Add("members", TextOf(snapshot.InScope(word, limits)));
            Add("derived", TextOf(snapshot.DerivedFrom(word, limits)));
            for (const size_t length : {size_t(1), word.size() / 2, word.size()})
                Add("by prefix", TextOf(snapshot.ByPrefix(std::string_view(word).substr(0, length), limits)));
            for (const symbols::Include& include : snapshot.IncludesOfLeaf(word, limits))
                Add("included", TextOf(include));
            for (const symbols::FileNumber file : snapshot.FilesMentioning(word, limits))
                Add("mentioned", PathOf(file));
            AddFuzzy(word, limits);
        }
        for (const symbols::FileNumber file : snapshot.FilesWithLeaf(word))
            Add("leaf", PathOf(file));
    }

    void AddFuzzy(const std::string& word, symbols::Limits limits)
    {
        const std::string twoLetters = word.substr(0, 1) + word.substr(word.size() / 2, 1);
        for (const std::string& pattern : {word, twoLetters, "a::" + twoLetters, "b/" + twoLetters}) {
            const symbols::FuzzyMatches matches = snapshot.Fuzzy(pattern, limits);
            for (const symbols::FuzzyMatch& match : matches.found)
                Add("fuzzy", std::to_string(match.score) + ' ' + TextOf(match.symbol));
            Add("fuzzy", matches.more ? "more" : "all");
        }
    }

    static std::string_view LeafOf(std::string_view path) { return path.substr(path.rfind('/') + 1); }

    const symbols::Snapshot& snapshot;
    std::set<std::string> words;
    std::string text;
};
