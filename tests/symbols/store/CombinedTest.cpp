// A project, the system's headers and open texts as one.

#include "symbols/store/Combination.h"

#include "tests/support/AllAnswers.h"
#include "tests/support/RandomSources.h"

#include <climits>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

using namespace symbols;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

SnapshotPointer IndexOf(const std::vector<std::pair<std::string, std::vector<tagging::Symbol>>>& files)
{
    SnapshotPointer snapshot;
    const auto writer = WriteInMemory(nullptr, [&](SnapshotPointer made) { snapshot = std::move(made); });
    for (const auto& [path, symbols] : files)
        writer->Put(path, {}, SourceOf(symbols));
    EXPECT_TRUE(writer->Commit());
    return snapshot;
}

std::shared_ptr<const OpenText> Open(const std::string& path, const std::vector<tagging::Symbol>& symbols)
{
    return std::make_shared<OpenText>(path, "text of " + path, SourceOf(symbols));
}

std::vector<std::string> Places(const SnapshotPointer& snapshot, std::string_view name)
{
    std::vector<std::string> places;
    for (const Symbol& symbol : snapshot->ByName(name, {}).found)
        places.push_back(std::string(snapshot->FileOf(symbol.file).path) + ":" + std::to_string(symbol.line));
    return places;
}

std::vector<std::string> OwnPaths(const Snapshot& snapshot)
{
    std::vector<std::string> paths;
    snapshot.ForEachOwnPath([&](std::string_view path) { paths.emplace_back(path); });
    return paths;
}

} // namespace

TEST(Combined, NullSnapshotsAreEmpty)
{
    const SnapshotPointer snapshot = Combined(nullptr, nullptr, "/", {});
    EXPECT_EQ(snapshot->Totals().files, 0u);
    EXPECT_FALSE(snapshot->FindFile("a.c"));
    EXPECT_TRUE(snapshot->Fuzzy("a", {}).found.empty());
    EXPECT_EQ(snapshot->FileOf(7).path, "");
    EXPECT_TRUE(snapshot->OfFile(7).found.empty());
}

TEST(Combined, ListsTheProjectBeforeTheSystem)
{
    const SnapshotPointer snapshot = Combined(IndexOf({{"z.c", {SymbolNamed("f", 3)}}}),
                                              IndexOf({{"usr/include/a.h", {SymbolNamed("f", 1)}}}), "/", {});
    EXPECT_THAT(Places(snapshot, "f"), ElementsAre("z.c:3", "/usr/include/a.h:1"));
    EXPECT_THAT(OwnPaths(*snapshot), ElementsAre("z.c"));
    const auto header = snapshot->FindFile("/usr/include/a.h");
    ASSERT_TRUE(header);
    EXPECT_TRUE(snapshot->FileOf(*header).isSystem);
    EXPECT_FALSE(snapshot->FindFile("usr/include/a.h"));
    EXPECT_FALSE(snapshot->FileOf(*snapshot->FindFile("z.c")).isSystem);
}

TEST(Combined, FuzzyMatchesAreTheProjectsFirstAmongEqualOnes)
{
    const SnapshotPointer snapshot = Combined(
        IndexOf({{"a.c", {SymbolNamed("areaOfShape", 1), SymbolNamed("shareArea", 2)}}}),
        IndexOf({{"usr/include/a.h", {SymbolNamed("area", 1), SymbolNamed("Aref", 2), SymbolNamed("are", 3)}}}), "/",
        {});
    for (const size_t limit : {size_t(1), size_t(2), size_t(3), size_t(5)}) {
        std::vector<std::string> names;
        int last = INT_MAX;
        for (const FuzzyMatch& match : snapshot->Fuzzy("are", {limit}).found) {
            names.emplace_back(match.symbol.name);
            EXPECT_LE(match.score, last);
            last = match.score;
        }
        const std::vector<std::string> all = {"are", "areaOfShape", "Aref", "area", "shareArea"};
        EXPECT_EQ(names, std::vector(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(limit)));
    }
}

