#include "wren/desktop/PreferencesDialog.h"

#include "vetch/app/Loop.h"
#include "vetch/interface/BWindow.h"
#include "wren/core/Host.h"
#include "wren/core/PluginBundle.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/IcnsIcon.h"
#include "wren/desktop/Icons.h"
#include "wren/desktop/PreferenceSearch.h"
#include "wren/desktop/display/QtDisplay.h"
#include "wren/desktop/state/EditorPages.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace wren {

namespace {

constexpr int kBesideTitles = 12; // pixels

} // namespace

PreferencesDialog::PreferencesDialog(Host& host, QtDisplay& display, GuiLoop& loop, const PreferenceValues& values,
                                     QWidget* parent)
    : QDialog(parent), host(host), display(display), loop(loop), first(values), editor(new EditorPages),
      titles(new QListWidget), pages(new QStackedWidget)
{
    setWindowTitle(tr("Preferences"));
    titles->setIconSize(QSize(24, 24));
    titles->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    titles->setAccessibleName(tr("Pages"));
    auto* wanted = new QLineEdit;
    wanted->setPlaceholderText(tr("Search"));
    wanted->setAccessibleName(tr("Search the preferences"));
    wanted->setClearButtonEnabled(true);
    search = new PreferenceSearch(*wanted, *titles);
    search->setParent(this);
    auto* row = new QHBoxLayout;
    row->addWidget(titles);
    row->addWidget(pages, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Cancel)->setToolTip(tr("Take back what was changed since this window opened"));
    connect(buttons->button(QDialogButtonBox::Cancel), &QPushButton::clicked, this, &PreferencesDialog::TakeBack);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::accept);
    auto* column = new QVBoxLayout(this);
    column->addWidget(wanted);
    column->addLayout(row, 1);

    AddEditorPages();
    AddPanels();
    titles->setFixedWidth(titles->sizeHintForColumn(0) + 2 * titles->frameWidth() + kBesideTitles);
    column->addWidget(buttons); // last, also for the Tab key
    // Enter belongs to the field that it is pressed in, which takes its value then.
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
        button->setIcon(QIcon()); // the style's are dark also on dark
    }
    connect(titles, &QListWidget::currentRowChanged, this, &PreferencesDialog::ShowPage);
    titles->setCurrentRow(0);
    titles->setFocus();
}

PreferencesDialog::~PreferencesDialog()
{
    LeaveField();
    for (const vetch::LooperToken token : panels)
        if (BLooper* panel = vetch::FindLooper(token))
            panel->Quit();
    loop.LetThrough();
}

void PreferencesDialog::SetMenuItems(const std::vector<MenuItem>& items)
{
    editor->SetMenuItems(items);
}

void PreferencesDialog::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    if (!isEnter)
        QDialog::keyPressEvent(event);
    else if (button != nullptr)
        button->click();
}

void PreferencesDialog::done(int result)
{
    LeaveField(); // before its owner stores the values
    QDialog::done(result);
}

// A field takes its value when it is left.
void PreferencesDialog::LeaveField()
{
    if (QWidget* field = focusWidget())
        field->clearFocus();
    loop.LetThrough();
}

void PreferencesDialog::TakeBack()
{
    LeaveField();
    for (const PanelValues& values : panelValues)
        values.Restore();
    loop.LetThrough();
    if (editor->Values() != first) {
        editor->SetValues(first);
        emit Changed(first);
    }
}

void PreferencesDialog::AddEditorPages()
{
    std::vector<std::string> commands;
    for (const CommandTable::Command& command : host.Commands().Registered())
        commands.push_back(command.name);
    editor->SetCommands(commands);
    editor->SetValues(first);
    connect(editor, &EditorPages::Changed, this, [this] { emit Changed(editor->Values()); });
    AddArea(editor, true);
    const QStringList names = editor->Titles();
    for (int page = 0; page < editor->count(); ++page)
        AddTitle(IconNamed("preferences-" + names[page].toLower()), names[page], editor->widget(page));
}

void PreferencesDialog::AddArea(QWidget* content, bool grows)
{
    auto* area = new QScrollArea;
    area->setWidget(content);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(grows);
    const QSize whole = content->sizeHint().expandedTo(content->size()) + QSize(24, 8);
    area->setMinimumSize(whole.boundedTo(screen()->availableSize() * 2 / 3)); // a small screen scrolls the page
    pages->addWidget(area);
}

void PreferencesDialog::AddTitle(const QIcon& icon, const QString& title, QWidget* page)
{
    titles->addItem(new QListWidgetItem(icon, title));
    search->AddPage(page);
}

void PreferencesDialog::ShowPage(int row)
{
    const int own = editor->count();
    pages->setCurrentIndex(row < own ? 0 : row - own + 1);
    if (row >= 0 && row < own)
        editor->setCurrentIndex(row);
}

void PreferencesDialog::AddPanels()
{
    for (const PreferencePanel& panel : host.Panels()) {
        long returned = 0;
        BWindow* window = host.MakePreferencePanel(panel.identifier, &returned);
        display.Drain();
        QWidget* content = display.TakeContent(window->LooperToken());
        panels.push_back(window->LooperToken());
        if (content == nullptr)
            continue;
        window->Show();
        loop.LetThrough();
        for (QLineEdit* field : content->findChildren<QLineEdit*>())
            field->setCursorPosition(0); // a long text is read from its beginning
        const std::string icon = host.Bundle().Directory()->path + "/Contents/Resources/" + panel.icon;
        AddArea(content, false);
        AddTitle(ReadIcns(icon), QString::fromStdString(panel.title), content);
        panelValues.emplace_back(*content);
    }
}

} // namespace wren
