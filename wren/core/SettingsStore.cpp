#include "wren/core/SettingsStore.h"

#include "wren/core/Documents.h"
#include "wren/core/TextFile.h"
#include "wren/core/UserDirectories.h"

#include <algorithm>
#include <optional>
#include <sys/stat.h>
#include <utility>

namespace wren {

namespace {

std::vector<std::string> SplitLines(const std::string& text)
{
    std::vector<std::string> lines;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::string NameIn(const std::string& line)
{
    const std::vector<std::string> words = SplitAtBlanks(line);
    return words.empty() ? "" : words.front();
}

std::vector<std::string> LinesOf(const std::string& name, const std::string& text)
{
    std::vector<std::string> lines = SplitLines(text);
    std::erase_if(lines, [&](const std::string& line) { return NameIn(line) != name; });
    return lines;
}

bool Exists(const std::string& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0;
}

} // namespace

std::vector<std::string> SplitAtBlanks(const std::string& line)
{
    std::vector<std::string> words;
    for (size_t start = line.find_first_not_of(' '); start != std::string::npos;) {
        const size_t end = std::min(line.find(' ', start), line.size());
        words.push_back(line.substr(start, end - start));
        start = line.find_first_not_of(' ', end);
    }
    return words;
}

SettingsStore::SettingsStore(std::string file) : file(std::move(file)) {}

bool SettingsStore::Load(std::vector<StoredLine>* lines, std::string* error)
{
    lines->clear();
    if (file.empty() || !Exists(file))
        return true;
    const std::optional<std::string> stored = ReadWholeFile(file, error);
    if (!stored)
        return false;
    known = *stored;
    size_t number = 0;
    for (std::string& line : SplitLines(*stored))
        if (++number; !SplitAtBlanks(line).empty())
            lines->push_back({number, std::move(line)});
    return true;
}

void SettingsStore::Accepted(const std::string& line)
{
    std::vector<std::string> words = SplitAtBlanks(line);
    accepted[words.front()] = std::move(words);
}

void SettingsStore::Refused(const std::string& line)
{
    refused.insert(line);
}

bool SettingsStore::MakeDirectory(std::string* error)
{
    const size_t slash = file.rfind('/');
    return slash == std::string::npos || slash == 0 || MakeUserDirectory(file.substr(0, slash), error);
}

void SettingsStore::BeginSave()
{
    saving = true;
    written.clear();
}

void SettingsStore::Write(const std::string& text)
{
    if (saving)
        written += text;
}

void SettingsStore::WriteInstead(const std::string& name, const std::optional<std::string>& line)
{
    std::string lines;
    for (const std::string& other : SplitLines(written))
        if (NameIn(other) != name)
            lines += other + "\n";
    written = lines + (line ? *line + "\n" : "");
}

bool SettingsStore::EndSave(std::string* error)
{
    saving = false;
    NoteChosen();
    if (!file.empty() && !Store(error))
        return false;
    if (baseline)
        baseline = written;
    return true;
}

bool SettingsStore::Store(std::string* error)
{
    const bool exists = Exists(file);
    const std::optional<std::string> stored = exists ? ReadWholeFile(file, error) : "";
    if (!stored)
        return false;
    FindOthers(exists ? *stored : known); // a removed file chooses nothing
    const std::string all = WithoutReplaced(*stored) + WithoutOthers();
    if ((!exists || all != *stored) && !WriteWholeFile(file, all, error))
        return false;
    known = all;
    return true;
}

void SettingsStore::BeginNote()
{
    onlyListens = true;
    BeginSave();
}

void SettingsStore::EndNote()
{
    onlyListens = false;
    saving = false;
    if (!baseline)
        baseline = written;
    NoteChosen();
}

// The stored lines that stay.
std::string SettingsStore::WithoutReplaced(const std::string& stored) const
{
    std::string kept;
    for (const std::string& line : SplitLines(stored)) {
        const std::string name = NameIn(line);
        if (!names.contains(name) || others.contains(name) || (refused.contains(line) && !HasNewValue(name)))
            kept += line + "\n";
    }
    return kept;
}

// The written lines that do not give way to another program's choice.
std::string SettingsStore::WithoutOthers() const
{
    std::string mine;
    for (const std::string& line : SplitLines(written))
        if (!others.contains(NameIn(line)))
            mine += line + "\n";
    return mine;
}

void SettingsStore::FindOthers(const std::string& stored)
{
    for (const std::string& name : names)
        if (!baseline || LinesOf(name, written) != LinesOf(name, *baseline))
            others.erase(name);
        else if (LinesOf(name, stored) != LinesOf(name, known))
            others.insert(name);
}

void SettingsStore::NoteChosen()
{
    for (const std::string& name : names)
        if (baseline && LinesOf(name, written) != LinesOf(name, *baseline))
            chosen.insert(name);
}

bool SettingsStore::HasNewValue(const std::string& name) const
{
    if (chosen.contains(name))
        return true;
    const auto before = accepted.find(name);
    for (const std::string& line : SplitLines(written)) {
        const std::vector<std::string> words = SplitAtBlanks(line);
        if (!words.empty() && words.front() == name && (before == accepted.end() || before->second != words))
            return true;
    }
    return false;
}

} // namespace wren