TEST(Combined, AnOpenTextReplacesItsFile)
{
    const SnapshotPointer project = IndexOf({{"a.c", {SymbolNamed("f", 1)}}, {"b.c", {SymbolNamed("f", 2)}}});
    const SnapshotPointer snapshot =
        Combined(project, nullptr, "/", {Open("b.c", {SymbolNamed("f", 9), SymbolNamed("g", 10)})});
    EXPECT_THAT(Places(snapshot, "f"), ElementsAre("a.c:1", "b.c:9"));
    EXPECT_EQ(snapshot->Totals().files, 2u);
    EXPECT_EQ(snapshot->Totals().symbols, 3u);
    const FileNumber open = *snapshot->FindFile("b.c");
    EXPECT_TRUE(snapshot->FileOf(open).isOpen);
    EXPECT_EQ(snapshot->OpenText(open), "text of b.c");
    EXPECT_FALSE(snapshot->OpenText(*snapshot->FindFile("a.c")));
    EXPECT_THAT(Places(project, "f"), ElementsAre("a.c:1", "b.c:2"));
}

TEST(Combined, AnOpenTextCanBeANewFile)
{
    const SnapshotPointer snapshot = Combined(nullptr, nullptr, "/", {Open("new.c", {SymbolNamed("f", 1)})});
    EXPECT_THAT(Places(snapshot, "f"), ElementsAre("new.c:1"));
}

TEST(Combined, AnOpenHeaderOfTheSystemStaysOneOfTheSystem)
{
    const SnapshotPointer snapshot =
        Combined(IndexOf({{"z.c", {SymbolNamed("f", 1)}}}),
                 IndexOf({{"include/a.h", {SymbolNamed("f", 1)}}, {"include/c.h", {SymbolNamed("f", 1)}}}), "/usr",
                 {Open("/usr/include/b.h", {SymbolNamed("f", 5)}), Open("/usr/include/a.h", {SymbolNamed("f", 6)})});
    // The unknown header belongs to no index, so it counts as the project's.
    EXPECT_THAT(Places(snapshot, "f"),
                ElementsAre("/usr/include/b.h:5", "z.c:1", "/usr/include/a.h:6", "/usr/include/c.h:1"));
    EXPECT_TRUE(snapshot->FileOf(*snapshot->FindFile("/usr/include/a.h")).isSystem);
}

TEST(Combined, AnswersAsOneIndexOfTheSameTexts)
{
    for (unsigned seed = 0; seed < 8; seed++) {
        RandomSources random(seed);
        std::map<std::string, tagging::ParsedSource> files;
        SnapshotPointer project;
        const auto writer = WriteInMemory(nullptr, [&](SnapshotPointer made) { project = std::move(made); });
        for (int i = 0; i < 10; i++) {
            const std::string path = random.Path();
            files[path] = random.Source();
            writer->Put(path, {}, files[path]);
        }
        ASSERT_TRUE(writer->Commit());
        std::map<std::string, std::shared_ptr<const OpenText>> open;
        for (int i = 0; i < 5; i++) {
            const std::string path = random.Path();
            files[path] = random.Source();
            open[path] = std::make_shared<OpenText>(path, "text", files[path]);
        }
        std::vector<std::shared_ptr<const OpenText>> some, all;
        for (const auto& [path, text] : open)
            some.push_back(text);
        for (const auto& [path, source] : files)
            all.push_back(open.contains(path) ? open[path] : std::make_shared<OpenText>(path, "text", source));
        std::string expected = AllAnswers(*Combined(nullptr, nullptr, "/", all)).Text();
        std::string answers = AllAnswers(*Combined(project, nullptr, "/", some)).Text();
        // Only the texts that are open say so.
        for (std::string* each : {&expected, &answers})
            for (const auto& [what, by] : {std::pair<std::string, std::string>{" open\n", "\n"},
                                           {"text: text\n", "text: (closed)\n"},
                                           {"stamp: 4 0 0", "stamp: 0 0 0"}})
                for (size_t at = 0; (at = each->find(what, at)) != std::string::npos;)
                    each->replace(at, what.size(), by);
        ASSERT_EQ(answers, expected) << seed;
    }
}

