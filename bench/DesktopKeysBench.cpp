// Types into the editor's window on the offscreen platform and measures how long each key takes to be drawn.
// bench/desktop runs this.
//
// The time of a stroke runs from the key's event until the event loop continues after painting the text. It includes
// the plug-in's work before that, such as searching. The plug-in's work on its own threads, or afterwards, counts only
// if it delays the painting.
#include "vetch/support/FThread.h"
#include "wren/desktop/Editor.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/editor/CodeView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

// Prefixes of many names, scopes, and characters that end them: lists open, are refilled, and close.
constexpr const char* kTyped = "    std::string strtoul(boost::shared_ptr<type> push_back, int initialize);\n"
                               "    if (get_value(begin, end) == detail::size_type())\n";

class PaintWitness : public QObject {
public:
    void Expect(QObject* expected)
    {
        text = expected;
        painted = false;
        over.reset();
    }
    bool Painted() const { return painted; }
    Clock::time_point Over() const { return over.value_or(Clock::now()); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            painted |= object == text;
        else if (painted && !over)
            over = Clock::now();
        return false;
    }

private:
    QObject* text = nullptr;
    bool painted = false;
    std::optional<Clock::time_point> over;
};

class Typist {
public:
    Typist(const wren::DesktopOptions& options, const std::string& file) : editor(options)
    {
        editor.Window().resize(1000, 700);
        editor.Show({{file, 0, 0}});
        if (editor.Window().Tabs().CurrentView()->Bytes().empty())
            std::exit(1); // it could not be read, and the editor has reported that
        qApp->installEventFilter(&witness);
        Rest(std::chrono::milliseconds(200));
    }

    // On its own line: text before other letters is not completed.
    void StartLine()
    {
        const std::string text = editor.Window().Tabs().CurrentView()->Bytes();
        GoTo(static_cast<long>(text.find('\n', text.size() / 2)));
        Strike('\n');
        Rest(std::chrono::milliseconds(200));
    }

    void GoTo(long offset)
    {
        editor.Window().Tabs().CurrentView()->GoTo(offset);
        Rest(std::chrono::milliseconds(1000)); // the names that equal the one at the caret are marked by then
    }
    long Length() { return static_cast<long>(editor.Window().Tabs().CurrentView()->Bytes().size()); }

    double Strike(char character)
    {
        const bool enter = character == '\n';
        const int key = enter ? int(Qt::Key_Return) : QChar::toUpper(static_cast<unsigned char>(character));
        return Press(key, enter ? QString("\r") : QString(QChar(character)));
    }

    double Press(int key, const QString& text = "")
    {
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
        witness.Expect(editor.Window().Tabs().CurrentView()->viewport());
        const auto start = Clock::now();
        QApplication::sendEvent(editor.Window().Tabs().CurrentView(), &down);
        while (!witness.Painted())
            QApplication::processEvents();
        return std::chrono::duration<double, std::milli>(witness.Over() - start).count();
    }

    // The pause between two keys of a typing user.
    static void Rest(std::chrono::milliseconds time)
    {
        QEventLoop loop;
        QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
    }

private:
    wren::Editor editor;
    PaintWitness witness;
};

void Print(const std::vector<double>& taken)
{
    std::printf("[");
    for (size_t i = 0; i < taken.size(); ++i)
        std::printf("%s%.4f", i == 0 ? "" : ", ", taken[i]);
    std::printf("]\n");
}

void Type(Typist& typist, long count, std::chrono::milliseconds pause, bool loading)
{
    const std::string typed = kTyped;
    std::vector<double> taken;
    bool began = false; // the third letter of a name starts the load
    for (long i = 0; i < count; ++i) {
        taken.push_back(typist.Strike(typed[static_cast<size_t>(i) % typed.size()]));
        Typist::Rest(pause);
        began |= !vetch::ThreadsAreIdle();
        if (loading && began && vetch::ThreadsAreIdle())
            break;
    }
    if (loading && !began) {
        std::fputs("no names were loaded\n", stderr);
        std::exit(1);
    }
    Print(taken);
}

// At the beginning, in the middle and at the end of a text that is one line: letters, and then steps of the caret.
void TypeInLine(Typist& typist, long count, std::chrono::milliseconds pause)
{
    std::vector<double> taken;
    for (const long part : {0, 1, 2}) {
        typist.GoTo(typist.Length() * part / 2);
        for (long i = 0; i < count; ++i) {
            taken.push_back(i < count / 2 ? typist.Strike("ab(c)"[i % 5]) : typist.Press(Qt::Key_Left));
            Typist::Rest(pause);
        }
    }
    Print(taken);
}

} // namespace

int main(int count, char** words)
{
    const std::string when = count == 7 ? words[1] : "";
    if (when != "loading" && when != "loaded" && when != "line") {
        std::fputs("usage: desktop_keys_bench loading|loaded|line BUNDLE SETTINGS FILE COUNT PAUSE\n", stderr);
        return 2;
    }
    const QApplication application(count, words);
    const std::chrono::milliseconds pause(std::max(0L, std::atol(words[6])));
    wren::DesktopOptions options;
    options.bundle = words[2];
    options.settingsFile = words[3];
    options.restoresSession = false;
    options.understandsNames = false; // what is measured is the plug-in
    Typist typist(options, words[4]);
    if (when != "line")
        typist.StartLine();
    if (when == "loaded") {
        for (const char character : std::string("strtou "))
            typist.Strike(character);
        do
            Typist::Rest(std::chrono::milliseconds(50));
        while (!vetch::ThreadsAreIdle());
    }
    const long keys = std::max(1L, std::atol(words[5]));
    if (when == "line")
        TypeInLine(typist, keys, pause);
    else
        Type(typist, keys, pause, when == "loading");
    std::fflush(stdout);
    std::_Exit(0); // nobody can answer a question about the unsaved text
}
