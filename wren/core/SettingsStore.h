// The file in which settings are kept between sessions, a line a setting: the plug-in's, and the editor's own.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace wren {

// The words of a stored line. Blanks alone separate them, and runs of blanks count as one; backslashes, quotes and tabs
// are part of a word. A setting whose text is empty was stored as "name ", so it comes back as the name alone.
std::vector<std::string> SplitAtBlanks(const std::string& line);

struct StoredLine {
    size_t number = 0; // in the file, from 1
    std::string text;
    bool operator==(const StoredLine&) const = default;
};

// Document thread.
class SettingsStore {
public:
    explicit SettingsStore(std::string file); // "" keeps nothing on disk

    // The stored lines that hold anything but blanks. None when there is no file; false, with the reason in '*error',
    // when there is one that cannot be read.
    bool Load(std::vector<StoredLine>* lines, std::string* error);

    const std::string& File() const { return file; }
    void Register(const std::string& name) { names.insert(name); }
    bool IsRegistered(const std::string& name) const { return names.contains(name); }
    bool HasRegistered() const { return !names.empty(); }

    // What its owner made of a loaded line of a registered name.
    void Accepted(const std::string& line);
    void Refused(const std::string& line);

    bool MakeDirectory(std::string* error); // that the file is in; false, with the reason, when it cannot be made

    // Between the two, what is written replaces all stored lines of registered names. Lines of other names stay as
    // they are, since they belong to somebody else, and so do refused ones, for the user to correct, until another
    // value is written for their name than was accepted for it, or one has been chosen since the baseline. A file
    // that holds all that already is not touched. False, with the reason in '*error', leaves the file as it was.
    void BeginSave();
    void Write(const std::string& text); // outside a save it goes nowhere
    bool EndSave(std::string* error);

    // What is written between the two is stored nowhere. The first time, before the first save and once what is loaded
    // has been given to its owners, it is the baseline: a name for which nothing else is written later than then, or
    // than at the last save, was not chosen anew; when its lines in the file are others by then, somebody else has
    // chosen, and they stay. Afterwards a name for which something else is written was chosen, even if the next save
    // has what there was before.
    void BeginNote();
    void EndNote();

    bool OnlyListens() const { return onlyListens; } // nothing of what is written now is stored

private:
    bool Store(std::string* error);
    std::string WithoutReplaced(const std::string& stored) const;
    std::string WithoutOthers() const;
    void FindOthers(const std::string& stored);
    void NoteChosen();
    bool HasNewValue(const std::string& name) const;

    const std::string file;
    std::set<std::string> names;
    std::map<std::string, std::vector<std::string>> accepted; // the words of a name's last accepted line
    std::set<std::string> refused;
    bool saving = false;
    std::string written;
    bool onlyListens = false;
    std::optional<std::string> baseline; // what was written last
    std::string known;                   // what the file held when it was loaded or stored last
    std::set<std::string> chosen;        // names for which something else was written than before
    std::set<std::string> others;        // names for which somebody else has chosen since, and nobody here
};

} // namespace wren
