#include "tests/desktop/sessions/DesktopStage.h"

#include "tests/desktop/hands/EditorIdle.h"
#include "tests/desktop/hands/QtKeys.h"
#include "vetch/app/Loop.h"
#include "vetch/display/Display.h"
#include "vetch/interface/BWindow.h"
#include "vetch/support/Clock.h"
#include "wren/core/Event.h"
#include "wren/core/Host.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/PluginButton.h"
#include "wren/desktop/PreferencesDialog.h"
#include "wren/desktop/display/WindowContent.h"
#include "wren/desktop/display/WindowPeer.h"
#include "wren/desktop/editor/CodeView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTest>

#include <algorithm>

namespace Event = wren::Event;

namespace {

constexpr BPoint kScriptsView = {700, 600}; // the text view's size as scripts know it
constexpr bigtime_t kReaching = 200'000;    // from an alert's button to the text; the clock stands still otherwise

wren::DesktopOptions OptionsFor(const std::string& bundle, const std::string& settingsFile, bool guarded,
                                wren::ScriptLog* log, const bool* keysWait)
{
    wren::DesktopOptions options;
    options.bundle = bundle;
    options.settingsFile = settingsFile;
    options.firstSettings.clear(); // sessions hold for every host: the plug-in has its own defaults
    options.restoresSession = false;
    options.understandsNames = false; // sessions are about the plug-in
    options.guardsTags = guarded;
    options.observer = log;
    options.openMatch = [log](const std::string& path, long line) { log->MatchOpened(path, line); };
    options.keysWait = [keysWait] { return *keysWait; };
    options.raisesWorksheet = false;
    return options;
}

QWidget* ContentNamed(const QString& name)
{
    for (QWidget* widget : QApplication::allWidgets())
        if (widget->objectName() == name)
            return widget;
    return nullptr;
}

template <class Widget>
Widget* Within(const QWidget* content, long item)
{
    return content == nullptr ? nullptr : content->findChild<Widget*>(wren::WindowContent::ItemName(item));
}

void ReadList(const QWidget& content, vetch::HeadlessDisplay::ListState& state)
{
    const QListView* list = content.findChild<QListView*>();
    const QAbstractItemModel& rows = *list->model();
    state.items.clear();
    for (int row = 0; row < rows.rowCount(); ++row)
        state.items.push_back(rows.index(row, 0).data().toString().toStdString());
    state.selected = list->currentIndex().row();
}

void ReadControl(const QWidget& content, vetch::HeadlessDisplay::ControlState& state)
{
    if (const auto* line = Within<QLineEdit>(&content, state.item))
        state.text = line->text().toStdString();
    else if (const auto* area = Within<QPlainTextEdit>(&content, state.item))
        state.text = area->toPlainText().toStdString();
    else if (const auto* button = Within<QAbstractButton>(&content, state.item)) {
        state.text = button->text().replace("&&", "&").toStdString();
        state.on = button->isChecked();
    }
}

// As far into the view as into the scripts', or as far beyond it.
float Scaled(float place, float scripts, float here)
{
    return place > scripts ? here + place - scripts : place * here / scripts;
}

void PressBothButtons(QWidget& widget, QPoint place, Qt::KeyboardModifiers held)
{
    const Qt::MouseButtons both = Qt::LeftButton | Qt::RightButton;
    QMouseEvent press(QEvent::MouseButtonPress, place, widget.mapToGlobal(QPointF(place)), Qt::LeftButton, both, held);
    QApplication::sendEvent(&widget, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, place, widget.mapToGlobal(QPointF(place)), Qt::LeftButton, {},
                        held);
    QApplication::sendEvent(&widget, &release);
}

template <class Field>
void TypeOver(Field& field, const std::string& text)
{
    field.setFocus();
    field.selectAll();
    QTest::keyClick(&field, Qt::Key_Delete);
    for (const char character : text)
        character == '\n' ? QTest::keyClick(&field, Qt::Key_Return) : QTest::keyClick(&field, character);
    field.clearFocus();
}

} // namespace

