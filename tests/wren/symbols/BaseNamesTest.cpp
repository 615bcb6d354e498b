#include "wren/symbols/BaseNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAreArray;

TEST(BaseNames, Cases)
{
    const struct {
        const char* why;
        const char* bases;
        std::vector<std::string> names;
    } kCases[] = {
        {"one", "Base", {"Base"}},
        {"several", "Base,Other", {"Base", "Other"}},
        {"blanks", " Base , a::Other ", {"Base", "a::Other"}},
        {"template arguments", "a::Base<x, y>,Other<z<w>>", {"a::Base", "Other"}},
        {"brackets that do not match", "Base<x,Other", {"Base"}},
        {"too many closing brackets", "Base>,Other", {"Base>", "Other"}},
        {"none", "", {}},
        {"commas only", ",,", {}},
    };
    for (const auto& each : kCases)
        EXPECT_THAT(wren::BaseNames(each.bases), ElementsAreArray(each.names)) << each.why;
}
