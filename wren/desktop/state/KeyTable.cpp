#include "wren/desktop/state/KeyTable.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <map>

namespace wren {

namespace {

constexpr int kLeastFields = 2;
constexpr const char* kStored = "stored"; // the property with a field's key as it is stored
constexpr const char* kOfItem = "ofItem"; // whether it chooses a menu item

struct Title {
    const char* command;
    const char* text;
};
constexpr Title kTitles[] = {
    {"SymbolCompletion", "Complete symbol"},
    {"DeclarationLookup", "Look up declaration"},
    {"DefinitionLookup", "Look up definition"},
    {"SymbolLookup", "Look up symbol"},
    {"SymbolLookupDialog", "Look up\u2026"},
    {"GoBack", "Go back"},
    {"GoForward", "Go forward"},
};

QString TitleOf(const std::string& command)
{
    for (const Title& title : kTitles)
        if (command == title.command)
            return QString::fromUtf8(title.text);
    return QString::fromStdString(command);
}

QKeySequence SequenceOf(const std::string& key)
{
    return QKeySequence::fromString(QString::fromStdString(key), QKeySequence::PortableText);
}

// Qt's standard keys have some that hardly any keyboard has: a column of fields for them would crowd the others.
bool IsRare(const QKeySequence& key)
{
    return key[0].key() >= Qt::Key_F13 && key[0].key() <= Qt::Key_F35;
}

std::vector<std::string> UsualKeys(const MenuItem& item)
{
    std::vector<std::string> keys;
    for (const QKeySequence& each : item.usual)
        if (const std::string key = each.toString(QKeySequence::PortableText).toStdString();
            MayChooseItem(key) && !IsRare(each))
            keys.push_back(key);
    return keys;
}

// A field that takes one stroke. Qt's own takes four, waits a second for each, and empties itself at once.
class KeyField : public QKeySequenceEdit {
public:
    explicit KeyField(const QKeySequence& key) : QKeySequenceEdit(key) { setClearButtonEnabled(true); }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        switch (event->key()) {
        case Qt::Key_Control:
        case Qt::Key_Shift:
        case Qt::Key_Alt:
        case Qt::Key_Meta:
        case Qt::Key_AltGr:
        case Qt::Key_unknown:
            return; // of a stroke that is still to come
        }
        QKeySequence typed;
        {
            const QSignalBlocker quiet(this);
            QKeySequenceEdit::keyPressEvent(event);
            typed = keySequence();
            clear();
        }
        setKeySequence(typed);
    }
};

} // namespace

KeyTable::KeyTable(QWidget* parent)
    : QWidget(parent), table(new QTableWidget), conflicts(new QLabel), values(DefaultKeys()), usual(DefaultKeys())
{
    table->setAccessibleName(tr("Keys of commands"));
    table->verticalHeader()->hide();
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    conflicts->setObjectName("conflicts");
    conflicts->setTextFormat(Qt::PlainText); // the settings may name any command
    conflicts->setWordWrap(true);
    auto* reset = new QPushButton(tr("Default &keys"));
    reset->setObjectName("reset");
    connect(reset, &QPushButton::clicked, this, [this] {
        itemValues.clear();
        SetValues(usual);
        emit Changed();
    });
    auto* below = new QHBoxLayout;
    below->addWidget(conflicts, 1);
    below->addWidget(reset, 0, Qt::AlignTop);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(table);
    all->addLayout(below);
    Rebuild();
}

// The fields stay when nothing changed: the user may be in one of them.
void KeyTable::SetMenuItems(const std::vector<MenuItem>& given)
{
    if (given == items)
        return;
    const Keys shown = Values();
    itemValues = ItemValues();
    items = given;
    SetValues(shown);
}

void KeyTable::SetCommands(const std::vector<std::string>& names)
{
    registered = names;
    Rebuild();
}

void KeyTable::SetUsual(const Keys& keys)
{
    usual = keys;
}

void KeyTable::SetValues(const Keys& keys)
{
    values = keys;
    Rebuild();
}

void KeyTable::SetItemValues(const ItemKeys& keys)
{
    itemValues = keys;
    Rebuild();
}

KeyTable::Keys KeyTable::Values() const
{
    Keys keys;
    for (int row = 0; row < table->rowCount(); ++row)
        if (rows[row].item == nullptr)
            for (const std::string& key : KeysIn(row))
                keys.emplace_back(rows[row].name, key);
    return keys;
}

ItemKeys KeyTable::ItemValues() const
{
    ItemKeys keys = itemValues;
    for (int row = 0; row < table->rowCount(); ++row) {
        if (rows[row].item == nullptr)
            continue;
        keys.erase(rows[row].name);
        if (const std::vector<std::string> own = KeysIn(row); own != UsualKeys(*rows[row].item))
            keys[rows[row].name] = own;
    }
    return keys;
}

std::vector<std::string> KeyTable::KeysIn(int row) const
{
    std::vector<std::string> keys;
    for (int column = 1; column < table->columnCount(); ++column)
        if (const QString key = table->cellWidget(row, column)->property(kStored).toString(); !key.isEmpty())
            keys.push_back(key.toStdString());
    return keys;
}

