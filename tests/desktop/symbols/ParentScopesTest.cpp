#include "wren/desktop/symbols/ParentScopes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

wren::PaletteItem Row(int depth, const std::string& scope, const std::string& name)
{
    wren::PaletteItem item;
    item.depth = depth;
    item.detail = scope;
    item.name = name;
    return item;
}

} // namespace

TEST(RowsOfAnOutline, DoNotRepeatTheScopeOfTheRowThatTheyStandBelow)
{
    const std::vector<wren::PaletteItem> rows = {
        Row(0, "", "wren"),           //
        Row(1, "wren", "Panel"),      //
        Row(2, "wren::Panel", "Add"), //
        Row(2, "Other", "Add"),       // a member that is defined here, of a class that is elsewhere
        Row(1, "wren", "Free"),       //
        Row(0, "wren::Panel", "End"), // defined outside of its namespace
    };
    EXPECT_THAT(wren::BelowTheirScopes(rows), ElementsAre(false, true, true, false, true, false));
}

TEST(RowsOfAnOutline, OfAFlatListKeepTheirScopes)
{
    EXPECT_THAT(wren::BelowTheirScopes({Row(0, "", "wren"), Row(0, "wren", "Panel")}), ElementsAre(false, false));
    EXPECT_THAT(wren::BelowTheirScopes({Row(3, "wren", "Panel")}), ElementsAre(false)) << "a depth without parents";
    EXPECT_THAT(wren::BelowTheirScopes({}), IsEmpty());
}
