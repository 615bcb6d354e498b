#include "plugin/LookupCommands.h"

#include "settings/DeclarationSettings.h"
#include "tests/plugin/PluginTest.h"
#include "tests/support/RefusedThreads.h"
#include "vetch/storage/BEntry.h"
#include "windows/EntryWindow.h"
#include "windows/SearchWindow.h"

namespace {

class LookupCommands : public PluginTest {
protected:
    void LookUp(bool forceDialog = false, long type = 0)
    {
        const vetch::PluginCall call;
        SelectionSymbolLookup(&host, forceDialog, static_cast<LookupType>(type));
    }
    void LookUpAt(long offset, long type = 0)
    {
        const vetch::PluginCall call;
        SymbolLookupAt(&host, offset, static_cast<LookupType>(type));
    }
    Opened TakeOpened()
    {
        framework.Settle();
        return std::exchange(framework.application->opened, {});
    }
    bool DialogIsOpen()
    {
        framework.Settle();
        return EntryWindow::gEntryWin != nullptr && !framework.VisibleWindows().empty() &&
               !framework.VisibleWindows().at(0).list;
    }

    // Sources so small that a tags file older than they are counts as stale.
    void UseStaleTags(const std::string& lines)
    {
        UseTags(lines);
        for (const auto& file : std::filesystem::directory_iterator(home / "src"))
            if (file.path().filename() != "tags")
                std::ofstream(file.path()) << "tiny";
        const auto old = std::filesystem::last_write_time(home / "src/view.h") - std::chrono::hours(1);
        std::filesystem::last_write_time(home / "src/tags", old);
    }
};

TEST_F(LookupCommands, ASingleMatchOpensWithoutAWindow)
{
    UseSomeTags();
    host.SetMarked("x = once|;");
    LookUp();
    EXPECT_EQ(TakeOpened(), (Opened{{Source("view.h"), 3}}));
    EXPECT_TRUE(framework.Windows().empty());
    EXPECT_EQ(SearchWindow::gSearchWin, nullptr);
    EXPECT_EQ(framework.display.Beeps(), 0);
}

TEST_F(LookupCommands, SeveralMatchesAreListedAtTheIdentifier)
{
    UseSomeTags();
    host.SetMarked("x = dr|aw;");
    LookUp();
    framework.Settle();
    EXPECT_EQ(Open(), Calls{"list: draw - view.h; draw - view.cpp;"});
    // Below the "d" and not the caret; "draw - view.cpp" is 15 wide characters.
    EXPECT_EQ(framework.VisibleWindows().at(0).frame, (BRect{76, 112, 202, 145}));
    EXPECT_FALSE(framework.VisibleWindows().at(0).active);
    EXPECT_NE(SearchWindow::gSearchWin, nullptr);
    EXPECT_TRUE(TakeOpened().empty());
}

TEST_F(LookupCommands, ASingleMatchOpensWithoutAThread)
{
    UseSomeTags();
    host.SetMarked("x = once|;");
    Complaints complaints;
    const RefusedThreads refused;
    LookUp();
    EXPECT_EQ(TakeOpened(), (Opened{{Source("view.h"), 3}}));
    EXPECT_TRUE(framework.Windows().empty());
    EXPECT_TRUE(complaints.Take().empty()) << "it takes none";
}

TEST_F(LookupCommands, AListOrDialogWithoutAThreadIsReportedAndClosed)
{
    UseSomeTags();
    Complaints complaints;
    for (const bool forceDialog : {false, true}) {
        host.SetMarked("x = dr|aw;");
        {
            const RefusedThreads refused;
            LookUp(forceDialog);
            framework.Settle();
            LookUp(forceDialog);
            framework.Settle();
        }
        EXPECT_TRUE(framework.Windows().empty());
        EXPECT_EQ(SearchWindow::gSearchWin, nullptr);
        EXPECT_EQ(EntryWindow::gEntryWin, nullptr);
        EXPECT_EQ(complaints.Take(), Calls{NoThreadsFor("a window is not shown")});
        LookUp(forceDialog);
        framework.Settle();
        EXPECT_EQ(Open().size(), 1u) << "once there are threads again";
        framework.QuitWindows();
    }
}

TEST_F(LookupCommands, ALookupWithoutAMatchBeepsWithoutAWindow)
{
    UseSomeTags();
    host.SetMarked("missing|");
    LookUp();
    framework.Settle();
    EXPECT_EQ(framework.display.Beeps(), 1);
    EXPECT_TRUE(framework.Windows().empty());
    EXPECT_EQ(SearchWindow::gSearchWin, nullptr);
}

struct Type {
    const char* why;
    const char* symbol;
    long type;
    std::vector<std::pair<const char*, int>> opened;
};

const Type kTypes[] = {
    {"a declaration", "draw|", kLookUpDeclarations, {{"view.h", 12}}},
    {"a definition", "draw|", kLookUpDefinitions, {{"view.cpp", 34}}},
    {"an unknown type finds definitions", "draw|", 3, {{"view.cpp", 34}}},
    {"a negative one too", "draw|", -1, {{"view.cpp", 34}}},
    {"only declared, a definition wanted", "once|", kLookUpDefinitions, {}},
    {"only defined, a declaration wanted", "body|", kLookUpDeclarations, {}},
    {"only declared, anything wanted", "once|", kLookUpAny, {{"view.h", 3}}},
    {"only defined, anything wanted", "body|", kLookUpAny, {{"view.cpp", 7}}},
};

TEST_F(LookupCommands, FindDeclarationsOrDefinitionsByType)
{
    UseSomeTags();
    long beeps = 0;
    for (const Type& row : kTypes) {
        Opened expected;
        for (const auto& [file, line] : row.opened)
            expected.push_back({Source(file), line});
        for (const bool atOffset : {false, true}) {
            host.SetMarked(row.symbol);
            if (atOffset)
                LookUpAt(host.selectionEnd, row.type);
            else
                LookUp(false, row.type);
            EXPECT_EQ(TakeOpened(), expected) << row.why;
            beeps += expected.empty();
            EXPECT_EQ(framework.display.Beeps(), beeps) << row.why;
        }
    }
}

TEST_F(LookupCommands, AForcedDialogOpensWithoutASearch)
{
    UseSomeTags();
    host.SetMarked("once|");
    LookUp(true);
    EXPECT_TRUE(DialogIsOpen());
    EXPECT_TRUE(TakeOpened().empty());
    EXPECT_EQ(host.pointsAsked, 0);
}

TEST_F(LookupCommands, AnEmptySelectionOpensTheDialogForAnyType)
{
    UseSomeTags();
    for (const long type : {0, 1, 2}) {
        host.SetMarked("( | )");
        LookUp(false, type);
        EXPECT_TRUE(DialogIsOpen()) << type;
        ASSERT_TRUE(framework.display.Close(framework.VisibleWindows().at(0).number));
        framework.Settle();
    }
    EXPECT_EQ(framework.display.Beeps(), 0);
}

TEST_F(LookupCommands, AClickBesideAWordDoesNothing)
{
    UseSomeTags();
    host.SetMarked("( | )");
    LookUpAt(2);
    framework.Settle();
    EXPECT_TRUE(framework.Windows().empty());
    EXPECT_EQ(framework.display.Beeps(), 0);
    EXPECT_EQ(host.pointsAsked, 0);
}

TEST_F(LookupCommands, MissingTagsAreAskedAboutBeforeTheSelectionIsRead)
{
    for (const char* text : {"( | )", "draw|"}) {
        witness.alerts.clear();
        framework.display.AnswerAlert(0);
        host.SetMarked(text);
        LookUp();
        framework.Settle();
        EXPECT_EQ(witness.alerts.size(), 1u) << text;
        EXPECT_TRUE(framework.Windows().empty()) << text;
        EXPECT_EQ(framework.display.Beeps(), 0) << text;
    }
}

TEST_F(LookupCommands, AForcedDialogDoesNotOpenWithoutTags)
{
    framework.display.AnswerAlert(0);
    LookUp(true);
    framework.Settle();
    EXPECT_EQ(witness.alerts.size(), 1u);
    EXPECT_TRUE(framework.Windows().empty());
}

TEST_F(LookupCommands, AClickWithoutTagsAsksOnlyOnAWord)
{
    host.SetMarked("( | )");
    LookUpAt(2);
    EXPECT_TRUE(witness.alerts.empty());
    framework.display.AnswerAlert(0);
    host.SetMarked("draw|");
    LookUpAt(2);
    EXPECT_EQ(witness.alerts.size(), 1u);
}

struct Points {
    const char* why;
    const char* text;
    int asked;
};

const Points kPoints[] = {
    {"a single match", "once|", 1},
    {"no match", "missing|", 1},
    {"a list, which asks again to place itself", "draw|", 2},
};

TEST_F(LookupCommands, AskTheHostForThePlaceOfEveryLookup)
{
    UseSomeTags();
    for (const Points& row : kPoints) {
        host.SetMarked(row.text);
        host.pointsAsked = 0;
        LookUp();
        framework.Settle();
        EXPECT_EQ(host.pointsAsked, row.asked) << row.why;
    }
}

TEST_F(LookupCommands, ANewListDoesNotCloseTheOldOne)
{
    UseSomeTags();
    host.SetMarked("draw|");
    LookUp();
    LookUp();
    framework.Settle();
    EXPECT_EQ(Open().size(), 2u); // the events close, the lookups do not
}

TEST_F(LookupCommands, FindSelectorsAndQualifiedNames)
{
    UseTags(TagLine("initWithFrame:style:", "View.m", 9, 'o') + TagLine("size", "a.h", 5, 'p', "class:List") +
            TagLine("size", "b.h", 6, 'p', "class:Vector"));
    host.SetMarked("[[View alloc] initWi|thFrame:f style:s];");
    LookUp();
    EXPECT_EQ(TakeOpened(), (Opened{{Source("View.m"), 9}}));
    host.SetMarked("Vector::si|ze()");
    LookUp();
    EXPECT_EQ(TakeOpened(), (Opened{{Source("b.h"), 6}}));
}

struct Stale {
    const char* why;
    const char* text;
    long type;
    const char* rebuild;
    bool updates;
};

const Stale kStale[] = {
    {"after a match was opened", "once|", kLookUpAny, "on", true},
    {"after a list was shown", "draw|", kLookUpAny, "on", true},
    {"after a beep: the matches were of the wrong kind", "once|", kLookUpDefinitions, "on", true},
    {"no line of that name, so nothing was compared", "missing|", kLookUpAny, "on", false},
    {"the setting is off", "once|", kLookUpAny, "off", false},
};

TEST_F(LookupCommands, RebuildStaleTagsAfterwards)
{
    UseStaleTags(TagLine("draw", "view.h", 12, 'p') + TagLine("draw", "view.cpp", 34, 'f') +
                 TagLine("once", "view.h", 3, 'p'));
    for (const Stale& row : kStale) {
        Set("DeclAutomaticallyRebuild", row.rebuild);
        Seats::Reset();
        host.SetMarked(row.text);
        LookUp(false, row.type);
        const Calls expected = row.updates ? Calls{"CreateTags in " + (home / "src") + ": local, none"} : Calls{};
        EXPECT_EQ(Seats::calls, expected) << row.why;
        framework.Settle();
    }
}

TEST_F(LookupCommands, TheDialogRebuildsNoTags)
{
    UseStaleTags(TagLine("once", "view.h", 3, 'p'));
    LookUp(true);
    EXPECT_TRUE(Seats::calls.empty());
}

} // namespace
