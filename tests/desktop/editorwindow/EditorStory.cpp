#include "tests/desktop/editorwindow/EditorStory.h"

#include "tests/desktop/hands/EditorIdle.h"
#include "vetch/support/Clock.h"
#include "wren/core/Host.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/NoticeBar.h"
#include "wren/desktop/display/WindowPeer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QStyle>
#include <QTabBar>
#include <QTest>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

using ::testing::IsEmpty;

namespace {

constexpr std::chrono::milliseconds kNever = std::chrono::minutes(2); // for what should have come long before

// From whatever brought the window to the front to a click in its text: one that comes at once is taken for part of
// that.
constexpr bigtime_t kReaching = 200'000;

// A window that was closed has asked Qt's loop to end, and no question is put before it has.
void LetTheLoopEnd()
{
    QMetaObject::invokeMethod(
        qApp, [] { QApplication::exit(0); }, Qt::QueuedConnection);
    QApplication::exec();
}

QAction* ActionNamed(const QList<QAction*>& actions, const char* name)
{
    for (QAction* action : actions)
        if (action->text().remove('&').section('\t', 0, 0) == QString::fromUtf8(name))
            return action;
    return nullptr;
}

std::string Readable(const QString& tab)
{
    return QString(tab).replace("&&", "&").toStdString();
}

} // namespace

EditorStory::EditorStory() : bundle(DECLARATION_BUNDLE)
{
    StartPainters();
    ::setenv("HOME", home.Path().c_str(), 1);
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        ::unsetenv(variable);
    std::filesystem::current_path(home.Path());
}

EditorStory::~EditorStory()
{
    End();
    EXPECT_THAT(hands.TakeComplaint(), IsEmpty()) << "asked, and not expected";
    EXPECT_FALSE(hands.HasAnswersLeft()) << "expected, and not asked";
    std::filesystem::current_path("/");
}

void EditorStory::Start(const std::vector<std::string>& files)
{
    End();
    wren::DesktopOptions options;
    options.bundle = FreshBundle();
    options.settingsFile = SettingsFile();
    options.folder = folder;
    options.program = program;
    options.understandsNames = understandsNames;
    options.indexesSystem = false; // it takes a minute
    editor = std::make_unique<wren::Editor>(options);
    manager = std::make_unique<WindowManager>(editor->Window());
    std::vector<wren::Place> places;
    for (const std::string& file : files)
        places.push_back({file, 0, 0});
    editor->Show(places);
    Settle();
}

bool EditorStory::Quit()
{
    editor->Window().close();
    const bool closed = !editor->Window().isVisible();
    Settle();
    if (closed)
        End();
    return closed;
}

void EditorStory::End()
{
    if (editor == nullptr)
        return;
    manager.reset();
    editor.reset();
    LetTheLoopEnd();
}

// A process that has loaded a library once will not start it anew; each start of the editor has a plug-in of its own.
std::string EditorStory::FreshBundle()
{
    if (!std::filesystem::is_directory(bundle))
        return bundle;
    const std::string copy = plugins / std::to_string(++starts) + "/Declaration.bundle";
    std::filesystem::create_directories(copy);
    std::filesystem::copy(bundle, copy, std::filesystem::copy_options::recursive);
    return copy;
}

void EditorStory::Settle()
{
    SettleEditor(*editor, *manager);
}

void EditorStory::SettleBackground()
{
    EXPECT_TRUE(editor->TheHost().WaitForBackground(kNever));
    Settle();
}

bool EditorStory::Until(const std::function<bool()>& holds)
{
    const auto settledAndHolds = [&] {
        Settle();
        return holds();
    };
    const bool held = QTest::qWaitFor(settledAndHolds, static_cast<int>(kNever.count()));
    EXPECT_TRUE(held);
    return held;
}

void EditorStory::Press(const char* keys)
{
    QTest::keySequence(&View(), QKeySequence(keys));
    Settle();
}

void EditorStory::Type(const std::string& text)
{
    for (const char character : text) {
        character == '\n' ? QTest::keyClick(&View(), Qt::Key_Return) : QTest::keyClick(&View(), character);
        Settle();
    }
}

