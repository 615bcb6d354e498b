// wren tags in a project with an index: the same tags file, from the index.
#include "tests/cli/TagsCommandFixture.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace {

class IndexedTags : public TagsCommand {
protected:
    IndexedTags()
    {
        environment.erase("WREN_CTAGS");
        environment["XDG_CACHE_HOME"] = tree / "cache";
        environment["HOME"] = tree / "home";
        tree.Write("project/.git/keep", "");
        tree.Write("project/shape.hpp", "struct Shape { int side; virtual int Area() const; };\n#define SIDE 2\n");
        tree.Write("project/deep/shape.cc",
                   "#include \"shape.hpp\"\nint Shape::Area() const { int x = 0; return x; }\n");
        tree.Write("project/Shelf.m", "@implementation Shelf\n- (void)put:(int)book at:(int)level {}\n@end\n");
    }

    void MakeIndex() const
    {
        const ProgramRun run = RunProgram({WREN_PROGRAM, "index", "project"}, tree.Path(), environment);
        EXPECT_EQ(run.status, 0) << run.errors;
    }

    // The lines that were executed; none when the tags come from the index.
    std::string Executed() const
    {
        const ProgramRun run = Run({"project", "--verbose"});
        EXPECT_EQ(run.status, 0) << run.errors;
        return run.errors;
    }

    // The tags file of a whole run, without the index.
    std::string WholeRun() const
    {
        std::map<std::string, std::string> without = environment;
        without["XDG_CACHE_HOME"] = tree / "empty";
        EXPECT_EQ(RunProgram(Command({"project"}), tree.Path(), without).status, 0);
        const std::string tags = Content(Tags());
        fs::remove(Tags());
        return tags;
    }

    void ExpectSameTagsFromIndex(const std::string& why) const
    {
        const std::string whole = WholeRun();
        EXPECT_EQ(Executed(), "") << why;
        EXPECT_EQ(Content(Tags()), whole) << why;
    }
};

} // namespace

TEST_F(IndexedTags, AreTheSameBytesAsThoseOfAWholeRun)
{
    MakeIndex();
    ExpectSameTagsFromIndex("at first");
    tree.Write("project/deep/new.cpp", "int fresh;\n");
    tree.Write("project/a.h", "int b(void);\n");
    fs::remove(tree / "project/Shelf.m");
    ExpectSameTagsFromIndex("after changes");
}

TEST_F(IndexedTags, OnlyFromTheIndexWhenThatIsWanted)
{
    const ProgramRun without = Run({"project", "--from-index"});
    EXPECT_EQ(without.status, 1);
    EXPECT_THAT(without.errors, HasSubstr("tags was not made: the index is not enough for it"));
    EXPECT_FALSE(fs::exists(Tags()));
    MakeIndex();
    EXPECT_EQ(Run({"project", "--from-index"}).status, 0);
    const std::string made = Content(Tags());
    EXPECT_EQ(made, WholeRun());
    EXPECT_EQ(Run({"project", "--from-index", "--dry-run"}).status, 2);
}

TEST_F(IndexedTags, SourcesThatTheIndexLeavesOutAreTagged)
{
    tree.Write("project/build/CMakeCache.txt", "");
    tree.Write("project/build/made.cpp", "struct Made { int inside; };\nint Made2(int);\n");
    MakeIndex();
    ExpectSameTagsFromIndex("build directories have no index");
    EXPECT_THAT(Content(Tags()), HasSubstr("build/made.cpp"));
}

TEST_F(IndexedTags, AWholeRunIsExplainedWhenTheIndexLeavesOutMany)
{
    tree.Write("project/build/CMakeCache.txt", "");
    for (int number = 0; number < 101; ++number) {
        tree.Write("project/build/made" + std::to_string(number) + ".c", "int made;\n");
        tree.Write("project/source" + std::to_string(number) + ".c", "int written;\n");
    }
    MakeIndex();
    const std::string said = Executed();
    EXPECT_THAT(said, HasSubstr("wren: the index leaves out 101 of 207 sources, such as ignored ones, so all are "
                                "parsed\n"));
    EXPECT_THAT(said, HasSubstr("executing "));
    EXPECT_THAT(Content(Tags()), HasSubstr("build/made100.c"));
}

TEST_F(IndexedTags, LinksAreTaggedUnderTheirOwnNames)
{
    tree.Write("project/plain.h", "typedef struct { int inside; } Plain;\nenum { kOne };\n");
    fs::create_symlink("../plain.h", tree / "project/deep/also.h");
    fs::create_symlink("../plain.h", tree / "project/deep/also.hpp");
    fs::create_hard_link(tree / "project/plain.h", tree / "project/twin.h");
    fs::create_symlink(tree / "home", tree / "project/home.h");
    MakeIndex();
    ExpectSameTagsFromIndex("links to a source");
    for (const char* name : {"plain.h", "deep/also.h", "deep/also.hpp", "twin.h"})
        EXPECT_THAT(Content(Tags()), HasSubstr(std::string("Plain\t") + name + "\t"));
}

