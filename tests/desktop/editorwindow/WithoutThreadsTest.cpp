// The editor where the system starts no more threads.
#include "tests/desktop/editorwindow/EditorStory.h"
#include "tests/support/NoThreads.h"
#include "tests/support/RefusedThreads.h"
#include "tests/support/WaitLimit.h"
#include "wren/desktop/PaintThread.h"
#include "wren/desktop/display/WindowPeer.h"

#include <QApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;
using ::testing::HasSubstr;

namespace {

class EditorWithoutThreads : public EditorStory {
protected:
    EditorWithoutThreads() { EXPECT_TRUE(wren::HoldPaintThread()); } // as its program does

    // Of unsaved texts, as they lie on the disk.
    std::vector<std::string> Copies() const
    {
        std::vector<std::string> copies;
        std::error_code none;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(InState("recovery"), none))
            if (entry.path().extension() == ".copy")
                copies.push_back(Content(entry.path()));
        return copies;
    }
    bool IsCopied(const std::string& text) const
    {
        for (const std::string& copy : Copies())
            if (copy.find(text) != std::string::npos)
                return true;
        return false;
    }
    static long OpenLists()
    {
        const QWidgetList all = QApplication::topLevelWidgets();
        return std::count_if(all.begin(), all.end(), [](const QWidget* widget) {
            return dynamic_cast<const wren::WindowPeer*>(widget) != nullptr && widget->isVisible();
        });
    }
    void StartWithTags()
    {
        home.Write("src/view.h", "void draw(); // and more\nvoid drawAll();\nint once;\n");
        home.Write("src/tags", "draw\tview.h\t1;\"\tp\ndraw\tview.h\t2;\"\tp\ndrawAll\tview.h\t2;\"\tp\n"
                               "drawAny\tview.h\t2;\"\tp\nonce\tview.h\t3;\"\tv\n");
        Start({home.Write("src/a.c", "draw\n")});
    }
};

} // namespace

TEST_F(EditorWithoutThreads, KeepsRunningAndCopiesUnsavedTexts)
{
    StartWithTags();
    SettleBackground();
    {
        const NoThreads none;
        if (!NoThreads::IsInForce())
            GTEST_SKIP() << "threads cannot be refused to this process";
        Type("typed without threads ");
        EXPECT_TRUE(Until([this] { return IsCopied("typed without threads"); }));
        EXPECT_THAT(Notice(), HasSubstr("copies of unsaved texts are written while you wait"));
        Type("and more ");
        EXPECT_TRUE(Until([this] { return IsCopied("without threads and more"); })) << "each time";
    }
    EXPECT_THAT(Text(), HasSubstr("typed without threads and more draw"));
}

TEST_F(EditorWithoutThreads, ReportsAMissingListOnceAndShowsItLater)
{
    StartWithTags();
    SettleBackground();
    const auto lookUp = [this] {
        Press("Ctrl+Home");
        RunCommand("SymbolLookup");
    };
    {
        const RefusedThreads refused;
        for (int time = 0; time < 3; ++time)
            lookUp();
        EXPECT_EQ(Notice(), NoThreadsFor("a window is not shown"));
        EXPECT_EQ(OpenLists(), 0);
    }
    lookUp();
    EXPECT_EQ(OpenLists(), 1);
}

TEST_F(EditorWithoutThreads, TypesWithoutNames)
{
    StartWithTags();
    SettleBackground();
    const NoThreads none;
    if (!NoThreads::IsInForce())
        GTEST_SKIP() << "threads cannot be refused to this process";
    Press("Ctrl+End");
    Type("dra");
    EXPECT_TRUE(Until([this] {
        return Notice().find("work in the background is put off until it is asked for again") != std::string::npos;
    }));
    Type(" dra once");
    EXPECT_THAT(Text(), HasSubstr("draw\ndra dra once"));
    EXPECT_TRUE(Until([this] { return IsCopied("dra dra once"); }));
}

// What Qt draws in parts, with other threads: it would wait for one that does not start. Nothing has been drawn before.
TEST(PaintThread, DrawsWhenNoOtherThreadStarts)
{
    ASSERT_TRUE(wren::HoldPaintThread());
    const NoThreads none;
    if (!NoThreads::IsInForce())
        GTEST_SKIP() << "threads cannot be refused to this process";
    const WaitLimit limit("a large picture had been drawn");
    QImage picture(2000, 2000, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&picture);
    QLinearGradient colours(0, 0, 2000, 2000);
    colours.setColorAt(0, Qt::red);
    colours.setColorAt(1, Qt::blue);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(colours);
    painter.drawEllipse(picture.rect());
    EXPECT_NE(picture.pixel(400, 400), picture.pixel(1600, 1600));
}

TEST(DesktopWithoutThreads, RefusesToStartWhenItCannotDraw)
{
    const TempDirectory home;
    const auto command = WithoutThreads({WREN_DESKTOP, home.Write("a.c", "int a;\n")});
    if (!command)
        GTEST_SKIP() << "threads cannot be refused to a program here (setpriv, prlimit)";
    const ProgramRun run = RunProgram(*command, home.Path(), {{"HOME", home.Path()}, {"QT_QPA_PLATFORM", "offscreen"}});
    EXPECT_EQ(run.status, 71);
    EXPECT_THAT(run.errors, HasSubstr("wren: the system cannot start another thread, and drawing needs one.\n"));
}
