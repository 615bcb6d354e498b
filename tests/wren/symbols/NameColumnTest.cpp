#include "wren/symbols/NameColumn.h"

#include <gtest/gtest.h>

TEST(NameColumn, Cases)
{
    const struct {
        const char* why;
        const char* line;
        const char* name;
        unsigned column;
    } kCases[] = {
        {"a function", "int Area(int side);", "Area", 5},
        {"the first of several", "Area Area(Area);", "Area", 1},
        {"not a part of a longer name", "AreaOf(Area)", "Area", 8},
        {"not the end of a longer name", "theArea = Area", "Area", 11},
        {"an operator", "bool operator==(Shape)", "operator==", 6},
        {"an operator that ctags writes with a blank", "bool operator==(Shape)", "operator ==", 6},
        {"a destructor", "    ~Shape();", "~Shape", 5},
        {"a selector", "- (void)put:(id)book at:(int)level", "put:at:", 9},
        {"behind bytes of several", "\xc3\xa9t\xc3\xa9(Area)", "Area", 7},
        {"made by a macro", "DEFINE(square)", "Area", 1},
        {"no name", "int Area;", "", 1},
        {"an empty line", "", "Area", 1},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(wren::NameColumn(each.line, each.name), each.column) << each.why;
}
