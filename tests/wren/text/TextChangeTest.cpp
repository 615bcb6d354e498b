#include "wren/text/TextChange.h"

#include <gtest/gtest.h>
#include <string>

using wren::ChangeBetween;
using wren::MovedPlace;
using wren::TextChange;

TEST(TextChange, CoversWholeLines)
{
    const struct {
        const char* why;
        const char* before;
        const char* after;
        TextChange change;
    } kCases[] = {
        {"nothing", "a\nb\n", "a\nb\n", {4, 0, 0}},
        {"nothing of nothing", "", "", {0, 0, 0}},
        {"a line in the middle", "a\nbb\nc\n", "a\nbxb\nc\n", {2, 3, 4}},
        {"a line more at the end", "a\n", "a\nb\n", {2, 0, 2}},
        {"a line less at the end", "a\nb\n", "a\n", {2, 2, 0}},
        {"a line more at the beginning", "b\n", "a\nb\n", {0, 0, 2}},
        {"one of equal lines more", "a\na\n", "a\na\na\n", {4, 0, 2}},
        {"one of equal lines less", "a\na\na\n", "a\na\n", {4, 2, 0}},
        {"the last line without its end", "a\nb", "a\nbc", {2, 1, 2}},
        {"the end of the last line", "a\nb", "a\nb\n", {2, 1, 2}},
        {"other line ends", "a\nb\n", "a\r\nb\r\n", {0, 4, 6}},
        {"all of it", "a\n", "", {0, 2, 0}},
        {"from nothing", "", "a\n", {0, 0, 2}},
    };
    for (const auto& each : kCases)
        EXPECT_TRUE(ChangeBetween(each.before, each.after) == each.change) << each.why;
}

TEST(TextChange, TurnsOneTextIntoTheOther)
{
    const std::string kTexts[] = {"", "\n", "a", "a\n", "a\n\n", "\na", "b\na\n", "a\nb\na\n", "a\na\nb\na", "ab\nb\n"};
    for (const std::string& before : kTexts) {
        for (const std::string& after : kTexts) {
            const TextChange change = ChangeBetween(before, after);
            std::string made = before;
            made.replace(change.offset, change.removed, after, change.offset, change.inserted);
            EXPECT_EQ(made, after) << "from \"" << before << "\"";
        }
    }
}

TEST(TextChange, MovesThePlacesBehindIt)
{
    const TextChange change = {10, 5, 2};
    const struct {
        const char* why;
        long place;
        long moved;
    } kCases[] = {{"in front", 3, 3},          {"at its beginning", 10, 10},
                  {"in what is gone", 11, 11}, {"behind what is new", 14, 12},
                  {"at its end", 15, 12},      {"behind", 20, 17}};
    for (const auto& each : kCases)
        EXPECT_EQ(MovedPlace(each.place, change), each.moved) << each.why;
}
