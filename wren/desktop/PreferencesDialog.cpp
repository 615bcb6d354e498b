#include "wren/desktop/PreferencesDialog.h"

#include "vetch/app/Loop.h"
#include "vetch/interface/BWindow.h"
#include "wren/core/Host.h"
#include "wren/core/PluginBundle.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/IcnsIcon.h"
#include "wren/desktop/display/QtDisplay.h"
#include "wren/desktop/state/EditorPage.h"

#include <QApplication>
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
    : QDialog(parent), host(host), display(display), loop(loop), editor(new EditorPage), titles(new QListWidget),
      pages(new QStackedWidget)
{
    setWindowTitle(tr("Preferences"));
    titles->setIconSize(QSize(32, 32));
    titles->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* row = new QHBoxLayout;
    row->addWidget(titles);
    row->addWidget(pages, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::accept);
    auto* column = new QVBoxLayout(this);
    column->addLayout(row, 1);

    std::vector<std::string> commands;
    for (const CommandTable::Command& command : host.Commands().Registered())
        commands.push_back(command.name);
    editor->SetCommands(commands);
    editor->SetValues(values);
    connect(editor, &EditorPage::Changed, this, [this] { emit Changed(editor->Values()); });
    AddPage(QApplication::windowIcon(), tr("Editor"), editor);
    AddPanels();
    titles->setFixedWidth(titles->sizeHintForColumn(0) + 2 * titles->frameWidth() + kBesideTitles);
    column->addWidget(buttons); // last, also for the Tab key
    // Enter belongs to the field that it is pressed in, which takes its value then.
    for (QPushButton* button : findChildren<QPushButton*>())
        button->setAutoDefault(false);
    titles->setAccessibleName(tr("Pages"));
    connect(titles, &QListWidget::currentRowChanged, pages, &QStackedWidget::setCurrentIndex);
    titles->setCurrentRow(0);
    titles->setFocus();
}

PreferencesDialog::~PreferencesDialog()
{
    // A field takes its value when it is left.
    if (QWidget* field = focusWidget())
        field->clearFocus();
    loop.LetThrough();
    for (const vetch::LooperToken token : panels)
        if (BLooper* panel = vetch::FindLooper(token))
            panel->Quit();
    loop.LetThrough();
}

void PreferencesDialog::SetMenuKeys(const std::vector<std::pair<QString, QKeySequence>>& keys)
{
    editor->SetMenuKeys(keys);
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

void PreferencesDialog::AddPage(const QIcon& icon, const QString& title, QWidget* page)
{
    auto* area = new QScrollArea;
    area->setWidget(page);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(page == editor);
    area->setMinimumSize(page->sizeHint().expandedTo(page->size()) + QSize(24, 8));
    pages->addWidget(area);
    titles->addItem(new QListWidgetItem(icon, title));
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
        AddPage(ReadIcns(icon), QString::fromStdString(panel.title), content);
    }
}

} // namespace wren
