#include "wren/desktop/symbols/MatchesModel.h"

#include <QAbstractItemModelTester>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

wren::FoundPlace Place(const std::string& path, long line, const std::string& source)
{
    wren::FoundPlace place;
    place.path = "/project/" + path;
    place.shown = path;
    place.line = line;
    place.source = source;
    return place;
}

class Matches : public ::testing::Test {
protected:
    Matches()
    {
        model.Add({Place("a.c", 3, "Paint();"), Place("a.c", 9, "return Area();")});
        model.Add({Place("b.c", 1, "int Paint(void);")});
    }
    // Files, and below each its lines, as they are listed.
    std::vector<std::string> Rows() const
    {
        std::vector<std::string> rows;
        for (int file = 0; file < model.rowCount({}); ++file) {
            const QModelIndex parent = model.index(file, 0, {});
            rows.push_back(model.FileAt(parent));
            for (int row = 0; row < model.rowCount(parent); ++row)
                rows.push_back(model.data(model.index(row, 0, parent), Qt::DisplayRole).toString().toStdString());
        }
        return rows;
    }
    std::string At(const QModelIndex& index) const
    {
        const wren::FoundPlace* place = model.PlaceAt(index);
        return place == nullptr ? "" : place->shown + ":" + std::to_string(place->line);
    }

    wren::MatchesModel model;
    const QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(Matches, StandBelowTheirFiles)
{
    EXPECT_THAT(Rows(), ElementsAre("a.c", "3: Paint();", "9: return Area();", "b.c", "1: int Paint(void);"));
}

TEST_F(Matches, MorePlacesOfTheLastFileJoinIt)
{
    model.Add({Place("b.c", 4, "Paint();"), Place("c.c", 2, "Paint();")});
    EXPECT_THAT(Rows(), ElementsAre("a.c", "3: Paint();", "9: return Area();", "b.c", "1: int Paint(void);",
                                    "4: Paint();", "c.c", "2: Paint();"));
}

TEST_F(Matches, AreNarrowedByLettersOfTheLineInAnyCase)
{
    model.Narrow("paint");
    EXPECT_THAT(Rows(), ElementsAre("a.c", "3: Paint();", "b.c", "1: int Paint(void);"));
    EXPECT_EQ(model.ShownPlaces(), 2U);
    EXPECT_EQ(model.All(), 3U);
    model.Add({Place("b.c", 8, "Area();"), Place("b.c", 9, "PAINT;")});
    EXPECT_THAT(Rows(), ElementsAre("a.c", "3: Paint();", "b.c", "1: int Paint(void);", "9: PAINT;"));
    model.Narrow("");
    EXPECT_EQ(model.ShownPlaces(), 5U);
}

TEST_F(Matches, AreNarrowedByTheirFile)
{
    model.Narrow("b.c");
    EXPECT_THAT(Rows(), ElementsAre("b.c", "1: int Paint(void);"));
    model.Narrow("nothing has this");
    EXPECT_THAT(Rows(), IsEmpty());
}

TEST_F(Matches, StepsGoAcrossFilesAndEnd)
{
    QModelIndex at = model.Next({}, false);
    std::vector<std::string> visited;
    for (; at.isValid(); at = model.Next(at, false))
        visited.push_back(At(at));
    EXPECT_THAT(visited, ElementsAre("a.c:3", "a.c:9", "b.c:1"));
    EXPECT_EQ(At(model.Next({}, true)), "b.c:1");
    EXPECT_EQ(At(model.Next(model.index(1, 0, {}), true)), "a.c:9") << "before the second file";
    EXPECT_FALSE(model.Next(model.index(0, 0, {}), true).isValid()) << "before the first file";
}