namespace {

struct Layered {
    SnapshotPointer project, read, tags;

    SnapshotPointer Current() const
    {
        Layers layers;
        layers.project = project;
        layers.read = read;
        layers.tags = tags;
        return Combination(layers).Current();
    }
};

} // namespace

TEST(Combination, HasWhatWasReadUntilAnIndexHasIt)
{
    Layered layered;
    layered.read = IndexOf({{"a.h", {SymbolNamed("f", 1)}}, {"b.h", {SymbolNamed("f", 2)}}});
    EXPECT_THAT(Places(layered.Current(), "f"), ElementsAre("a.h:1", "b.h:2"));
    layered.project = IndexOf({{"a.h", {SymbolNamed("f", 5)}}});
    EXPECT_THAT(Places(layered.Current(), "f"), ElementsAre("a.h:5", "b.h:2"));
    EXPECT_EQ(layered.Current()->Totals().files, 2u);
}

TEST(Combination, PrefersAllOthersToTags)
{
    Layered layered;
    layered.project = IndexOf({{"a.c", {SymbolNamed("f", 5)}}, {"z.c", {SymbolNamed("g", 1)}}});
    layered.tags =
        IndexOf({{"a.c", {SymbolNamed("f", 1), SymbolNamed("generated", 2)}}, {"b.c", {SymbolNamed("f", 3)}}});
    const SnapshotPointer snapshot = layered.Current();
    EXPECT_THAT(Places(snapshot, "f"), ElementsAre("a.c:5", "b.c:3")) << "the tag's line is an older one";
    EXPECT_THAT(Places(snapshot, "generated"), ElementsAre("a.c:2"));
    EXPECT_EQ(snapshot->ByName("generated", {}).found[0].file, snapshot->FindFile("a.c")) << "one number for a file";
    EXPECT_EQ(snapshot->FilesWithLeaf("a.c").size(), 1u);
    EXPECT_EQ(snapshot->FilesWithLeaf("b.c").size(), 1u);
    EXPECT_EQ(snapshot->Fuzzy("generated", {}).found.size(), 1u);
    EXPECT_EQ(snapshot->ByPrefix("f", {}).found.size(), 2u);
    size_t files = 0;
    snapshot->ForEachFile([&](FileNumber, const File&) { return ++files > 0; });
    EXPECT_EQ(files, 3u);
    EXPECT_THAT(OwnPaths(*snapshot), UnorderedElementsAre("a.c", "b.c", "z.c"));
}

TEST(Combination, ShowsAFileAgainWhenItsTextIsClosed)
{
    Layers layers;
    layers.project = IndexOf({{"a.c", {SymbolNamed("f", 1)}}, {"b.c", {SymbolNamed("f", 2)}}});
    layers.read = IndexOf({{"a.c", {SymbolNamed("f", 9)}}, {"r.h", {SymbolNamed("f", 3)}}});
    Combination combination(layers);
    for (const char* path : {"a.c", "new.c", "r.h", "b.c"})
        combination.Put(Open(path, {SymbolNamed("f", 7)}));
    EXPECT_THAT(Places(combination.Current(), "f"), ElementsAre("a.c:7", "b.c:7", "new.c:7", "r.h:7"));
    combination.Put(Open("new.c", {SymbolNamed("f", 8)}));
    combination.Remove("a.c");
    combination.Remove("never.c");
    EXPECT_THAT(Places(combination.Current(), "f"), ElementsAre("a.c:1", "b.c:7", "new.c:8", "r.h:7"));
    combination.Remove("r.h");
    combination.Remove("new.c");
    EXPECT_THAT(Places(combination.Current(), "f"), ElementsAre("a.c:1", "b.c:7", "r.h:3"));
}