TEST_F(IndexedTags, ADirectoryReachedThroughALinkHasTagsUnderItsNames)
{
    fs::create_directory_symlink("deep", tree / "project/way");
    MakeIndex();
    const auto tagsOfLink = [&](const std::map<std::string, std::string>& variables) {
        const ProgramRun run = RunProgram(Command({"project/way"}), tree.Path(), variables);
        EXPECT_EQ(run.status, 0) << run.errors;
        const std::string tags = Content(tree / "project/deep/tags");
        fs::remove(tree / "project/deep/tags");
        return tags;
    };
    std::map<std::string, std::string> without = environment;
    without["XDG_CACHE_HOME"] = tree / "empty";
    const std::string whole = tagsOfLink(without);
    EXPECT_EQ(tagsOfLink(environment), whole);
}

TEST_F(IndexedTags, AnIndexThatKnowsFewOfTheSourcesIsNotUpdatedFirst)
{
    MakeIndex();
    const auto state = [this] {
        return RunProgram({WREN_PROGRAM, "index", "project", "--status"}, tree.Path(), environment).output;
    };
    const std::string before = state();
    for (int i = 0; i < 20; ++i)
        tree.Write("project/new/" + std::to_string(i) + ".c", "int x;\n");
    EXPECT_THAT(Executed(), HasSubstr("find"));
    EXPECT_THAT(before, HasSubstr("files: 5\n"));
    EXPECT_EQ(state(), before);
}

TEST_F(IndexedTags, TagsThatFitIntoNoLineAreReported)
{
    tree.Write("project/long.c", "int " + std::string(1100, 'x') + ";\nint y;\n");
    MakeIndex();
    const std::string whole = WholeRun();
    EXPECT_EQ(Executed(), "wren: 1 tag fits into no line of a tags file, and is left out\n");
    EXPECT_EQ(Content(Tags()), whole);
}

TEST_F(IndexedTags, ThePatternsOfTheSettingsChooseTheSources)
{
    MakeIndex();
    tree.Write("settings", "DeclIndexSuffixes *.hpp\n");
    const ProgramRun run = Run({"project", "--settings", tree / "settings"});
    EXPECT_THAT(run.output, HasSubstr("tags of 1 file: ")) << run.errors;
    EXPECT_THAT(Content(Tags()), Not(HasSubstr("Shelf")));
}

TEST_F(IndexedTags, ADirectoryInsideOfAProjectHasItsOwnTags)
{
    MakeIndex();
    const ProgramRun run = Run({"project/deep"});
    EXPECT_THAT(run.output, HasSubstr("tags of 2 files: ")) << run.errors;
    EXPECT_THAT(Content(tree / "project/deep/tags"), Not(HasSubstr("Shelf")));
}

TEST_F(IndexedTags, WhatTheIndexCannotCoverIsTaggedByAWholeRun)
{
    MakeIndex();
    fs::create_symlink("missing.h", tree / "project/link.h"); // the tags program reports it
    EXPECT_THAT(Executed(), HasSubstr("find"));
}

// The tags program tries them again, reports them, and does not count them.
TEST_F(IndexedTags, SourcesOnWhichCtagsFailedAreTaggedByAWholeRun)
{
    const std::string ctags = tree.Write("failing", R"(#!/bin/sh
case "$*" in *--filter*) ;; *"-L -"*) batch=1 ;; *) exec ctags "$@" ;; esac
names=
while IFS= read -r line; do
    case $line in *bad.c) kill -SEGV $$ ;; esac
    names="$names$line
"
    [ "$batch" ] || printf '%s\n' "$line" | ctags "$@"
done
[ ! "$batch" ] || printf %s "$names" | ctags "$@"
)");
    fs::permissions(ctags, fs::perms::owner_all);
    environment["CPLUSTAGS_CTAGS"] = ctags;
    tree.Write("project/bad.c", "int bad;\n");
    MakeIndex();
    EXPECT_THAT(Executed(), HasSubstr("find"));
    EXPECT_THAT(Content(Tags()), HasSubstr("CPLUSTAGS_FILES\t5\t"));
    fs::rename(tree / "project/bad.c", tree / "project/good.c");
    ExpectSameTagsFromIndex("nothing fails now");
}

TEST_F(IndexedTags, WithoutAnIndexAWholeRunMakesThem)
{
    EXPECT_THAT(Executed(), HasSubstr("find"));
    EXPECT_FALSE(fs::exists(tree / "cache/declaration/index"));
}

TEST_F(IndexedTags, AnotherTagsProgramIsUsedAllTheSame)
{
    MakeIndex();
    UseProgram(kGoodProgram);
    EXPECT_THAT(Executed(), HasSubstr("find"));
}

TEST_F(IndexedTags, LeaveOtherFilesNamedTagsAlone)
{
    MakeIndex();
    tree.Write("project/tags", "a diary\n");
    const ProgramRun run = Run({"project"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(Content(Tags()), "a diary\n");
    EXPECT_FALSE(fs::exists(UnfinishedTags()));
}
