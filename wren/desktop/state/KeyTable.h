// A table in which the user changes the keys of commands and of menu items.
#pragma once

#include "wren/core/KeyLines.h"
#include "wren/desktop/state/MenuItem.h"

#include <QString>
#include <QWidget>

#include <string>
#include <utility>
#include <vector>

class QKeySequenceEdit;
class QLabel;
class QTableWidget;

namespace wren {

// Each command has a row, then each menu item, and each key a field. A line below names keys that several of them have,
// and says why a key was refused. GUI thread.
class KeyTable : public QWidget {
    Q_OBJECT
public:
    using Keys = CommandKeys; // as in PreferenceValues::keys

    explicit KeyTable(QWidget* parent = nullptr);

    void SetMenuItems(const std::vector<MenuItem>& items); // in the order of the menus
    void SetCommands(const std::vector<std::string>& names);
    void SetUsual(const Keys& keys); // what the button sets
    void SetValues(const Keys& keys);
    Keys Values() const;

    // Those that differ from the usual ones, and those of items that are not in the menus now.
    void SetItemValues(const ItemKeys& keys);
    ItemKeys ItemValues() const;

signals:
    void Changed(); // by the user

private:
    struct Row {
        std::string name; // of the command, or the id of the item
        QString title;
        std::vector<std::string> keys;
        const MenuItem* item = nullptr; // null for a command
    };

    std::vector<Row> Rows() const;
    void Rebuild();
    void AddField(int row, int column, const std::string& key);
    std::vector<std::string> KeysIn(int row) const; // as they are stored
    void Take(QKeySequenceEdit* field);
    void Refuse(QKeySequenceEdit* field);
    void ShowConflicts(const QString& refusal = "");
    QStringList Conflicts() const;

    QTableWidget* table;
    QLabel* conflicts;
    std::vector<MenuItem> items;
    std::vector<std::string> registered;
    std::vector<Row> rows; // that are shown
    Keys values;
    Keys usual;
    ItemKeys itemValues;
};

} // namespace wren
