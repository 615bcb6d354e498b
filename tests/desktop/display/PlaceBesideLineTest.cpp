#include "wren/desktop/display/PlaceBesideLine.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

constexpr QRect kScreen(0, 0, 1000, 800);
constexpr QMargins kTitled(2, 24, 2, 2);

struct PlaceCase {
    const char* why;
    QRect content; // as the framework wants it
    QMargins frame;
    QRect line;
    QRect place;
};

const PlaceCase kPlaceCases[] = {
    {"no line", {100, 300, 200, 100}, kTitled, {}, {98, 276, 204, 126}},
    {"without a title bar nothing is covered",
     {100, 228, 200, 100},
     {0, 0, 0, 0},
     {100, 200, 500, 18},
     {100, 228, 200, 100}},
    {"a title bar would cover the line", {100, 228, 200, 100}, kTitled, {100, 200, 500, 18}, {98, 218, 204, 126}},
    {"large letters reach into the window",
     {100, 240, 200, 100},
     {0, 0, 0, 0},
     {100, 180, 500, 72},
     {100, 252, 200, 100}},
    {"a window above the line reaches down to it",
     {100, 590, 200, 120},
     kTitled,
     {100, 700, 500, 18},
     {98, 554, 204, 146}},
    {"no room below once the title bar is counted",
     {100, 690, 200, 100},
     kTitled,
     {100, 662, 500, 18},
     {98, 536, 204, 126}},
    {"no room above either", {100, 60, 200, 700}, kTitled, {100, 32, 500, 18}, {98, 50, 204, 726}},
    {"a narrowed list returns below its name",
     {20, 228, 200, 100},
     {0, 0, 0, 0},
     {700, 200, 300, 18},
     {700, 228, 200, 100}},
    {"but not beyond the screen", {20, 228, 500, 100}, {0, 0, 0, 0}, {700, 200, 300, 18}, {500, 228, 500, 100}},
    {"a list of the dialog's is far from the line",
     {300, 200, 200, 100},
     kTitled,
     {500, 600, 500, 18},
     {298, 176, 204, 126}},
};

TEST(PlaceBesideLine, Cases)
{
    for (const PlaceCase& c : kPlaceCases) {
        const QRect place = wren::PlaceBesideLine(c.content, c.frame, c.line, kScreen);
        EXPECT_EQ(place, c.place) << c.why << ": " << place.x() << " " << place.y() << " " << place.width() << " "
                                  << place.height();
    }
}

} // namespace
