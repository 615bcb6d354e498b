#include "QtDesk.h"

#include "wren/desktop/display/ListPeer.h"

#include <QListView>
#include <QPlainTextEdit>
#include <QScrollBar>

namespace {

class List : public QtDesk {
protected:
    // Shown with so many entries.
    ResultList* Shown(int count, long look = B_FLOATING_WINDOW_LOOK)
    {
        auto* window = new ResultList(look);
        window->Fill(count);
        window->Show();
        Settle();
        return window;
    }
    static QStringList Texts(const BWindow* window, int role = Qt::DisplayRole)
    {
        QStringList texts;
        const QAbstractItemModel* rows = In<QListView>(window)->model();
        for (int i = 0; i < rows->rowCount(); ++i)
            texts << rows->index(i, 0).data(role).toString();
        return texts;
    }
    static QPoint PlaceOf(const QListView* list, int row)
    {
        return list->visualRect(list->model()->index(row, 0)).center();
    }
    static int Selected(const BWindow* window) { return In<QListView>(window)->currentIndex().row(); }
};

TEST_F(List, ShowsTheItemsOfTheFrameworksList)
{
    ResultList* window = Shown(2);
    EXPECT_EQ(Texts(window), QStringList({"item 0", "item 1"}));
    Do(*window, [window] {
        window->Fill({"größer",
                      "a\xff"
                      "b",
                      "tail"});
        window->list->RemoveItem(2);
        window->items.pop_back();
        window->list->Select(1);
    });
    EXPECT_EQ(Texts(window), QStringList({QString::fromUtf8("größer"), QString::fromUtf8("a\uFFFDb")}));
    EXPECT_EQ(Selected(window), 1);
}

TEST_F(List, AClickSelectsAndADoubleClickInvokes)
{
    ResultList* window = Shown(4);
    QListView* list = In<QListView>(window);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, PlaceOf(list, 2));
    EXPECT_EQ(Selected(window), -1); // the framework has not answered yet
    Settle();
    EXPECT_EQ(Selected(window), 2);
    EXPECT_EQ(window->list->CurrentSelection(), 2);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, PlaceOf(list, 1));
    Settle();
    EXPECT_EQ(window->diary, std::vector<std::string>{"look at 1"});
}

TEST_F(List, OtherButtonsAndEmptyPlacesDoNothing)
{
    ResultList* window = Shown(2);
    QListView* list = In<QListView>(window);
    QTest::mouseClick(list->viewport(), Qt::RightButton, {}, PlaceOf(list, 1));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(5, list->viewport()->height() - 2));
    Settle();
    EXPECT_EQ(window->list->CurrentSelection(), -1);
}

TEST_F(List, TheSelectionIsScrolledTo)
{
    ResultList* window = Shown(100);
    QListView* list = In<QListView>(window);
    Do(*window, [window] { window->list->Select(99); });
    EXPECT_TRUE(list->viewport()->rect().contains(PlaceOf(list, 99)));
    Do(*window, [window] { window->Fill(100); });
    EXPECT_TRUE(list->viewport()->rect().contains(PlaceOf(list, 0)));
}

TEST_F(List, HasTheGivenColourWithReadableText)
{
    ResultList* window = Shown(1);
    const QListView* list = In<QListView>(window);
    struct {
        rgb_color ground;
        QColor text;
    } const kColours[] = {{{200, 200, 200, 255}, Qt::black}, {{20, 40, 90, 255}, Qt::white}};
    for (const auto& colour : kColours) {
        Do(*window, [window, &colour] { window->list->SetSelectionColor(colour.ground); });
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            EXPECT_EQ(list->palette().color(group, QPalette::Highlight),
                      QColor(colour.ground.red, colour.ground.green, colour.ground.blue));
            EXPECT_EQ(list->palette().color(group, QPalette::HighlightedText), colour.text);
        }
    }
}

