// The file that stores settings between sessions, one line each: the plug-in's, and the editor's own.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace wren {

// The words of a stored line. Only blanks separate them, and a run of blanks counts as one; backslashes, quotes and
// tabs are part of a word. A setting with an empty text is stored as "name ", so it is read as the name alone.
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

    // The stored lines that are not blank. None when there is no file; false, with the reason in '*error', when the
    // file cannot be read.
    bool Load(std::vector<StoredLine>* lines, std::string* error);

    const std::string& File() const { return file; }
    void Register(const std::string& name) { names.insert(name); }
    bool IsRegistered(const std::string& name) const { return names.contains(name); }
    bool HasRegistered() const { return !names.empty(); }

    // Records whether the setting's owner accepted a loaded line of a registered name.
    void Accepted(const std::string& line);
    void Refused(const std::string& line);

    bool MakeDirectory(std::string* error); // of the file; false, with the reason, on failure

    // Lines written between the two replace all stored lines of registered names. Lines of other names stay unchanged,
    // since they have other owners. Refused lines stay too, for the user to correct. They are replaced when the name's
    // written value differs from its accepted one, or one was chosen since the baseline. A file with equal content is
    // not written. False, with the reason in '*error', leaves the file unchanged.
    void BeginSave();
    void Write(const std::string& text); // discarded outside a save
    // The same for the lines of one name that this save has so far; nullopt for none.
    void WriteInstead(const std::string& name, const std::optional<std::string>& line);
    bool EndSave(std::string* error);

    // Lines written between the two are not stored. The first call comes before the first save, once the loaded lines
    // have reached their owners, and sets the baseline. A name whose lines have not changed since the baseline, or
    // since the last save, was not chosen here. If its lines in the file differ by then, another program has chosen
    // them, and they stay. At later calls, a name with changed lines counts as chosen, even if the next save has the
    // earlier value.
    void BeginNote();
    void EndNote();

    bool OnlyListens() const { return onlyListens; } // written lines are not stored now

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
    std::optional<std::string> baseline; // the last written lines
    std::string known;                   // the file's content when last loaded or stored
    std::set<std::string> chosen;        // names whose written lines changed
    std::set<std::string> others;        // names that only another program has chosen since
};

} // namespace wren