std::vector<KeyTable::Row> KeyTable::Rows() const
{
    Keys all = DefaultKeys();
    all.insert(all.end(), values.begin(), values.end());
    for (const std::string& name : registered)
        all.emplace_back(name, "");
    std::vector<Row> made;
    for (const auto& each : all)
        if (std::ranges::find(made, each.first, &Row::name) == made.end())
            made.push_back({each.first, TitleOf(each.first), {}});
    for (Row& row : made)
        for (const auto& [command, key] : values)
            if (command == row.name)
                row.keys.push_back(key);
    for (const MenuItem& item : items) {
        const auto chosen = itemValues.find(item.id);
        made.push_back({item.id, item.title, chosen == itemValues.end() ? UsualKeys(item) : chosen->second, &item});
    }
    return made;
}

void KeyTable::Rebuild()
{
    rows = Rows();
    size_t fields = kLeastFields;
    for (const Row& row : rows)
        fields = std::max(fields, row.keys.size());
    table->clear();
    table->setColumnCount(1 + static_cast<int>(fields));
    table->setRowCount(static_cast<int>(rows.size()));
    QStringList heads = {tr("Command"), tr("Key")};
    for (size_t field = 1; field < fields; ++field)
        heads << tr("Another key");
    table->setHorizontalHeaderLabels(heads);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    for (int row = 0; row < table->rowCount(); ++row) {
        table->setItem(row, 0, new QTableWidgetItem(rows[row].title));
        std::vector<std::string> own = rows[row].keys;
        own.resize(fields);
        for (size_t field = 0; field < fields; ++field)
            AddField(row, 1 + static_cast<int>(field), own[field]);
    }
    table->resizeRowsToContents();
    ShowConflicts();
}

void KeyTable::AddField(int row, int column, const std::string& key)
{
    auto* field = new KeyField(SequenceOf(key));
    field->setProperty(kStored, QString::fromStdString(key));
    field->setAccessibleName(rows[row].title);
    field->setProperty(kOfItem, rows[row].item != nullptr);
    table->setCellWidget(row, column, field);
    connect(field, &QKeySequenceEdit::keySequenceChanged, this, [this, field] { Take(field); });
}

// Only what can be stored is taken, and nothing that would be missed while typing.
void KeyTable::Take(QKeySequenceEdit* field)
{
    const QString key = field->keySequence().toString(QKeySequence::PortableText);
    const std::string stored = key.toStdString();
    const bool mayChoose = field->property(kOfItem).toBool() && MayChooseItem(stored);
    if (!key.isEmpty() && !mayChoose && (IsForTexts(stored) || !IsKey(stored)))
        return Refuse(field);
    if (key == field->property(kStored).toString())
        return;
    field->setProperty(kStored, key);
    ShowConflicts();
    emit Changed();
}

void KeyTable::Refuse(QKeySequenceEdit* field)
{
    const bool isForTexts = IsForTexts(field->keySequence().toString(QKeySequence::PortableText).toStdString());
    const QString shown = field->keySequence().toString(QKeySequence::NativeText);
    {
        const QSignalBlocker quiet(field);
        field->setKeySequence(SequenceOf(field->property(kStored).toString().toStdString()));
    }
    ShowConflicts(isForTexts ? tr("%1 is for editing: a command needs Control, Alt or Meta with it.").arg(shown)
                             : tr("%1 cannot be the key of a command.").arg(shown));
}

void KeyTable::ShowConflicts(const QString& refusal)
{
    QStringList lines = Conflicts();
    if (!refusal.isEmpty())
        lines.prepend(refusal);
    conflicts->setText(lines.join("\n"));
}

// As the menus decide them: commands come first, then items whose keys the user chose.
QStringList KeyTable::Conflicts() const
{
    std::map<QKeySequence, QStringList> commandsOf;
    std::map<QKeySequence, QStringList> chosenOf;
    std::map<QKeySequence, QStringList> usualOf;
    for (int row = 0; row < table->rowCount(); ++row) {
        const MenuItem* item = rows[row].item;
        const std::vector<std::string> keys = KeysIn(row);
        auto& those = item == nullptr ? commandsOf : keys == UsualKeys(*item) ? usualOf : chosenOf;
        for (const std::string& key : keys)
            if (QStringList& titles = those[SequenceOf(key)]; !titles.contains(rows[row].title))
                titles << rows[row].title;
    }
    QStringList lines;
    for (const auto& [key, commands] : commandsOf) {
        const QString shown = key.toString(QKeySequence::NativeText);
        if (commands.size() > 1)
            lines << tr("%1 is the key of several commands: %2. The first one runs.").arg(shown, commands.join(", "));
        for (const QString& item : chosenOf[key] + usualOf[key])
            lines << tr("%1 is the menu key of \u201c%2\u201d, and now runs %3 instead.")
                         .arg(shown, item, commands.first());
    }
    for (const auto& [key, chosen] : chosenOf)
        if (const QStringList all = chosen + usualOf[key]; all.size() > 1 && !commandsOf.contains(key))
            lines << tr("%1 is the key of several menu items: %2. The first one is chosen.")
                         .arg(key.toString(QKeySequence::NativeText), all.join(", "));
    return lines;
}

} // namespace wren
