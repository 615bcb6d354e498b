#include "wren/desktop/files/FilesModel.h"

#include <QAbstractItemModelTester>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using wren::FilesModel;
using wren::TreeEntry;

namespace {

constexpr auto kDirectory = TreeEntry::Kind::Directory;
constexpr auto kFile = TreeEntry::Kind::File;
constexpr auto kLink = TreeEntry::Kind::Link;

// Qt's own tester watches each change.
class Model : public ::testing::Test {
protected:
    Model()
    {
        QObject::connect(&model, &FilesModel::Wanted, [this](const std::string& path) { wanted.push_back(path); });
        model.Clear();
    }

    std::vector<std::string> Rows(const std::string& directory = "") const
    {
        std::vector<std::string> names;
        const QModelIndex parent = model.IndexOf(directory);
        for (int row = 0; row < model.rowCount(parent); ++row)
            names.push_back(model.index(row, 0, parent).data().toString().toStdString());
        return names;
    }

    FilesModel model{{}};
    const QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    std::vector<std::string> wanted;
};

} // namespace

// Without the tester, which opens directories itself.
TEST(UnwatchedModel, WantsADirectoryOnceWhenItIsOpened)
{
    FilesModel model{{}};
    std::vector<std::string> wanted;
    QObject::connect(&model, &FilesModel::Wanted, [&](const std::string& path) { wanted.push_back(path); });
    model.Clear();
    EXPECT_THAT(wanted, ElementsAre(""));
    model.SetEntries("", {{"src", kDirectory}, {"a.c", kFile}});
    const QModelIndex src = model.IndexOf("src");
    EXPECT_TRUE(model.hasChildren(src)) << "as long as nobody knows";
    EXPECT_TRUE(model.canFetchMore(src));
    model.fetchMore(src);
    model.fetchMore(src);
    EXPECT_THAT(wanted, ElementsAre("", "src"));
    model.SetEntries("src", {});
    EXPECT_FALSE(model.hasChildren(src));
    EXPECT_FALSE(model.canFetchMore(model.IndexOf("a.c")));
}

TEST_F(Model, RowsThatStayKeepWhatIsBelowThem)
{
    model.SetEntries("", {{"b", kDirectory}, {"d", kDirectory}, {"m.c", kFile}});
    model.SetEntries("d", {{"x.c", kFile}});
    const QPersistentModelIndex kept = model.IndexOf("d/x.c");
    model.SetEntries("", {{"a", kDirectory}, {"d", kDirectory}, {"l.c", kFile}, {"n.c", kFile}});
    EXPECT_THAT(Rows(), ElementsAre("a", "d", "l.c", "n.c"));
    EXPECT_THAT(Rows("d"), ElementsAre("x.c"));
    EXPECT_EQ(model.PathOf(kept), "d/x.c");
    model.SetEntries("", {});
    EXPECT_THAT(Rows(), IsEmpty());
}

TEST_F(Model, AFileInPlaceOfADirectoryHasNothingBelowIt)
{
    model.SetEntries("", {{"d", kDirectory}});
    model.SetEntries("d", {{"x.c", kFile}});
    model.SetEntries("", {{"d", kFile}});
    EXPECT_FALSE(model.IndexOf("d/x.c").isValid());
    EXPECT_FALSE(model.hasChildren(model.IndexOf("d")));
    model.SetEntries("d", {{"x.c", kFile}}); // an answer that comes late
    EXPECT_FALSE(model.IndexOf("d/x.c").isValid());
}

TEST_F(Model, LinksCannotBeChosen)
{
    model.SetEntries("", {{"a", kFile}, {"l", kLink}});
    EXPECT_TRUE(model.flags(model.IndexOf("a")).testFlag(Qt::ItemIsEnabled));
    EXPECT_FALSE(model.flags(model.IndexOf("l")).testFlag(Qt::ItemIsEnabled));
}

TEST_F(Model, KnowsWhichDirectoriesAreRead)
{
    model.SetEntries("", {{"a", kDirectory}, {"b", kDirectory}});
    model.SetEntries("b", {{"c", kDirectory}});
    EXPECT_THAT(model.ReadDirectories(), UnorderedElementsAre("", "b"));
}

TEST_F(Model, ShowsOnlySomeFilesAndTheirDirectories)
{
    model.ShowOnly({"a.c", "src/deep/x.c", "src/deep/y.c"});
    EXPECT_THAT(Rows(), ElementsAre("a.c", "src"));
    EXPECT_THAT(Rows("src/deep"), ElementsAre("x.c", "y.c"));
    EXPECT_THAT(wanted, ElementsAre("")) << "nothing more";
}

TEST_F(Model, NamesOfAnyBytesKeepTheirPaths)
{
    model.SetEntries("", {{"\xff", kDirectory}});
    model.SetEntries("\xff", {{"a\nb", kFile}});
    EXPECT_EQ(model.PathOf(model.index(0, 0, model.index(0, 0))), "\xff/a\nb");
}
