// Running a command by a few letters of its name.
#pragma once

#include <QAction>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace wren {

class MainWindow;
class Palette;
struct PaletteItem;

struct NamedCommand {
    QString menu; // that has it
    QString name; // there, without "&"
    QString keys; // for people; "" for none
    QPointer<QAction> action;
};

// Offers what the menus have and can do now, with its keys. The commands that were run last come first. GUI thread.
class CommandChooser : public QObject {
    Q_OBJECT
public:
    // Asks 'commands' whenever it opens.
    CommandChooser(MainWindow& window, std::function<std::vector<NamedCommand>()> commands); // borrowed

    void Open();

private:
    Palette& Listing(); // made when it is needed
    // What the letters match in a command's own name comes first, then what they match with its menu.
    std::vector<PaletteItem> Matching(const std::string& letters) const;
    void PutLastFirst();
    void Run(size_t number);

    MainWindow& window;
    const std::function<std::vector<NamedCommand>()> commands;
    std::vector<NamedCommand> offered;
    QStringList last; // the names of what was run, the last one first
    Palette* listing = nullptr;
};

} // namespace wren
