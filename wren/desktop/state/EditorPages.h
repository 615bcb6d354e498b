// The editor's own pages among the preferences.
#pragma once

#include "wren/core/Preferences.h"
#include "wren/desktop/state/MenuItem.h"

#include <QStackedWidget>
#include <QString>
#include <QStringList>

#include <map>
#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QSpinBox;

namespace wren {

class KeyTable;

// Shows values and lets the user change them; the owner of the pages applies them after Changed(). A font that is not
// installed and keys in unusual notations come back as they were, unless the user chooses others. GUI thread.
class EditorPages : public QStackedWidget {
    Q_OBJECT
public:
    explicit EditorPages(QWidget* parent = nullptr);

    QStringList Titles() const; // of the pages, in their order

    // The menu items that are not commands: a command that has a key of an item takes it from the item.
    void SetMenuItems(const std::vector<MenuItem>& items);

    // Commands that can be bound beside those with default keys, by the names under which the plug-in registered them.
    void SetCommands(const std::vector<std::string>& names);

    PreferenceValues Values() const;
    void SetValues(const PreferenceValues& values);

signals:
    void Changed(); // by the user

private:
    QWidget* AddPage(const QString& title);
    void AddTextPage();
    void AddNamesPage();
    void AddKeysPage();
    void AddSessionPage();
    void FillBoxes();
    void ShowFont(const QString& family);
    void ChooseJumps();
    QCheckBox* Switch(const QString& text);
    QComboBox* ModifierBox(const QString& name);
    void TakeModifierFromOthers(QComboBox* chosen);
    void RememberModifiers();
    void Tell();

    bool isSetting = true; // the page itself sets values, which emits no Changed()
    QComboBox* font;
    QSpinBox* fontSize;
    QSpinBox* tabWidth;
    QCheckBox* indentsWithTabs;
    QCheckBox* wrapsLines;
    QCheckBox* showsBlanks;
    QCheckBox* showsGuides;
    QCheckBox* showsScopes;
    QCheckBox* followsConfig;
    QCheckBox* restoresSession;
    QComboBox* colours;
    QComboBox* command;
    QComboBox* control;
    QComboBox* option;
    QComboBox* lookupClick;
    QCheckBox* jumpsByMeaning;
    QComboBox* completion;
    QComboBox* keepsTags;
    QFormLayout* names; // the page
    bool understandsNames = false;
    KeyTable* keys;
    std::map<const QComboBox*, int> modifiers; // what the three boxes showed before the user chose
};

} // namespace wren
