// Sources with few different names, so that names, scopes and paths meet again and again.
#pragma once

#include "tests/support/Sources.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

class RandomSources {
public:
    explicit RandomSources(unsigned seed) : random(seed) {}

    unsigned Below(unsigned count) { return static_cast<unsigned>(random() % count); }

    std::string Path()
    {
        constexpr const char* kDirectories[] = {"", "a/", "b/", "a/b/", "Z/", "a-b/"};
        return kDirectories[Below(std::size(kDirectories))] + std::string(1, static_cast<char>('a' + Below(6))) + ".c";
    }

    tagging::FileStamp Stamp() { return {Below(1000), static_cast<std::int64_t>(random()) - 5, random()}; }

    tagging::ParsedSource Source()
    {
        std::vector<tagging::Symbol> symbols(Below(8));
        for (tagging::Symbol& symbol : symbols)
            Fill(symbol);
        std::ranges::stable_sort(symbols, {}, &tagging::Symbol::line);
        std::vector<tagging::Include> includes(Below(3));
        for (tagging::Include& include : includes)
            include = {Word(), 1 + Below(50), Below(2) == 0};
        std::ranges::stable_sort(includes, {}, &tagging::Include::line);
        std::vector<std::string_view> mentions(Below(6));
        for (std::string_view& mention : mentions)
            mention = Word();
        tagging::ParsedSource source = SourceOf(std::move(symbols), std::move(includes), std::move(mentions));
        source.contentHash = random();
        source.language = static_cast<tagging::Language>(Below(4));
        return source;
    }

private:
    std::string_view Word()
    {
        constexpr std::string_view kWords[] = {"a",       "A",          "ab",   "aB",   "AB",       "abc",      "a_b_c",
                                               "get_a_b", "GetAB",      "b",    "a.h",  "x/a.h",    "y/b.h",    "b/c.c",
                                               "Base",    "n::Base<T>", "a::b", "a::B", "__anon1f", "list_head"};
        return kWords[Below(std::size(kWords))];
    }

    void Fill(tagging::Symbol& symbol)
    {
        symbol.name = Word();
        for (std::string_view tagging::Symbol::*text :
             {&tagging::Symbol::scope, &tagging::Symbol::type, &tagging::Symbol::signature, &tagging::Symbol::bases,
              &tagging::Symbol::templateParameters, &tagging::Symbol::target})
            symbol.*text = Below(3) == 0 ? Word() : std::string_view();
        symbol.line = 1 + Below(5);
        symbol.endLine = Below(2) == 0 ? 0 : symbol.line + Below(300);
        symbol.kind = static_cast<tagging::SymbolKind>(1 + Below(static_cast<unsigned>(tagging::kLastSymbolKind)));
        symbol.scopeKind = static_cast<tagging::SymbolKind>(symbol.scope.empty() ? 0 : Below(32));
        symbol.access = static_cast<tagging::Symbol::Access>(Below(4));
        for (bool tagging::Symbol::*flag :
             {&tagging::Symbol::isDefinition, &tagging::Symbol::isFileLocal, &tagging::Symbol::isStatic,
              &tagging::Symbol::isScopedEnum, &tagging::Symbol::isInline, &tagging::Symbol::isVirtual,
              &tagging::Symbol::isSpecialization, &tagging::Symbol::isUnknownToCtags})
            symbol.*flag = Below(2) == 0;
    }

    std::mt19937_64 random;
};