DesktopStage::DesktopStage(const std::string& bundle, const std::string& settingsFile, bool guarded)
    : editor(std::make_unique<wren::Editor>(OptionsFor(bundle, settingsFile, guarded, &log, &keysWait))),
      manager(std::make_unique<WindowManager>(editor->Window())),
      display(std::make_unique<RecordingDisplay>(*vetch::CurrentDisplay(), log, hands))
{
    vetch::SetDisplay(display.get());    // no window has been made yet
    TheHost().SetWorksheetDirectory(""); // its file's, as with scripts; the editor's own runs where it was started
}

DesktopStage::~DesktopStage()
{
    panels.clear();
    manager.reset();
    editor.reset(); // before the display that its last windows are closed on
}

wren::Host& DesktopStage::TheHost()
{
    return editor->TheHost();
}

void DesktopStage::Settle()
{
    SettleEditor(*editor, *manager);
}

// ----------------------------------------------------------------------------------------------------------- Documents

wren::Document* DesktopStage::Open(const std::string& path, const std::optional<std::string>& text, bool worksheet,
                                   std::string* error)
{
    bool opened = false;
    if (worksheet)
        opened = OpenWorksheet(path, text, error);
    else if (text)
        opened = OpenText(path, *text);
    else
        opened = editor->Actions().documents.Open(path);
    if (!opened && error->empty())
        *error = hands.TakeComplaint();
    if (!opened)
        return nullptr;
    if (!editor->Window().isVisible())
        editor->Show({});
    return TheHost().Current();
}

bool DesktopStage::OpenText(const std::string& path, const std::string& text)
{
    wren::Document* document = TheHost().AllDocuments().FindByPath(path);
    if (document != nullptr)
        editor->Window().Tabs().Raise(document->Id());
    else if (!editor->Actions().documents.OpenUnsaved(path, text))
        return false;
    TheHost().Current()->SetText(text);
    return true;
}

// The editor has a Worksheet of its own; the script's is a document that it is told to take for one.
bool DesktopStage::OpenWorksheet(const std::string& path, const std::optional<std::string>& text, std::string* error)
{
    return editor->Actions().documents.OpenAsWorksheet(path, text, error) != nullptr;
}

long DesktopStage::AnswerTo(long event, const std::function<void()>& doing)
{
    log.Forget();
    doing();
    return log.AnswerTo(event);
}

// Two things are the text component's own affair, and not so with scripts: what is typed in one go is taken back in one
// go, and a new line begins with the blanks of the one before.
long DesktopStage::PressKey(const std::string& key, const wren::KeyStroke& stroke)
{
    wren::CodeView& view = *editor->Window().Tabs().CurrentView();
    wren::Document& document = *TheHost().Current();
    const long lineStart = document.Selected().start + 1;
    const long returned = AnswerTo(Event::kKeyDown, [&] { ClickKey(view, key, stroke.modifiers); });
    const bool newLine = key == "enter" && document.CharAt(lineStart - 1) == '\n';
    if (const long blanks = document.Selected().start - lineStart; newLine && blanks > 0)
        document.Delete(lineStart, blanks);
    view.SendScintilla(QsciScintilla::SCI_BEGINUNDOACTION);
    view.SendScintilla(QsciScintilla::SCI_ENDUNDOACTION);
    return returned;
}

QPoint DesktopStage::PlaceOf(const wren::TextClick& click, wren::CodeView& view) const
{
    if (click.at) {
        const BRect bounds = view.TextBounds();
        return {static_cast<int>(bounds.left + Scaled(click.at->x, kScriptsView.x, bounds.Width())),
                static_cast<int>(bounds.top + Scaled(click.at->y, kScriptsView.y, bounds.Height()))};
    }
    const BPoint left = view.BaselineAt(click.offset);
    const BPoint right = view.BaselineAt(click.offset + 1);
    const float middle = right.y == left.y ? (left.x + right.x) / 2 : left.x + 2;
    return view.viewport()->mapFromGlobal(QPoint(static_cast<int>(middle), static_cast<int>(left.y) - 3));
}

