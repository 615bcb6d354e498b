#include "plugin/SearchMenu.h"

#include "tests/plugin/PluginTest.h"
#include "vetch/interface/BWindow.h"

namespace {

class SearchMenu : public PluginTest {
protected:
    bool IsEnabled(const char* label) const { return searchMenu->FindItem(label)->IsEnabled(); }
};

TEST_F(SearchMenu, GetsThreeItemsBehindASeparator)
{
    searchMenu->AddItem(new BMenuItem("Find...", nullptr));
    EXPECT_EQ(Send(5), 0);
    EXPECT_EQ(host.log, (Calls{"AddMenuItem 2 Look up declaration DeclarationLookup 0 3",
                               "AddMenuItem 3 Look up definition DefinitionLookup 0 66",
                               "AddMenuItem 4 Look up... SymbolLookupDialog 0 67"}));
    ASSERT_EQ(searchMenu->CountItems(), 5);
    EXPECT_TRUE(searchMenu->ItemAt(1)->IsSeparator());
    EXPECT_TRUE(searchMenu->ItemAt(2)->IsStartDynamic());
    EXPECT_FALSE(searchMenu->ItemAt(2)->IsDynamic());
    for (const long follower : {3, 4}) {
        EXPECT_FALSE(searchMenu->ItemAt(follower)->IsStartDynamic()) << follower;
        EXPECT_TRUE(searchMenu->ItemAt(follower)->IsDynamic()) << follower;
    }
}

struct Case {
    const char* why;
    bool window;
    bool sheet;
    long document;
    bool enabled;
};

const Case kCases[] = {
    {"a document in a window", true, false, 1, true},
    {"another document", true, false, 2, true},
    {"no window", false, false, 1, false},
    {"a sheet hangs on the window", true, true, 1, false},
    {"no document", true, false, 0, false},
};

TEST_F(SearchMenu, EnablesTwoItemsForADocumentAndLeavesTheThirdAlone)
{
    Send(5);
    for (const Case& row : kCases) {
        host.window = row.window ? window : nullptr;
        window->SetShowingSheet(row.sheet);
        host.documentID = row.document;
        for (const bool dialogEnabled : {true, false}) {
            searchMenu->FindItem("Look up...")->SetEnabled(dialogEnabled);
            EXPECT_EQ(Send(6), 0) << row.why;
            EXPECT_EQ(IsEnabled("Look up declaration"), row.enabled) << row.why;
            EXPECT_EQ(IsEnabled("Look up definition"), row.enabled) << row.why;
            EXPECT_EQ(IsEnabled("Look up..."), dialogEnabled) << row.why;
        }
    }
    window->SetShowingSheet(false);
}

TEST_F(SearchMenu, DoesNothingWithoutItsItems)
{
    searchMenu->AddItem(new BMenuItem("Find...", nullptr));
    EXPECT_EQ(Send(6), 0);
    EXPECT_EQ(searchMenu->CountItems(), 1);
}

TEST_F(SearchMenu, DoesNothingWithoutAMenuCalledSearch)
{
    BMenuBar empty("menus");
    BMenuBar plain("menus");
    plain.AddItem(new BMenuItem("Search", nullptr));
    for (BMenuBar* other : {static_cast<BMenuBar*>(nullptr), &empty, &plain}) {
        framework.application->SetMenuBar(other);
        EXPECT_EQ(Send(5), 0);
        EXPECT_EQ(Send(6), 0);
        EXPECT_TRUE(host.log.empty());
    }
    EXPECT_EQ(searchMenu->CountItems(), 0);
}

} // namespace
