// A table in which the user changes the keys of commands.
#pragma once

#include <QKeySequence>
#include <QString>
#include <QWidget>

#include <string>
#include <utility>
#include <vector>

class QKeySequenceEdit;
class QLabel;
class QTableWidget;

namespace wren {

// Each command has a row, and each key a field. A line below names keys that several commands or a menu have, and says
// why a key was refused. GUI thread.
class KeyTable : public QWidget {
    Q_OBJECT
public:
    using Keys = std::vector<std::pair<std::string, std::string>>; // as in PreferenceValues::keys

    explicit KeyTable(QWidget* parent = nullptr);

    void SetMenuKeys(const std::vector<std::pair<QString, QKeySequence>>& keys); // and the items that they choose
    void SetCommands(const std::vector<std::string>& names);
    void SetUsual(const Keys& keys); // what the button sets
    void SetValues(const Keys& keys);
    Keys Values() const;

signals:
    void Changed(); // by the user

private:
    void Rebuild();
    void AddField(int row, int column, const std::string& key);
    void Take(QKeySequenceEdit* field);
    void ShowConflicts(const QString& refusal = "");
    QStringList Conflicts() const;

    QTableWidget* table;
    QLabel* conflicts;
    std::vector<std::pair<QString, QKeySequence>> menuKeys;
    std::vector<std::string> registered;
    std::vector<std::string> rows; // the commands shown
    Keys values;
    Keys usual;
};

} // namespace wren
