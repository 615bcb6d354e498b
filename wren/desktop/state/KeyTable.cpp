#include "wren/desktop/state/KeyTable.h"

#include "wren/core/Preferences.h"

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

int CountKeys(const KeyTable::Keys& keys, const std::string& command)
{
    return static_cast<int>(
        std::count_if(keys.begin(), keys.end(), [&](const auto& each) { return each.first == command; }));
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

void KeyTable::SetMenuKeys(const std::vector<std::pair<QString, QKeySequence>>& keys)
{
    menuKeys = keys;
    ShowConflicts();
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

KeyTable::Keys KeyTable::Values() const
{
    Keys keys;
    for (int row = 0; row < table->rowCount(); ++row)
        for (int column = 1; column < table->columnCount(); ++column)
            if (const QString key = table->cellWidget(row, column)->property(kStored).toString(); !key.isEmpty())
                keys.emplace_back(rows[row], key.toStdString());
    return keys;
}

void KeyTable::Rebuild()
{
    Keys all = DefaultKeys();
    all.insert(all.end(), values.begin(), values.end());
    for (const std::string& name : registered)
        all.emplace_back(name, "");
    rows.clear();
    int fields = kLeastFields;
    for (const auto& [command, key] : all) {
        if (std::find(rows.begin(), rows.end(), command) != rows.end())
            continue;
        rows.push_back(command);
        fields = std::max(fields, CountKeys(values, command));
    }
    table->clear();
    table->setColumnCount(1 + fields);
    table->setRowCount(static_cast<int>(rows.size()));
    QStringList heads = {tr("Command"), tr("Key")};
    for (int field = 1; field < fields; ++field)
        heads << tr("Another key");
    table->setHorizontalHeaderLabels(heads);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    for (int row = 0; row < table->rowCount(); ++row) {
        table->setItem(row, 0, new QTableWidgetItem(TitleOf(rows[row])));
        std::vector<std::string> own;
        for (const auto& [command, key] : values)
            if (command == rows[row])
                own.push_back(key);
        own.resize(fields);
        for (int field = 0; field < fields; ++field)
            AddField(row, 1 + field, own[field]);
    }
    table->resizeRowsToContents();
    ShowConflicts();
}

void KeyTable::AddField(int row, int column, const std::string& key)
{
    auto* field = new KeyField(SequenceOf(key));
    field->setProperty(kStored, QString::fromStdString(key));
    field->setAccessibleName(TitleOf(rows[row]));
    table->setCellWidget(row, column, field);
    connect(field, &QKeySequenceEdit::keySequenceChanged, this, [this, field] { Take(field); });
}

// Only what can be stored is taken, and nothing that would be missed while typing.
void KeyTable::Take(QKeySequenceEdit* field)
{
    const QString key = field->keySequence().toString(QKeySequence::PortableText);
    const QString before = field->property(kStored).toString();
    const bool isForTexts = IsForTexts(key.toStdString());
    if (!key.isEmpty() && (isForTexts || !IsKey(key.toStdString()))) {
        const QString shown = field->keySequence().toString(QKeySequence::NativeText);
        const QSignalBlocker quiet(field);
        field->setKeySequence(SequenceOf(before.toStdString()));
        return ShowConflicts(isForTexts
                                 ? tr("%1 is for editing: a command needs Control, Alt or Meta with it.").arg(shown)
                                 : tr("%1 cannot be the key of a command.").arg(shown));
    }
    if (key == before)
        return;
    field->setProperty(kStored, key);
    ShowConflicts();
    emit Changed();
}

void KeyTable::ShowConflicts(const QString& refusal)
{
    QStringList lines = Conflicts();
    if (!refusal.isEmpty())
        lines.prepend(refusal);
    conflicts->setText(lines.join("\n"));
}

QStringList KeyTable::Conflicts() const
{
    std::map<QKeySequence, QStringList> commandsOf;
    for (const auto& [command, key] : Values()) {
        QStringList& commands = commandsOf[SequenceOf(key)];
        if (!commands.contains(TitleOf(command)))
            commands << TitleOf(command);
    }
    QStringList lines;
    for (const auto& [key, commands] : commandsOf)
        if (commands.size() > 1)
            lines << tr("%1 is the key of several commands: %2. The first one runs.")
                         .arg(key.toString(QKeySequence::NativeText), commands.join(", "));
    for (const auto& [item, key] : menuKeys)
        if (const auto taken = commandsOf.find(key); taken != commandsOf.end())
            lines << tr("%1 is the menu key of \u201c%2\u201d, and now runs %3 instead.")
                         .arg(key.toString(QKeySequence::NativeText), item, taken->second.first());
    return lines;
}

} // namespace wren
