#include "wren/core/Preferences.h"

#include "wren/core/KeyLines.h"
#include "wren/core/SettingsStore.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <system_error>

namespace wren {

namespace {

using Values = PreferenceValues;

// A value's form in its line: 'read' parses it or returns the reason for a failure; 'written' formats it.
struct Form {
    const char* name;
    std::string (*read)(const std::string& text, Values* values); // "" when it is valid
    std::string (*written)(const Values& values);
};

std::string Quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

// Words and their meanings

template <typename T>
struct Word {
    const char* text;
    T value;
};

constexpr Word<bool> kSwitch[] = {{"on", true}, {"off", false}};
constexpr Word<Values::Colours> kColours[] = {
    {"desktop", Values::Colours::Desktop}, {"light", Values::Colours::Light}, {"dark", Values::Colours::Dark}};
constexpr Word<Values::LookupClick> kClicks[] = {{"alt", Values::LookupClick::Alt},
                                                 {"control", Values::LookupClick::Control}};
constexpr Word<Values::Completion> kCompletions[] = {{"both", Values::Completion::Both},
                                                     {"plugin", Values::Completion::Plugin},
                                                     {"editor", Values::Completion::Editor},
                                                     {"none", Values::Completion::None}};
constexpr Word<Values::KeepTags> kKeeps[] = {
    {"never", Values::KeepTags::Never}, {"present", Values::KeepTags::Present}, {"always", Values::KeepTags::Always}};
constexpr Word<Values::Modifier> kModifiers[] = {
    {"control", Values::Modifier::Control}, {"alt", Values::Modifier::Alt}, {"super", Values::Modifier::Super}};

template <typename T, size_t N>
std::string ReadWord(const Word<T> (&words)[N], const std::string& text, T* value)
{
    std::string known;
    for (const Word<T>& word : words) {
        if (text == word.text) {
            *value = word.value;
            return "";
        }
        known += (known.empty() ? "" : ", ") + std::string(word.text);
    }
    return Quoted(text) + " is none of " + known;
}

template <typename T, size_t N>
std::string WordFor(const Word<T> (&words)[N], T value)
{
    return std::find_if(words, words + N, [&](const Word<T>& word) { return word.value == value; })->text;
}

// Single values

std::string ReadFont(const std::string& text, Values* values)
{
    if (std::any_of(text.begin(), text.end(), [](unsigned char c) { return c < ' ' || c == 0x7f; }))
        return "no font's name has control characters";
    values->font = text;
    return "";
}

std::string ReadNumber(const std::string& text, int least, int most, int* value)
{
    int number = 0;
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (problem != std::errc() || end != text.data() + text.size() || number < least || number > most)
        return Quoted(text) + " is no number from " + std::to_string(least) + " to " + std::to_string(most);
    *value = number;
    return "";
}

template <bool Values::*kMember>
std::string ReadSwitch(const std::string& text, Values* values)
{
    return ReadWord(kSwitch, text, &(values->*kMember));
}

template <bool Values::*kMember>
std::string WrittenSwitch(const Values& values)
{
    return WordFor(kSwitch, values.*kMember);
}

// The keys may have been read before.
std::string ReadJumps(const std::string& text, Values* values)
{
    const bool before = values->HasMeaningKeys();
    std::string problem = ReadSwitch<&Values::jumpsByMeaning>(text, values);
    values->keys = WithDefaults(values->keys, before, values->HasMeaningKeys());
    return problem;
}

// Modifiers

constexpr Word<Values::Modifier Values::*> kRoles[] = {
    {"command", &Values::command}, {"control", &Values::control}, {"option", &Values::option}};

std::string ReadModifiers(const std::string& text, Values* values)
{
    Values read;
    for (const std::string& word : SplitAtBlanks(text)) {
        const size_t equals = std::min(word.find('='), word.size());
        Values::Modifier Values::*role = nullptr;
        std::string problem = ReadWord(kRoles, word.substr(0, equals), &role);
        if (problem.empty())
            problem = ReadWord(kModifiers, word.substr(std::min(equals + 1, word.size())), &(read.*role));
        if (!problem.empty())
            return problem;
    }
    if (read.command == read.control || read.control == read.option || read.option == read.command)
        return "two of command, control and option are the same key";
    values->command = read.command;
    values->control = read.control;
    values->option = read.option;
    return "";
}

std::string WrittenModifiers(const Values& values)
{
    std::string text;
    for (const auto& [name, role] : kRoles)
        text += (text.empty() ? "" : " ") + std::string(name) + "=" + WordFor(kModifiers, values.*role);
    return text;
}

const Form kForms[] = {
    {"WrenFont", ReadFont, [](const Values& values) { return values.font; }},
    {"WrenFontSize",
     [](const std::string& text, Values* values) {
         return ReadNumber(text, Values::kSmallestFont, Values::kLargestFont, &values->fontSize);
     },
     [](const Values& values) { return std::to_string(values.fontSize); }},
    {"WrenTabWidth",
     [](const std::string& text, Values* values) {
         return ReadNumber(text, Values::kNarrowestTab, Values::kWidestTab, &values->tabWidth);
     },
     [](const Values& values) { return std::to_string(values.tabWidth); }},
    {"WrenIndentWithTabs", ReadSwitch<&Values::indentsWithTabs>, WrittenSwitch<&Values::indentsWithTabs>},
    {"WrenWrapLines", ReadSwitch<&Values::wrapsLines>, WrittenSwitch<&Values::wrapsLines>},
    {"WrenShowBlanks", ReadSwitch<&Values::showsBlanks>, WrittenSwitch<&Values::showsBlanks>},
    {"WrenShowGuides", ReadSwitch<&Values::showsGuides>, WrittenSwitch<&Values::showsGuides>},
    {"WrenShowScopes", ReadSwitch<&Values::showsScopes>, WrittenSwitch<&Values::showsScopes>},
    {"WrenEditorConfig", ReadSwitch<&Values::followsConfig>, WrittenSwitch<&Values::followsConfig>},
    {"WrenColours", [](const std::string& text, Values* values) { return ReadWord(kColours, text, &values->colours); },
     [](const Values& values) { return WordFor(kColours, values.colours); }},
    {"WrenRestoreSession", ReadSwitch<&Values::restoresSession>, WrittenSwitch<&Values::restoresSession>},
    {"WrenModifiers", ReadModifiers, WrittenModifiers},
    {"WrenLookupClick",
     [](const std::string& text, Values* values) { return ReadWord(kClicks, text, &values->lookupClick); },
     [](const Values& values) { return WordFor(kClicks, values.lookupClick); }},
    {"WrenJumpByMeaning", ReadJumps, WrittenSwitch<&Values::jumpsByMeaning>},
    {"WrenCompletion",
     [](const std::string& text, Values* values) { return ReadWord(kCompletions, text, &values->completion); },
     [](const Values& values) { return WordFor(kCompletions, values.completion); }},
    {"WrenKeepTags", [](const std::string& text, Values* values) { return ReadWord(kKeeps, text, &values->keepsTags); },
     [](const Values& values) { return WordFor(kKeeps, values.keepsTags); }},
    {"WrenKeys",
     [](const std::string& text, Values* values) { return ReadKeys(text, &values->keys, values->HasMeaningKeys()); },
     [](const Values& values) { return WrittenKeys(values.keys, values.HasMeaningKeys()); }},
    {"WrenMenuKeys", [](const std::string& text, Values* values) { return ReadItemKeys(text, &values->menuKeys); },
     [](const Values& values) { return WrittenItemKeys(values.menuKeys); }},
};

// The text behind the name, without the blanks around it.
std::string ValueIn(const std::string& line)
{
    const size_t name = line.find_first_not_of(' ');
    const size_t start = line.find_first_not_of(' ', std::min(line.find(' ', name), line.size()));
    return start == std::string::npos ? "" : line.substr(start, line.find_last_not_of(' ') + 1 - start);
}

} // namespace

Preferences::Preferences(bool understandsNames)
{
    values.understandsNames = understandsNames;
    values.keys = DefaultKeys(values.HasMeaningKeys());
}

void Preferences::Set(const PreferenceValues& chosen)
{
    for (const Form& form : kForms)
        if (form.written(chosen) != form.written(values))
            damaged.erase(form.name);
    values = chosen;
    values.keys = InOrder(chosen.keys);
}

std::vector<std::string> Preferences::Names() const
{
    std::vector<std::string> names;
    for (const Form& form : kForms)
        names.push_back(form.name);
    return names;
}

bool Preferences::Take(const std::string& line, std::string* error)
{
    const std::vector<std::string> words = SplitAtBlanks(line);
    const Form* form = std::find_if(std::begin(kForms), std::end(kForms),
                                    [&](const Form& each) { return !words.empty() && words.front() == each.name; });
    if (form == std::end(kForms)) {
        *error = "no such setting";
        return false;
    }
    *error = taken.contains(form->name) ? "an earlier line has set it" : form->read(ValueIn(line), &values);
    if (!error->empty()) {
        damaged[form->name].push_back(line);
        return false;
    }
    taken.insert(form->name);
    return true;
}

std::vector<std::string> Preferences::Lines() const
{
    static const PreferenceValues kDefault;
    std::vector<std::string> lines;
    for (const Form& form : kForms) {
        const auto kept = damaged.find(form.name);
        // A stored default stays in front of later, ignored lines of its name: else one of them would count at the next
        // read.
        const bool standsBefore = kept != damaged.end() && taken.contains(form.name);
        if (standsBefore || form.written(values) != form.written(kDefault))
            lines.push_back(std::string(form.name) + " " + form.written(values));
        if (kept != damaged.end())
            lines.insert(lines.end(), kept->second.begin(), kept->second.end());
    }
    return lines;
}

} // namespace wren
