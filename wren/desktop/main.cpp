// wren-desktop: the editor that a person sits at.
#include "base/Descriptor.h"
#include "base/ExitStatus.h"
#include "wren/desktop/Arguments.h"
#include "wren/desktop/DocumentActions.h"
#include "wren/desktop/Endings.h"
#include "wren/desktop/OneInstance.h"
#include "wren/desktop/OpenRequests.h"
#include "wren/desktop/PaintThread.h"

#include <QApplication>
#include <QIcon>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <string>
#include <unistd.h>
#include <utility>

namespace {

void ComplainOfNoDisplay()
{
    std::fputs("wren: there is no display to open a window on.\n"
               "Set DISPLAY or WAYLAND_DISPLAY, or use commands that need no display: wren lookup and wren complete.\n",
               stderr);
}

bool HasDisplay()
{
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (const char* value = std::getenv(variable); value != nullptr && *value != '\0')
            return true;
    return false;
}

// Whether the user wants to read what the plug-in and Qt print.
bool IsVerbose()
{
    const char* value = std::getenv("WREN_VERBOSE");
    return value != nullptr && *value != '\0';
}

// The plug-in prints each command line that it has run, whose bytes may be anything: names of directories that came
// with a tree. A terminal would take some for its own commands, and the desktop's log has no use for them. What is run
// is in the log of TagsKeeper.
void KeepPluginQuiet()
{
    if (IsVerbose() && ::isatty(STDOUT_FILENO) != 1)
        return;
    const base::Descriptor nowhere(::open("/dev/null", O_WRONLY | O_CLOEXEC));
    if (nowhere.IsOpen())
        ::dup2(nowhere.Number(), STDOUT_FILENO);
}

// Qt ends the program when it cannot reach the display that is named. Its warnings are about the desktop's set-up, and
// nothing that the user of an editor asked for.
void HearQt(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type != QtFatalMsg) {
        if (type == QtCriticalMsg || IsVerbose())
            std::fprintf(stderr, "%s\n", qUtf8Printable(text));
        return;
    }
    if (text.contains("platform plugin")) {
        ComplainOfNoDisplay();
        ::_exit(base::exit_status::kUnavailable);
    }
    std::fprintf(stderr, "wren: %s\n", qUtf8Printable(text));
    std::abort();
}

// The theme's where it is installed; it need not be.
QIcon WindowIcon()
{
    QIcon own;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256})
        own.addFile(QString(":/hicolor/%1x%1/apps/wren.png").arg(size));
    return QIcon::fromTheme("wren", own);
}

} // namespace

int main(int count, char** words)
{
    std::signal(SIGCHLD, SIG_DFL); // the parent may have ignored it, and then no child could be waited for
    // The reader of the output may be gone, which is no reason to end. The signal is caught and not ignored, so that
    // programs that are started here get its default action back.
    std::signal(SIGPIPE, [](int) {});
    int status = 0;
    std::optional<wren::DesktopArguments> arguments = wren::ParseArguments(count, words, &status);
    if (!arguments)
        return status;
    if (!HasDisplay()) {
        ComplainOfNoDisplay();
        return base::exit_status::kUnavailable;
    }
    wren::Meeting meeting = wren::MeetRunning(&*arguments);
    if (meeting.status)
        return *meeting.status;
    for (wren::Place& place : arguments->places)
        place.file = wren::AbsolutePath(place.file);
    if (!arguments->options.folder.empty() && ::chdir(arguments->options.folder.c_str()) != 0)
        arguments->options.folder.clear(); // it has gone; the editor opens without it
    KeepPluginQuiet();
    qInstallMessageHandler(&HearQt);
    QApplication::setApplicationName("wren");
    QApplication::setApplicationVersion(WREN_VERSION);
    QApplication::setDesktopFileName("wren");
    QApplication application(count, words);
    if (!wren::HoldPaintThread()) {
        std::fputs("wren: the system cannot start another thread, and drawing needs one.\n", stderr);
        return base::exit_status::kNoThread;
    }
    QApplication::setWindowIcon(WindowIcon());
    wren::Editor editor(arguments->options);
    const wren::Endings endings(editor);
    std::optional<wren::OpenRequests> requests;
    if (meeting.claim)
        requests.emplace(editor, std::move(*meeting.claim));
    editor.Show(arguments->places);
    return QApplication::exec();
}