TEST_F(List, EightLinesFitAsTheFrameworkCountsThem)
{
    for (const long look : {B_FLOATING_WINDOW_LOOK, B_BORDERED_WINDOW_LOOK}) {
        ResultList* window = Shown(8, look);
        const vetch::FontMetrics font = display.Metrics(12);
        const float line = font.ascent + font.descent + font.leading + 1;
        Do(*window, [=] { window->ResizeTo(200, 8 * line + 3); });
        const QListView* list = In<QListView>(window);
        EXPECT_EQ(list->visualRect(list->model()->index(0, 0)).height(), static_cast<int>(line)) << look;
        EXPECT_TRUE(list->viewport()->rect().contains(list->visualRect(list->model()->index(7, 0)))) << look;
        EXPECT_EQ(list->verticalScrollBar()->maximum(), 0) << look;
    }
}

TEST_F(List, OnlyAResultsListAlwaysShowsItsScrollBar)
{
    EXPECT_TRUE(In<QListView>(Shown(1))->verticalScrollBar()->isVisible());
    ResultList* popUp = Shown(1, B_BORDERED_WINDOW_LOOK);
    EXPECT_FALSE(In<QListView>(popUp)->verticalScrollBar()->isVisible());
    Do(*popUp, [popUp] { popUp->Fill(50); });
    EXPECT_TRUE(In<QListView>(popUp)->verticalScrollBar()->isVisible());
}

TEST_F(List, GrowsWithItsWindow)
{
    ResultList* window = Shown(3);
    Do(*window, [window] { window->ResizeTo(350, 260); });
    EXPECT_EQ(In<QListView>(window)->size(), QSize(350, 260));
}

TEST_F(List, KeysThatReachItsWindowGoToTheEditor)
{
    QPlainTextEdit editor;
    editor.show();
    editor.setFocus();
    display.SetMainWindow(&editor);
    ResultList* window = Shown(3);
    QTest::keyClick(PeerOf(window), Qt::Key_A);
    EXPECT_EQ(editor.toPlainText(), "a");
    QuitAll();
}

TEST_F(List, TheFrontListIsTheNewestOneThatIsNotAPopUp)
{
    EXPECT_EQ(display.FrontList().window, 0u);
    ResultList* older = Shown(2);
    ResultList* newer = Shown(5);
    Shown(3, B_BORDERED_WINDOW_LOOK);
    Do(*newer, [newer] { newer->list->Select(3); });
    const wren::QtDisplay::ListWindow front = display.FrontList();
    EXPECT_EQ(front.window, newer->LooperToken());
    EXPECT_EQ(front.handler, newer->Token());
    EXPECT_EQ(front.list, newer->list->Token());
    EXPECT_EQ(front.selected, 3);
    Do(*newer, [newer] { newer->Hide(); });
    EXPECT_EQ(display.FrontList().window, older->LooperToken());
}

TEST_F(List, OnlyWholeRowsAreSeen)
{
    ResultList* window = Shown(40);
    const QListView* list = In<QListView>(window);
    const int row = list->sizeHintForRow(0);
    for (const int extra : {0, 1, row / 2, row - 1}) {
        PeerOf(window)->resize(200, 5 * row + extra);
        Settle();
        EXPECT_EQ(list->viewport()->height() % row, 0) << extra;
        EXPECT_GT(list->viewport()->height(), list->height() - row) << extra;
    }
}

TEST_F(List, PathsAreShortenedAndWholeInTheToolTip)
{
    auto* window = new ResultList;
    window->Fill({"f : a.c - /home/me/work/<b>/fs", "f : a.c - /home/me/work/<b>/net"});
    window->Show();
    Settle();
    EXPECT_EQ(Texts(window, wren::ListPeer::kPainted),
              QStringList({QString::fromUtf8("f : a.c - …/<b>/fs"), QString::fromUtf8("f : a.c - …/<b>/net")}));
    EXPECT_EQ(Texts(window).first(), "f : a.c - /home/me/work/<b>/fs") << "for screen readers";
    const QModelIndex row = In<QListView>(window)->model()->index(1, 0);
    EXPECT_EQ(row.data(Qt::ToolTipRole).toString(), "<span>f : a.c - /home/me/work/&lt;b&gt;/net</span>");
}

TEST_F(List, CompletionsAreNotShortened)
{
    auto* window = new ResultList(B_BORDERED_WINDOW_LOOK);
    window->Fill({"f - /home/me/work/kernel/fs", "f - /home/me/work/kernel/net"});
    window->Show();
    Settle();
    EXPECT_EQ(Texts(window, wren::ListPeer::kPainted).first(), "f - /home/me/work/kernel/fs");
}

} // namespace
