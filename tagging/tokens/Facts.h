// What one pass over a source finds without understanding its declarations: names, includes, signs of a language.
#pragma once

#include "tagging/tokens/NameSet.h"

#include <string_view>
#include <vector>

namespace tagging {

// All texts are parts of the source.
struct Facts {
    struct Include {
        std::string_view name; // between the delimiters; of an @import, its path with dots
        unsigned line = 0;
        enum class Form : char { Quoted, Angled, Module } form = Form::Quoted;
    };
    struct Using {
        std::string_view what; // "std::vector": as written between "using" and ";", "namespace" left out
        unsigned line = 0;     // of the "using"
    };
    struct Define {
        std::string_view name;
        std::string_view parameters; // "(a, b)"; "" for none, or when they go on in the next line
        unsigned line = 0;
    };

    std::vector<std::string_view> names;             // once each, without reserved words
    std::vector<std::string_view> cplusplusKeywords; // the same of those that are names in C: "new", "class"
    std::vector<Include> includes;
    std::vector<Using> usings;
    std::vector<Define> defines; // in all branches of conditions

    bool hasObjectiveC = false;  // "@interface", "@implementation", "@protocol" or "@class" in code
    bool mayBeCplusplus = false; // a reason to ask IsCplusplus()
};

// Made for speed: everything is found in one pass, several hundred megabytes a second. Reads any bytes. Comments and
// strings are left out; a string that is not closed ends with its line. Tokens are those of SourceTokens, except that
// a word with a line splice inside is two names.
class FactFinder {
public:
    Facts Find(std::string_view text); // the result borrows the text

private:
    class Scan;
    NameSet known; // keeps its room from text to text
};

} // namespace tagging