// Where a click that looks nothing up puts the caret is nothing that scripts know of.
long DesktopStage::Click(const wren::TextClick& click)
{
    wren::CodeView& view = *editor->Window().Tabs().CurrentView();
    wren::Document& document = *TheHost().Current();
    const wren::Selection before = document.Selected();
    const QPoint place = PlaceOf(click, view);
    const Qt::KeyboardModifiers held = QtModifiers(click.modifiers);
    if (display->TakeAnswered())
        vetch::AdvanceVirtualClock(kReaching);
    const long returned = AnswerTo(Event::kMouseDown, [&] {
        if (click.buttons == 3)
            PressBothButtons(*view.viewport(), place, held);
        else
            QTest::mouseClick(view.viewport(), click.buttons == 2 ? Qt::RightButton : Qt::LeftButton, held, place);
    });
    if (returned != 2)
        document.Select(before.start, before.end);
    return returned;
}

// What is taken back has no name on the screen.
std::optional<std::string> DesktopStage::Undo()
{
    wren::CodeView& view = *editor->Window().Tabs().CurrentView();
    if (!view.isUndoAvailable())
        return std::nullopt;
    QTest::keyClick(&view, Qt::Key_Z, Qt::ControlModifier);
    return "";
}

long DesktopStage::RunCommand(const std::string& name)
{
    return AnswerTo(Event::kCommand, [&] {
        TheHost().Events().Command(name);
        editor->LetThrough();
    });
}

long DesktopStage::ClickButton(uint32 modifiers)
{
    return AnswerTo(Event::kButtonClicked,
                    [&] { QTest::mouseClick(&editor->Window().Button(), Qt::LeftButton, QtModifiers(modifiers)); });
}

long DesktopStage::ChooseFromButton(const std::optional<wren::MenuChoice>& choice)
{
    wren::PluginButton& button = editor->Window().Button();
    return AnswerTo(Event::kButtonPopUp, [&] {
        hands.ChooseNext(choice);
        const QPoint place = button.rect().center();
        QContextMenuEvent asked(QContextMenuEvent::Mouse, place, button.mapToGlobal(place));
        QApplication::sendEvent(&button, &asked);
    });
}

std::optional<bool> DesktopStage::ChooseFromMenu(const std::string& label)
{
    for (const QAction* title : editor->Window().menuBar()->actions()) {
        if (title->text() != "&Search")
            continue;
        QMenu& menu = *title->menu();
        emit menu.aboutToShow(); // the editor fills it then
        for (QAction* action : menu.actions()) {
            if (action->text().section('\t', 0, 0).toStdString() != label)
                continue;
            const bool enabled = action->isEnabled();
            action->trigger();
            return enabled;
        }
    }
    return std::nullopt;
}

// ------------------------------------------------------------------------------------------------------------- Windows

void DesktopStage::AnswerAlert(long button)
{
    display->AnswerAlert(button);
}

void DesktopStage::AnswerPanel(const std::optional<std::string>& path)
{
    display->AnswerPanel(path);
}

std::vector<wren::Stage::WindowState> DesktopStage::Windows() const
{
    std::vector<WindowState> windows = display->Record().Windows();
    for (WindowState& window : windows) {
        const QWidget* content = ContentNamed(wren::WindowContent::NameOf(window.token));
        window.visible = content != nullptr && content->isVisible();
        if (content == nullptr)
            continue;
        if (const auto* peer = dynamic_cast<const wren::WindowPeer*>(content->window()))
            window.title = peer->windowTitle().toStdString();
        if (window.list)
            ReadList(*content, *window.list);
        for (vetch::HeadlessDisplay::ControlState& control : window.controls)
            ReadControl(*content, control);
    }
    return windows;
}

