#include "windows/ListGeometry.h"

#include <gtest/gtest.h>

namespace {

const BRect kScreen = {0, 0, 1280, 800};

struct Place {
    const char* why;
    BPoint caret;
    float width, height;
    BRect screen;
    BPoint place;
};

const Place kPlaces[] = {
    {"16 below the caret", {300, 200}, 200, 100, kScreen, {300, 216}},
    {"just fits below: the test is strict", {300, 684}, 200, 100, kScreen, {300, 700}},
    {"one pixel too low: 16 and its height above", {300, 685}, 200, 100, kScreen, {300, 569}},
    {"just fits above", {300, 717}, 200, 700, kScreen, {300, 1}},
    {"would touch the screen's top: runs off the bottom instead", {300, 716}, 200, 700, kScreen, {300, 732}},
    {"no room on either side: runs off the bottom", {300, 400}, 200, 780, kScreen, {300, 416}},
    {"just fits to the right: the test is strict", {1076, 200}, 200, 100, kScreen, {1076, 216}},
    {"one pixel too far right: ends 4 short of the edge", {1077, 200}, 200, 100, kScreen, {1076, 216}},
    {"caret beyond the right edge", {1500, 200}, 200, 100, kScreen, {1076, 216}},
    {"just fits between the edges", {500, 200}, 1275, 100, kScreen, {1, 216}},
    {"would touch the left edge: stays at the caret", {500, 200}, 1276, 100, kScreen, {500, 216}},
    {"wider than the screen: stays at the caret", {500, 200}, 2000, 100, kScreen, {500, 216}},
    {"nothing keeps the left edge on the screen", {-50, 200}, 200, 100, kScreen, {-50, 216}},
    {"both corrections at once", {1270, 790}, 200, 100, kScreen, {1076, 674}},
    {"a screen that starts elsewhere, below", {1300, 500}, 200, 100, {1280, 100, 2000, 700}, {1300, 516}},
    {"a screen that starts elsewhere, above touches its top",
     {1300, 600},
     200,
     484,
     {1280, 100, 2000, 700},
     {1300, 616}},
    {"a screen that starts elsewhere, at its right edge", {1990, 200}, 200, 100, {1280, 0, 2000, 700}, {1796, 216}},
};

TEST(ListGeometry, IsBesideTheCaretWhereThereIsRoom)
{
    for (const Place& row : kPlaces)
        EXPECT_EQ(PlaceBeside(row.caret, row.width, row.height, row.screen), row.place) << row.why;
}

ListMeasures Measures(long count, bool resizable, float chromeWidth = 0, float chromeHeight = 0)
{
    return {chromeWidth, chromeHeight, 140, 15, 11, count, resizable};
}

struct Fit {
    const char* why;
    ListMeasures list;
    ListFit fit;
};

const Fit kFits[] = {
    {"no entry", Measures(0, false), {150, 3, 50, 150, 48, 3}},
    {"one entry: the least height exceeds the greatest", Measures(1, false), {150, 18, 50, 150, 48, 18}},
    {"one entry, resizable: room for the scroll bar", Measures(1, true), {161, 18, 100, 161, 48, 18}},
    {"three entries: the two meet", Measures(3, false), {150, 48, 50, 150, 48, 48}},
    {"eight entries: no scroll bar", Measures(8, false), {150, 123, 50, 150, 48, 123}},
    {"eight entries, resizable", Measures(8, true), {161, 123, 100, 161, 48, 123}},
    {"nine entries: eight lines and a scroll bar", Measures(9, false), {161, 123, 50, 161, 48, 138}},
    {"nine entries, resizable: not two scroll bars", Measures(9, true), {161, 123, 100, 161, 48, 138}},
    {"41 entries can be pulled open", Measures(41, true), {161, 123, 100, 161, 48, 618}},
    {"chrome counts for the size and for the width's limit, not for the heights' limits",
     Measures(2, true, 6, 20),
     {167, 53, 100, 167, 48, 33}},
};

TEST(ListGeometry, FitsTheEntries)
{
    for (const Fit& row : kFits) {
        const ListFit fit = FitFor(row.list);
        EXPECT_EQ(fit.width, row.fit.width) << row.why;
        EXPECT_EQ(fit.height, row.fit.height) << row.why;
        EXPECT_EQ(fit.minWidth, row.fit.minWidth) << row.why;
        EXPECT_EQ(fit.maxWidth, row.fit.maxWidth) << row.why;
        EXPECT_EQ(fit.minHeight, row.fit.minHeight) << row.why;
        EXPECT_EQ(fit.maxHeight, row.fit.maxHeight) << row.why;
    }
}

} // namespace
