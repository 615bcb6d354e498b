#include "wren/text/PlaceStack.h"

#include <gtest/gtest.h>

using wren::PlaceStack;
using wren::VisitedPlace;

namespace {

VisitedPlace At(long offset)
{
    return {1, "/a.c", offset};
}

} // namespace

TEST(PlaceStack, LeadsBackAndForwardThroughPlaces)
{
    PlaceStack places;
    EXPECT_FALSE(places.CanGoBack());
    EXPECT_FALSE(places.Back(At(0)));
    places.Left(At(10));
    places.Left(At(20));
    EXPECT_EQ(places.Back(At(30)), At(20));
    EXPECT_EQ(places.Back(At(20)), At(10));
    EXPECT_FALSE(places.CanGoBack());
    EXPECT_EQ(places.Forward(At(10)), At(20));
    EXPECT_EQ(places.Forward(At(20)), At(30));
    EXPECT_FALSE(places.CanGoForward());
    EXPECT_FALSE(places.Forward(At(30)));
    EXPECT_EQ(places.Back(At(30)), At(20));
}

TEST(PlaceStack, ANewPlaceDropsThePlacesAhead)
{
    PlaceStack places;
    places.Left(At(10));
    places.Back(At(20));
    EXPECT_TRUE(places.CanGoForward());
    places.Left(At(10));
    EXPECT_FALSE(places.CanGoForward());
}

TEST(PlaceStack, KeepsARepeatedPlaceOnce)
{
    PlaceStack places;
    places.Left(At(10));
    places.Left(At(10));
    places.Back(At(20));
    EXPECT_FALSE(places.CanGoBack());
}

TEST(PlaceStack, KeepsTheLatestWhenThereAreTooMany)
{
    PlaceStack places;
    for (long offset = 0; offset <= static_cast<long>(PlaceStack::kMost); ++offset)
        places.Left(At(offset));
    std::optional<VisitedPlace> oldest;
    size_t steps = 0;
    for (; places.CanGoBack(); ++steps)
        oldest = places.Back(At(9999));
    EXPECT_EQ(steps, PlaceStack::kMost);
    EXPECT_EQ(oldest, At(1));
}

TEST(PlaceStack, MovesPlacesWithTheirText)
{
    const struct {
        const char* why;
        long offset, removed, inserted;
        long expected; // of the place at 100
    } kCases[] = {
        {"text before it comes", 10, 0, 5, 105},
        {"text before it goes", 10, 5, 0, 95},
        {"text up to it goes", 90, 10, 0, 90},
        {"text that begins at it comes", 100, 0, 5, 100},
        {"text behind it goes", 101, 50, 0, 100},
        {"its own text goes", 90, 20, 0, 90},
        {"its own text gets shorter", 90, 20, 5, 95},
        {"the whole file is read again", 0, 500, 600, 100},
        {"the whole file is read again, shorter", 0, 500, 50, 50},
    };
    for (const auto& each : kCases) {
        PlaceStack places;
        places.Left(At(100));
        places.TextChanged(1, each.offset, each.removed, each.inserted);
        EXPECT_EQ(places.Back(At(0)), At(each.expected)) << each.why;
    }
}

TEST(PlaceStack, MovesThePlacesAheadButNotOtherDocuments)
{
    PlaceStack places;
    places.Left({2, "/b.c", 50});
    places.Back(At(60));
    places.TextChanged(1, 0, 0, 1);
    EXPECT_EQ(places.Forward({2, "/b.c", 50}), At(61));
    EXPECT_EQ(places.Back(At(61)), (VisitedPlace{2, "/b.c", 50}));
}

TEST(PlaceStack, KeepsPlacesOfClosedDocumentsByTheirPath)
{
    PlaceStack places;
    places.Left(At(10));
    places.Left({2, "", 5});
    places.DocumentClosed(1);
    places.DocumentClosed(2);
    EXPECT_EQ(places.Back(At(0)), (VisitedPlace{0, "/a.c", 10})) << "and the one without a file is gone";
    EXPECT_FALSE(places.CanGoBack());
}

TEST(PlaceStack, FollowsADocumentThatIsReopenedOrNamed)
{
    PlaceStack places;
    places.Left(At(10));
    places.Left({2, "", 5});
    places.DocumentClosed(1);
    places.DocumentNamed(7, "/a.c");
    places.DocumentNamed(2, "/new.c");
    places.TextChanged(7, 0, 0, 3);
    EXPECT_EQ(places.Back(At(0)), (VisitedPlace{2, "/new.c", 5}));
    EXPECT_EQ(places.Back(At(0)), (VisitedPlace{7, "/a.c", 13}));
}