QWidget* DesktopStage::ContentOf(long number) const
{
    for (const WindowState& window : display->Record().Windows())
        if (window.number == number)
            if (QWidget* content = ContentNamed(wren::WindowContent::NameOf(window.token)))
                return content->isVisible() ? content : nullptr;
    return nullptr;
}

template <class Widget>
Widget* DesktopStage::ItemOf(long window, long item) const
{
    return Within<Widget>(ContentOf(window), item);
}

namespace {

// Where the entry is once it was scrolled to; nothing when there is none.
std::optional<QPoint> ShownPlace(QListView* list, long index)
{
    if (list == nullptr || index < 0 || index >= list->model()->rowCount())
        return std::nullopt;
    const QModelIndex row = list->model()->index(static_cast<int>(index), 0);
    list->scrollTo(row);
    return list->visualRect(row).center();
}

} // namespace

bool DesktopStage::InvokeItem(long window, long index)
{
    const QWidget* content = ContentOf(window);
    auto* list = content == nullptr ? nullptr : content->findChild<QListView*>();
    const std::optional<QPoint> place = ShownPlace(list, index);
    if (place)
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, *place);
    return place.has_value();
}

bool DesktopStage::ClickItem(long window, long index)
{
    const QWidget* content = ContentOf(window);
    auto* list = content == nullptr ? nullptr : content->findChild<QListView*>();
    const std::optional<QPoint> place = ShownPlace(list, index);
    if (place)
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, *place);
    return place.has_value();
}

bool DesktopStage::Press(long window, long item)
{
    auto* button = ItemOf<QAbstractButton>(window, item);
    if (button == nullptr || button->isCheckable())
        return false;
    QTest::mouseClick(button, Qt::LeftButton);
    return true;
}

bool DesktopStage::Enter(long window, long item, const std::string& text)
{
    if (auto* line = ItemOf<QLineEdit>(window, item))
        TypeOver(*line, text);
    else if (auto* area = ItemOf<QPlainTextEdit>(window, item))
        TypeOver(*area, text);
    else
        return false;
    return true;
}

bool DesktopStage::Check(long window, long item, bool on)
{
    auto* box = ItemOf<QCheckBox>(window, item);
    if (box == nullptr)
        return false;
    if (box->isChecked() != on)
        QTest::keyClick(box, Qt::Key_Space);
    return true;
}

bool DesktopStage::Close(long window)
{
    QWidget* content = ContentOf(window);
    if (content == nullptr)
        return false;
    for (auto panel = panels.begin(); panel != panels.end(); ++panel) {
        if (panel->second.get() == content->window()) {
            panels.erase(panel);
            return true;
        }
    }
    content->window()->close(); // it asks, and closes when it is told to
    return true;
}

// The editor shows its panels in a dialog with a page of its own. One of another name only the core can make: it is a
// window then.
vetch::LooperToken DesktopStage::OpenPanel(const std::string& identifier, long* returned)
{
    if (!identifier.empty())
        return TheHost().OpenPreferences(identifier, returned)->LooperToken();
    log.Forget();
    std::unique_ptr<wren::PreferencesDialog> dialog = editor->Actions().preferences.MakeDialog();
    *returned = log.AnswerTo(Event::kOpenPanel);
    auto* titles = dialog->findChild<QListWidget*>();
    dialog->show();
    titles->setCurrentRow(titles->count() - 1);
    const vetch::LooperToken token = display->Record().Windows().back().token;
    panels[token] = std::move(dialog);
    return token;
}

void DesktopStage::SetScreen(BRect frame)
{
    display->SetScreen(frame);
}

void DesktopStage::SetInputPending(bool pending)
{
    keysWait = pending;
}
