// What one question sees: the snapshot, with the text that is asked about in place of its file.
#pragma once

#include "resolve/Conditions.h"
#include "resolve/Distances.h"
#include "resolve/ParsedText.h"
#include "symbols/store/Snapshot.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace resolve {

using symbols::FileNumber;
using symbols::Symbol;
using symbols::SymbolKind;

class Sources;

// For one question, on one thread.
class World {
public:
    World(const symbols::Snapshot& snapshot, const Sources& sources, ParsedTextPointer text, symbols::Limits limits,
          KnownFiles* known); // 'known' may be null

    // Of the text when its file is not in the snapshot.
    static constexpr FileNumber kNewFile = UINT32_MAX;

    const ParsedText& Text() const { return *text; }
    FileNumber TextFile() const { return textFile; }
    const std::vector<Symbol>& OwnSymbols() const { return own; }
    const symbols::Snapshot& Index() const { return snapshot; }

    // All symbols with that name. The reference is valid as long as this.
    const std::vector<Symbol>& Named(std::string_view name);
    std::vector<Symbol> InScope(std::string_view scope);
    FileSymbolsPointer SymbolsOf(FileNumber file) { return known.SymbolsOf(snapshot, file); }

    int Distance(FileNumber file) { return file == textFile ? 0 : distances.Of(file); }
    Distances& Files() { return distances; }
    std::string_view PathOf(FileNumber file);
    bool IsHeader(FileNumber file) { return IsHeaderPath(PathOf(file)); }
    // C does not mean what a header of C++ declares.
    bool IsOtherLanguage(const Symbol& symbol);
    bool IsIncluded(FileNumber file);
    bool IsFileLocalElsewhere(const Symbol& symbol);

    // Whether a compiler reads the line of a file. Files beyond the first ones that are asked about are not read.
    Branch BranchAt(FileNumber file, unsigned line);

    // The scope in which the symbol's name is visible: without unnamed and inline namespaces, for an enumerator that of
    // its enum, for the members of an unnamed union that of the class around it.
    std::string VisibleScope(const Symbol& symbol);
    std::string VisibleScope(std::string_view scope); // of a class or a namespace

    // False when the question has cost too much, or is cancelled. Then answers may be incomplete.
    bool Goes();

    void Note(const std::string& line); // what was found out, for people
    std::string Notes() const { return notes; }

private:
    Conditions ConditionsOf(FileNumber file);
    bool IsTransparent(std::string_view scope, std::string_view part);

    const symbols::Snapshot& snapshot;
    const Sources& sources;
    const ParsedTextPointer text;
    const symbols::Limits limits;
    FileNumber textFile = kNewFile;
    std::vector<Symbol> own;
    KnownFiles forThis; // when nothing is shared with other questions
    KnownFiles& known;
    Distances distances;
    std::map<std::string, std::vector<Symbol>, std::less<>> named;
    std::map<std::string, std::string, std::less<>> visible;
    std::map<FileNumber, Conditions> conditions;
    size_t steps = 0;
    std::string notes;
};

} // namespace resolve
