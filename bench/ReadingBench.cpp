// Reads a source tree in the editor as a person does, on the offscreen platform, and measures how long each action
// takes to be answered. bench/reading runs this.
//
// Usage: reading_bench BUNDLE TREE INDEXES HOME ACTIONS SEED
//
// An action is answered when the text has been painted, or what was asked is shown; the first part of a list counts.
// Actions are drawn by lot. Prints a line of JSON for each, and the memory before and after.
#include "wren/core/Host.h"
#include "wren/desktop/DocumentActions.h"
#include "wren/desktop/Editor.h"
#include "wren/desktop/EditorActions.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/PlaceActions.h"
#include "wren/desktop/SymbolActions.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/symbols/MatchesModel.h"
#include "wren/desktop/symbols/MatchesPanel.h"
#include "wren/desktop/symbols/Palette.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kThinks{30}; // the reader, between two actions
constexpr std::chrono::seconds kPatience{60};
constexpr size_t kMostTabs = 20;

class PaintWitness : public QObject {
public:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        painted |= event->type() == QEvent::Paint && object == expected;
        return false;
    }
    QObject* expected = nullptr;
    bool painted = false;
};

class Reader {
public:
    Reader(const wren::DesktopOptions& options, const fs::path& tree, unsigned seed) : editor(options), lot(seed)
    {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(tree))
            if (entry.is_regular_file() && (entry.path().extension() == ".c" || entry.path().extension() == ".cpp"))
                files.push_back(entry.path());
        std::ranges::sort(files);
        if (files.empty())
            std::exit(1);
        qApp->installEventFilter(&witness);
        editor.Window().resize(1200, 800);
        editor.Show({{AnyFile(), 0, 0}});
        Wait([this] { return Symbols().Engine().Updates() > 0 && Symbols().IsIdle(); }, std::chrono::minutes(10));
    }

    void Act()
    {
        CloseOld();
        Rest();
        const auto [name, act] =
            kActions[std::discrete_distribution<size_t>({8, 14, 8, 4, 6, 4, 5, 5, 8, 14, 12, 2, 1})(lot)];
        MoveToAnyName();
        Settle();
        const auto start = Clock::now();
        const std::string shown = (this->*act)();
        const double taken = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
        std::printf("{\"action\": \"%s\", \"ms\": %.3f, \"at\": \"%s\"}\n", name, taken, shown.c_str());
        Settle();
        editor.Window().Tabs().CurrentView()->setFocus();
    }

