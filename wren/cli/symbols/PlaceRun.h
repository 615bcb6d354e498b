// A run of a command that asks about places: definition, references and so on.
#pragma once

#include "base/Result.h"
#include "wren/cli/symbols/PlaceLines.h"
#include "wren/cli/symbols/SymbolWords.h"
#include "wren/core/ProgramOutput.h"

#include <functional>
#include <string>

namespace wren {

class AskedPlace;

// A question that can be asked about a place.
struct PlaceQuestion {
    std::string nothing; // the message's beginning when there is no answer: "no definition of "
    std::function<PlaceLines(const AskedPlace& place, symbols::Limits limits)> ask;
};

// Answers on standard output. Used once.
class PlaceRun {
public:
    PlaceRun(const PlaceQuestion& question, const SymbolWords& words); // borrowed

    // Each returns the exit status.
    int Answer(const std::string& place);
    int AnswerInput();                             // a place for each line of standard input
    int AnswerReferences(const std::string& name); // of a name instead of a place

private:
    base::Result<PlaceLines> Ask(const std::string& place);
    std::string WhyNothing(const std::string& name, const std::string& place) const;
    int Print(const PlaceLines& lines, const std::string& whyNothing);
    bool Write(const PlaceLine& line);
    bool WriteAnswerToInput(const std::string& place, const base::Result<PlaceLines>& lines);
    bool WriteLines(const PlaceLines& lines);

    const PlaceQuestion& question;
    const SymbolWords& words;
    ProgramOutput output;
    const bool colour;
    CurrentIndexes indexes;
    const std::string current; // directory
};

} // namespace wren
