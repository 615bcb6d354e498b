// The tree of the project's files.
#pragma once

#include "wren/files/ProjectTree.h"

#include <QObject>

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace wren {

class FilesPanel;
class Host;
class MainWindow;
class PlaceActions;
class SymbolEngine;

// Shows the project of the current text. Directories are read when they are opened, on a thread of the engine, and
// again when the user comes back or saves a file. GUI thread.
class FilesActions : public QObject {
    Q_OBJECT
public:
    struct Parts { // all borrowed
        Host& host;
        MainWindow& window;
        PlaceActions& places;
        SymbolEngine& engine;
        std::string folder = {}; // absolute: its files are shown, whatever the text; "" for none
    };
    explicit FilesActions(const Parts& parts);

    void Show(bool shown); // and gives it the keyboard
    void Follow();         // another text is the current one
    void Refresh();        // files may have come or gone

    FilesPanel& Panel(); // made when it is needed

signals:
    void PanelShown(bool shown);

private:
    bool IsShown() const;
    std::string CurrentPath() const; // "" for a text without a file
    void AskDirectories();
    void AskFound();
    void Heard(const std::string& path, const std::string& projectRoot);
    void Open(const std::string& file);

    const Parts parts;
    FilesPanel* panel = nullptr;
    bool isNew = false;                                 // its height was never set
    std::string root;                                   // "" until it is known
    std::string followed;                               // the text whose project is the root
    std::set<std::string> missing;                      // directories that were asked for
    bool isFollowing = false;                           // the root is being looked for
    bool forgets = false;                               // the rules may have changed
    std::shared_ptr<std::unique_ptr<ProjectTree>> tree; // used by one question at a time
    std::shared_ptr<std::vector<std::string>> files;    // the same: all of them while letters are typed
};

} // namespace wren