private:
    using Action = std::string (Reader::*)(); // returns where it was

    wren::SymbolActions& Symbols() { return *editor.Actions().symbols; }
    wren::CodeView& View() { return *editor.Window().Tabs().CurrentView(); }
    size_t Below(size_t count) { return std::uniform_int_distribution<size_t>(0, count - 1)(lot); }
    std::string AnyFile() { return files[Below(files.size())]; }

    static void Rest()
    {
        QEventLoop loop;
        QTimer::singleShot(kThinks, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
    }
    static void Wait(const std::function<bool()>& holds, Clock::duration patience = kPatience)
    {
        const auto end = Clock::now() + patience;
        while (!holds()) {
            QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
            if (Clock::now() > end) {
                std::fputs("the editor does not answer\n", stderr);
                std::_Exit(1);
            }
        }
    }
    void Settle()
    {
        QTimer tick; // there may be nothing to wait for
        tick.start(5);
        Wait([this] { return Symbols().IsIdle(); });
    }
    void Painted()
    {
        witness.expected = View().viewport();
        witness.painted = false;
        View().viewport()->update();
        Wait([this] { return witness.painted; });
    }
    void Answered()
    {
        Wait([this] { return Symbols().Engine().IsIdle(); });
        Painted();
    }
    void Strike(QWidget& where, int key, const QString& text = "")
    {
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
        QApplication::sendEvent(&where, &down);
    }

    // Unsaved texts stay: closing one asks.
    void CloseOld()
    {
        const std::vector<wren::Document*> open = editor.TheHost().AllDocuments().All();
        for (const wren::Document* document : open)
            if (open.size() > kMostTabs && !editor.Window().Tabs().ViewOf(document->Id())->IsModified() &&
                document != editor.TheHost().Current()) {
                editor.Actions().documents.Close(document->Id());
                return;
            }
    }
    // A name with a call behind it if there is one near, else whatever is there.
    void MoveToAnyName()
    {
        const std::string text = View().Bytes();
        if (text.empty())
            return;
        const size_t from = Below(text.size());
        const size_t call = text.find('(', from);
        size_t at = call == std::string::npos ? from : call;
        while (at > 0 && (text[at - 1] == ' ' || text[at - 1] == '('))
            --at;
        View().GoTo(static_cast<long>(at > 0 ? at - 1 : at));
    }
    std::string Place()
    {
        const wren::Document* document = editor.TheHost().Current();
        return document == nullptr ? "" : document->Path() + ":" + std::to_string(View().Caret());
    }

    std::string Open()
    {
        const std::string path = AnyFile();
        editor.Actions().documents.Open(path);
        Painted();
        return path;
    }
    std::string Definition()
    {
        std::string place = Place();
        Symbols().GoTo(wren::Wanted::Definition);
        Answered();
        return place;
    }
    std::string Back()
    {
        editor.Actions().places.GoBack();
        Painted();
        return "";
    }
    std::string References()
    {
        std::string place = Place();
        Symbols().ListReferences();
        Wait([this] { return Symbols().Engine().IsIdle() || Symbols().Matches().Model().rowCount({}) > 0; });
        Painted();
        return place;
    }
    std::string Hover()
    {
        std::string place = Place();
        Symbols().Help().ShowMeaning();
        Answered();
        return place;
    }
    std::string Outline()
    {
        Symbols().Palettes().GoToSymbolOfText();
        Answered();
        Symbols().Palettes().ThePalette().Close();
        return Place();
    }
    std::string LettersIn(wren::Palette& palette)
    {
        auto* field = palette.findChild<QLineEdit*>("paletteField");
        const char* kNames[] = {"kmal", "inod", "list", "devi", "reg", "lock", "init", "page"};
        const char* name = kNames[Below(std::size(kNames))];
        for (const char* letter = name; *letter != '\0'; ++letter)
            Strike(*field, 0, QString(QChar(*letter)));
        Answered();
        palette.Close();
        return name;
    }
    std::string GoToSymbol()
    {
        Symbols().Palettes().GoToSymbol();
        return LettersIn(Symbols().Palettes().ThePalette());
    }
    std::string GoToFile()
    {
        Symbols().Palettes().GoToFile();
        return LettersIn(Symbols().Palettes().ThePalette());
    }
    std::string FindNext()
    {
        wren::CodeView::Search search;
        search.text = "return";
        View().Find(search);
        Painted();
        return Place();
    }
    std::string Scroll()
    {
        Strike(View(), Qt::Key_PageDown);
        Painted();
        return Place();
    }
    std::string Type()
    {
        const char letter = "\nint x = 1;"[typed++ % 11];
        if (letter == '\n')
            Strike(View(), Qt::Key_Return, "\r");
        else
            Strike(View(), 0, QString(QChar(letter)));
        Painted();
        return Place();
    }
    std::string Save()
    {
        editor.Actions().documents.Save();
        Painted();
        return Place();
    }
    // Another program changes a hundred files, and the reader goes on.
    std::string Checkout()
    {
        for (int changed = 0; changed < 100; ++changed)
            std::ofstream(AnyFile(), std::ios::app) << "\n/* checked out */\n";
        return Definition();
    }

    static constexpr std::pair<const char*, Action> kActions[] = {
        {"open", &Reader::Open},
        {"definition", &Reader::Definition},
        {"back", &Reader::Back},
        {"references", &Reader::References},
        {"hover", &Reader::Hover},
        {"symbols of the text", &Reader::Outline},
        {"go to symbol", &Reader::GoToSymbol},
        {"go to file", &Reader::GoToFile},
        {"find", &Reader::FindNext},
        {"scroll", &Reader::Scroll},
        {"type", &Reader::Type},
        {"save", &Reader::Save},
        {"definition after a checkout", &Reader::Checkout},
    };

    wren::Editor editor;
    PaintWitness witness;
    std::mt19937 lot;
    std::vector<std::string> files;
    size_t typed = 0;
};

// Kilobytes in memory that are the program's alone: the index is mapped, and its pages belong to the system.
long Memory()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("RssAnon:"))
            return std::atol(line.c_str() + 8);
    return 0;
}

} // namespace

int main(int count, char** words)
{
    if (count != 7) {
        std::fputs("usage: reading_bench BUNDLE TREE INDEXES HOME ACTIONS SEED\n", stderr);
        return 2;
    }
    qputenv("HOME", words[4]);
    const QApplication application(count, words);
    wren::DesktopOptions options;
    options.bundle = words[1];
    options.indexes = words[3];
    options.restoresSession = false;
    Reader reader(options, words[2], static_cast<unsigned>(std::atol(words[6])));
    const long before = Memory();
    for (long action = 0; action < std::atol(words[5]); ++action)
        reader.Act();
    std::printf("{\"memory before\": %ld, \"memory after\": %ld}\n", before, Memory());
    std::fflush(stdout);
    std::_Exit(0); // nobody can answer a question about the unsaved texts
}
