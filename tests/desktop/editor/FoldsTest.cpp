// Blocks that are shown by their first line.
#include "wren/desktop/editor/Folds.h"
#include "wren/desktop/editor/CodeView.h"

#include <QPixmap>

#include <gtest/gtest.h>

namespace wren {
namespace {

constexpr const char* kBlocks = "int f()\n"         // 0
                                "{\n"               // 1
                                "    if (a) {\n"    // 2
                                "        b();\n"    // 3
                                "    }\n"           // 4
                                "}\n"               // 5
                                "struct S {\n"      // 6
                                "    int member;\n" // 7
                                "};\n";             // 8

std::vector<long> ShownLines(const CodeView& view)
{
    const ViewText text(view);
    std::vector<long> shown;
    for (long line = 0; line + 1 < text.Send(QsciScintilla::SCI_GETLINECOUNT); ++line)
        if (text.Send(QsciScintilla::SCI_GETLINEVISIBLE, line))
            shown.push_back(line);
    return shown;
}

using Lines = std::vector<long>;
const Lines kAll{0, 1, 2, 3, 4, 5, 6, 7, 8};

void ShowBlocks(CodeView& view, long line)
{
    view.SetLanguageFor("a.cpp");
    view.SetBytes(kBlocks);
    view.GoToLine(line + 1);
}

} // namespace

TEST(Folds, ToggleTheBlockThatBeginsAtTheCaretOrIsAroundIt)
{
    const std::pair<long, Lines> kCases[] = {{0, kAll},
                                             {1, {0, 1, 6, 7, 8}},
                                             {2, {0, 1, 2, 5, 6, 7, 8}},
                                             {3, {0, 1, 2, 5, 6, 7, 8}},
                                             {7, {0, 1, 2, 3, 4, 5, 6}}};
    for (const auto& [line, left] : kCases) {
        CodeView view;
        ShowBlocks(view, line);
        view.Apply(FoldCommand::Toggle);
        EXPECT_EQ(ShownLines(view), left) << line;
        EXPECT_TRUE(ViewText(view).Send(QsciScintilla::SCI_GETLINEVISIBLE,
                                        ViewText(view).Send(QsciScintilla::SCI_LINEFROMPOSITION, view.Caret())))
            << line;
        view.Apply(FoldCommand::Toggle);
        EXPECT_EQ(ShownLines(view), kAll) << line;
    }
}

TEST(Folds, OfABlockThatBeginsOutOfSightShowTheLinesAboveIt)
{
    CodeView view;
    view.resize(300, 200);
    view.show();
    view.SetLanguageFor("a.cpp");
    const std::string lines = QByteArray("    a();\n").repeated(100).toStdString();
    view.SetBytes(QByteArray("int a;\n").repeated(50).toStdString() + "int f()\n{\n" + lines + "}\n" +
                  QByteArray("int b;\n").repeated(50).toStdString());
    view.GoToLine(120);
    view.Apply(FoldCommand::Toggle);
    EXPECT_EQ(ViewText(view).Send(QsciScintilla::SCI_LINEFROMPOSITION, view.Caret()), 51);
    EXPECT_EQ(ViewText(view).Send(QsciScintilla::SCI_GETFIRSTVISIBLELINE), 48) << "the function's name is in sight";
}

TEST(Folds, AreAllMadeAndUndone)
{
    CodeView view;
    ShowBlocks(view, 3);
    view.Apply(FoldCommand::All);
    EXPECT_EQ(ShownLines(view), (Lines{0, 1, 6}));
    EXPECT_EQ(view.Caret(), 9) << "at the end of the line that stands for the block";
    view.Apply(FoldCommand::None);
    EXPECT_EQ(ShownLines(view), kAll);
    EXPECT_EQ(view.Bytes(), kBlocks);
}

TEST(Folds, UnfoldForWhatIsGoneToFoundOrSelected)
{
    CodeView view;
    const auto fold = [&view] {
        ShowBlocks(view, 6);
        view.Apply(FoldCommand::All);
        ASSERT_EQ(ShownLines(view), (Lines{0, 1, 6}));
    };
    fold();
    view.GoToLine(4);
    EXPECT_EQ(ShownLines(view), (Lines{0, 1, 2, 3, 4, 5, 6}));
    fold();
    CodeView::Search search;
    search.text = "member";
    EXPECT_TRUE(view.Find(search));
    EXPECT_EQ(ShownLines(view), (Lines{0, 1, 6, 7, 8}));
    fold();
    view.MakeStore()->Select(30, 31);
    EXPECT_EQ(ShownLines(view), (Lines{0, 1, 2, 3, 4, 5, 6}));
}

TEST(Folds, StayWhenTheLookChanges)
{
    CodeView view;
    ShowBlocks(view, 2);
    view.Apply(FoldCommand::Toggle);
    EditorLook look = view.Look();
    look.font.setPointSize(look.font.pointSize() + 3);
    look.dark = true;
    view.SetLook(look);
    EXPECT_EQ(ShownLines(view), (Lines{0, 1, 2, 5, 6, 7, 8}));
}

TEST(Folds, AreNotLookedForInTheWholeOfALargeText)
{
    CodeView view;
    view.SetLanguageFor("a.cpp");
    std::string large;
    while (static_cast<long>(large.size()) <= folds::kMostForAll)
        large += kBlocks;
    view.SetBytes(large);
    view.Apply(FoldCommand::All);
    EXPECT_TRUE(ViewText(view).Send(QsciScintilla::SCI_GETALLLINESVISIBLE));
    EXPECT_LT(ViewText(view).Send(QsciScintilla::SCI_GETENDSTYLED), 1'000'000);
}

TEST(Folds, HaveAMarginInTheColoursOfEachLook)
{
    CodeView view;
    ShowBlocks(view, 0);
    view.resize(400, 600);
    view.show();
    for (const bool dark : {false, true, false}) {
        EditorLook look = view.Look();
        look.dark = dark;
        view.SetLook(look);
        const QImage picture = view.viewport()->grab().toImage();
        const int below = picture.height() - 20; // the text
        const int margins = static_cast<int>(view.TextBounds().left);
        int shown = 0;
        for (int x = 0; x < margins; ++x)
            shown += picture.pixelColor(x, below) == ColoursOf(dark).margin ? 1 : 0;
        EXPECT_GE(shown + 2, margins) << "dark: " << dark;
        EXPECT_GT(shown, 20) << "dark: " << dark;
    }
}

} // namespace wren
