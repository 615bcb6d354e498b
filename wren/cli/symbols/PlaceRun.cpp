#include "wren/cli/symbols/PlaceRun.h"

#include "base/ExitStatus.h"
#include "resolve/Tokens.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/symbols/AskedPlace.h"
#include "wren/cli/symbols/SymbolRow.h"
#include "wren/core/TerminalText.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>

namespace wren {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kAnswers = "the answers";

Json AnswerJson(const std::string& place, const base::Result<PlaceLines>& lines)
{
    Json json{{"place", place}};
    if (!lines) {
        json["error"] = lines.Failure().Message();
        return json;
    }
    json["name"] = lines->name;
    json["answers"] = Json::array();
    for (const PlaceLine& line : lines->found)
        json["answers"].push_back(JsonOf(line));
    json["more"] = lines->more;
    return json;
}

} // namespace

PlaceRun::PlaceRun(const PlaceQuestion& question, const SymbolWords& words)
    : question(question), words(words), colour(WantsColour(output)), indexes(words),
      current(std::filesystem::current_path())
{
}

int PlaceRun::Answer(const std::string& place)
{
    const base::Result<PlaceLines> lines = Ask(place);
    if (lines)
        return Print(*lines, WhyNothing(lines->name, place));
    Complain(lines.Failure().Message());
    return base::exit_status::kUnusable;
}

int PlaceRun::AnswerInput()
{
    int status = base::exit_status::kNothing;
    for (std::string place; std::getline(std::cin, place);) {
        const base::Result<PlaceLines> lines = Ask(place);
        if (lines && !lines->found.empty())
            status = base::exit_status::kDone;
        if (!WriteAnswerToInput(place, lines))
            return base::exit_status::kUnusable;
    }
    return status;
}

int PlaceRun::AnswerReferences(const std::string& name)
{
    const base::Result<CurrentIndex*> index = indexes.ForDirectory();
    if (!index) {
        Complain(index.Failure().Message());
        return base::exit_status::kUnusable;
    }
    return Print(ReferencesOf(name, (*index)->Workspace(), {words.limit}), question.nothing + "\"" + name + "\"");
}

base::Result<PlaceLines> PlaceRun::Ask(const std::string& text)
{
    const base::Result<std::unique_ptr<AskedPlace>> place = AskedPlace::At(text, indexes);
    if (!place)
        return place.Failure();
    PlaceLines lines = question.ask(**place, {words.limit});
    if (lines.found.empty())
        lines.name = (*place)->Name();
    return lines;
}

std::string PlaceRun::WhyNothing(const std::string& name, const std::string& place) const
{
    if (name.empty())
        return NoNameAt(place);
    if (resolve::IsKeyword(name))
        return "\"" + name + "\" at " + place + " is a keyword";
    return question.nothing + "\"" + name + "\" at " + place;
}

int PlaceRun::Print(const PlaceLines& lines, const std::string& whyNothing)
{
    if (lines.found.empty()) {
        Complain(whyNothing);
        return base::exit_status::kNothing;
    }
    if (!WriteLines(lines))
        return base::exit_status::kUnusable;
    if (lines.more)
        Complain("these are the first " + std::to_string(lines.found.size()) + "; there may be more (--limit)");
    return base::exit_status::kDone;
}

bool PlaceRun::WriteLines(const PlaceLines& lines)
{
    for (const PlaceLine& line : lines.found)
        if (!Write(line))
            return false;
    return true;
}

bool PlaceRun::Write(const PlaceLine& line)
{
    if (words.json)
        return WriteAsIsOrComplain(output, JsonLine(JsonOf(line)), kAnswers);
    const bool terminal = output.IsTerminal();
    const std::string path = ShownPath(line.path, current);
    const std::string place = ShownPlace(terminal ? ForTerminal(path) : path, line.line, line.column, colour);
    return WriteAsIsOrComplain(output, place + ": " + (terminal ? ForTerminal(line.source) : line.source) + "\n",
                               kAnswers);
}

// An empty line ends the answer, or the answer is one line of JSON.
bool PlaceRun::WriteAnswerToInput(const std::string& place, const base::Result<PlaceLines>& lines)
{
    if (words.json)
        return WriteAsIsOrComplain(output, JsonLine(AnswerJson(place, lines)), kAnswers);
    if (!lines)
        Complain(lines.Failure().Message());
    return (!lines || WriteLines(*lines)) && WriteAsIsOrComplain(output, "\n", kAnswers);
}

} // namespace wren
