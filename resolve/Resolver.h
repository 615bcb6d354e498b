// What the name at a place of a text means.
#pragma once

#include "resolve/How.h"
#include "resolve/ParsedTextPointer.h"
#include "resolve/Sources.h"
#include "symbols/store/Snapshot.h"
#include "tagging/SourceParser.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace resolve {

struct Place {
    std::string path;      // as in symbols::File, or absolute when the file is not in the index
    std::string_view text; // of the whole file; borrowed
    size_t offset = 0;     // bytes: at, in or directly after a name
    std::optional<tagging::Language> language = std::nullopt; // when an editor knows; see tagging::TextParser::Parse
};

struct Answer {
    symbols::Symbol symbol; // for an #include: only the file counts, line 1. Locals: 'file' is not in the snapshot
                            // when the text's file is not
    std::string path;       // of its file, as in symbols::File
    How how = How::Name;
    std::string reason; // for people: "member 'size' of 'Shape', the type of 's'"
    size_t entity = 0;  // the same for the declarations and definitions of one thing
    // What the place means most likely: the best answer, and what has its name and scope (overloads, alternatives of an
    // #if). When nothing is known but the name, all answers.
    bool isMeant = true;
    std::optional<size_t> offset = {}; // of a local's name in the text, in bytes

    bool IsFile() const { return symbol.kind == tagging::SymbolKind::None && symbol.name.empty(); } // of an #include
};

// Answers keep the parsed text that their symbols refer to; other symbols belong to the snapshot.
struct Answers {
    std::vector<Answer> found; // best first
    bool more = false;
    std::string name; // what was asked; "" when there is no name at the place
    ParsedTextPointer text;
};

struct Use { // one occurrence of a name
    enum class Role { Declaration, Definition, Call, Other, Comment };

    std::string path;
    unsigned line = 0;   // from 1
    unsigned column = 0; // bytes, from 1
    Role role = Role::Other;
};

struct Uses {
    std::vector<Use> found; // by path and line, the file of the place first
    bool more = false;
};

struct Candidate { // for completion
    symbols::Symbol symbol;
    std::string path;
    How how = How::Name;
};

struct Candidates {
    std::vector<Candidate> found; // nearest first; one for each name
    bool more = false;
    size_t start = 0; // bytes: where the typed part of the name begins
    ParsedTextPointer text;
};

// The texts of the last questions, already parsed, and what they include.
class ParsedTexts;
class KnownFiles;
class MeantThing;

// Stateless apart from what it borrows; any thread. Work is bounded: it ends in time for any text.
class Resolver {
public:
    // All must outlive it. With 'texts', several questions about the same text parse it once, also those to other
    // resolvers with the same 'texts'.
    Resolver(const symbols::Snapshot& snapshot, const Sources& sources, tagging::TextParser& parser,
             ParsedTexts* texts = nullptr)
        : snapshot(snapshot), sources(sources), parser(parser), texts(texts)
    {
    }

    // Definitions, or declarations if there are none. On a definition: its declaration, if there is one.
    Answers Definition(const Place& place, symbols::Limits limits) const;
    Answers Declaration(const Place& place, symbols::Limits limits) const; // the reverse
    Answers Meanings(const Place& place, symbols::Limits limits) const; // of either sort, ranked: for judging and hover

    // The type of a variable, of a member, of a function's result, behind a typedef: its body, or else its declaration.
    Answers TypeDefinition(const Place& place, symbols::Limits limits) const;

    // Classes derived from the class at the place, or methods that override the method there.
    Answers Implementations(const Place& place, symbols::Limits limits) const;

    // Occurrences of the name outside of comments and strings, but for those that provably mean something else. With a
    // place, a local's uses are those in its scope.
    Uses References(const Place& place, symbols::Limits limits) const;
    // The same, file by file: the text of the file, and its uses. Ends when the function returns false, and returns
    // whether there are more. InText: only those in the place's own text. AlsoComments: names in comments too, which
    // takes much longer; those of locals, and of large projects, are not complete.
    enum class Where { Everywhere, InText, AlsoComments };
    using UseSink = std::function<bool(std::string_view text, std::vector<Use> uses)>;
    bool ForEachUse(const Place& place, symbols::Limits limits, Where where, const UseSink& sink) const;
    Uses ReferencesOf(std::string_view name, symbols::Limits limits) const;

    Candidates Complete(const Place& place, symbols::Limits limits) const;

    // Learns what any question about the text needs: its symbols, where its includes lead, and what the nearest
    // included files declare. The next question is answered sooner, when texts are shared; nothing else depends on it.
    void ReadAhead(const Place& place) const;

    // The steps that led to the answer, a line each, for people who report a wrong one.
    std::string Explain(const Place& place) const;

private:
    enum class Wanted { Definition, Declaration, Either };

    ParsedTextPointer TextOf(const Place& place) const;
    KnownFiles* Known() const; // null without texts
    Answers AnswerTo(const Place& place, symbols::Limits limits, Wanted wanted) const;
    bool EachUseIn(const std::string& name, MeantThing& thing, symbols::FileNumber except, symbols::Limits limits,
                   Where where, const UseSink& sink) const;

    const symbols::Snapshot& snapshot;
    const Sources& sources;
    tagging::TextParser& parser;
    ParsedTexts* const texts;
};

} // namespace resolve