void EditorStory::Choose(const char* menu, const char* item)
{
    QAction* title = ActionNamed(editor->Window().menuBar()->actions(), menu);
    ASSERT_NE(title, nullptr) << menu;
    emit title->menu()->aboutToShow(); // some are filled then
    QAction* action = ActionNamed(title->menu()->actions(), item);
    ASSERT_NE(action, nullptr) << item;
    EXPECT_TRUE(action->isEnabled()) << item;
    action->trigger();
    Settle();
}

void EditorStory::RunCommand(const char* name)
{
    QAction* action = ActionNamed(editor->Window().actions(), name);
    ASSERT_NE(action, nullptr) << name;
    action->trigger();
    Settle();
}

void EditorStory::CloseTab(int index)
{
    QTabBar* bar = editor->Window().Tabs().tabBar();
    const auto side = static_cast<QTabBar::ButtonPosition>(
        bar->style()->styleHint(QStyle::SH_TabBar_CloseButtonPosition, nullptr, bar));
    auto* button = qobject_cast<QAbstractButton*>(bar->tabButton(index, side));
    ASSERT_NE(button, nullptr);
    button->click();
    Settle();
}

void EditorStory::InPreferences(const std::function<void(QWidget& dialog)>& what)
{
    bool done = false;
    const auto act = [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        Settle();
        what(*dialog);
        Settle();
        dialog->close();
        done = true;
    };
    QMetaObject::invokeMethod(qApp, act, Qt::QueuedConnection);
    Choose("Edit", "Preferences\u2026");
    EXPECT_TRUE(done);
    Settle();
}

void EditorStory::ChooseIn(QWidget& dialog, const char* name, const char* item)
{
    auto* box = dialog.findChild<QComboBox*>(name);
    ASSERT_NE(box, nullptr) << name;
    ASSERT_GE(box->findText(item), 0) << item;
    while (box->currentIndex() != box->findText(item))
        QTest::keyClick(box, box->currentIndex() < box->findText(item) ? Qt::Key_Down : Qt::Key_Up);
}

void EditorStory::Tick(QWidget& dialog, const char* label)
{
    for (QCheckBox* box : dialog.findChildren<QCheckBox*>())
        if (box->text().remove('&') == QString::fromUtf8(label))
            return QTest::keyClick(box, Qt::Key_Space);
    FAIL() << "no box " << label;
}

void EditorStory::ClickText(long offset, Qt::KeyboardModifiers held)
{
    const BPoint left = View().BaselineAt(offset);
    const BPoint right = View().BaselineAt(offset + 1);
    const QPoint middle(static_cast<int>((left.x + right.x) / 2), static_cast<int>(left.y) - 3);
    vetch::AdvanceVirtualClock(kReaching);
    QTest::mouseClick(View().viewport(), Qt::LeftButton, held, View().viewport()->mapFromGlobal(middle));
    Settle();
}

void EditorStory::ComeBack()
{
    emit editor->Window().UserLeft();
    emit editor->Window().UserCame();
    Settle();
}

std::vector<std::string> EditorStory::Tabs() const
{
    std::vector<std::string> names;
    for (int index = 0; index < editor->Window().Tabs().count(); ++index)
        names.push_back(Readable(editor->Window().Tabs().tabText(index)));
    return names;
}

std::string EditorStory::CurrentTab() const
{
    return Readable(editor->Window().Tabs().tabText(editor->Window().Tabs().currentIndex()));
}

std::vector<std::string> EditorStory::PluginWindows()
{
    std::vector<std::string> titles;
    for (const QWidget* widget : QApplication::topLevelWidgets())
        if (const auto* peer = dynamic_cast<const wren::WindowPeer*>(widget); peer != nullptr && peer->isVisible())
            titles.push_back(peer->IsPopUp() ? "completions" : peer->windowTitle().toStdString());
    return titles;
}

std::string EditorStory::Notice() const
{
    const wren::NoticeBar& notices = editor->Window().Notices();
    return notices.isVisible() ? notices.Told().toStdString() : "";
}

std::string EditorStory::Status() const
{
    return editor->Window().statusBar()->currentMessage().toStdString();
}

wren::CodeView& EditorStory::View() const
{
    return *editor->Window().Tabs().CurrentView();
}

std::string EditorStory::Text() const
{
    return View().Bytes();
}

std::string EditorStory::Content(const std::string& file)
{
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return content.str();
}
