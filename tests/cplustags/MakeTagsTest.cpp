// The program's output for sources, with the ctags of this machine.

#include "tags/TagFile.h"
#include "tagsfile/SortedClaim.h"
#include "tests/cplustags/Workspace.h"
#include "tests/support/ShellWord.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/EntryRef.h"
#include "vetch/support/ShellEscape.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using Words = Workspace::Words;

TEST(MakeTags, TagsCAndCplusplus)
{
    const Workspace work;
    work.Write("a.c", "int f(void) { return 1; }\nint g(void);\n");
    work.Write("b.h", "namespace N { class C { public: void m(); int field; }; }\n#define M 1\n");
    const ProgramRun run = work.Run({"--excmd=number", "a.c", "b.h"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output + run.errors, "") << "there is nothing to say";
    EXPECT_EQ(work.Tags(), (Words{"C b.h 1;\" c namespace:N", "M b.h 2;\" d", "N b.h 1;\" n", "f a.c 1;\" f",
                                  "field b.h 1;\" m class:N::C"}));
    EXPECT_EQ(work.Pseudo("FILE_SORTED"), "1");
    EXPECT_EQ(work.Pseudo("PROGRAM_NAME"), "cplustags");
    EXPECT_EQ(work.Pseudo("CPLUSTAGS_FILES"), "2");
    EXPECT_EQ(work.Pseudo("CPLUSTAGS_TAGS"), "5");
}

TEST(MakeTags, TagsCplusplusOfEverySuffixThatImplementsTemplates)
{
    const Workspace work;
    for (const std::string suffix : {"inl", "ipp", "tpp"})
        work.Write("a." + suffix, "template <class T> class C" + suffix + " {};\n");
    EXPECT_EQ(work.Run({"--excmd=number", "a.inl", "a.ipp", "a.tpp"}).status, 0);
    EXPECT_EQ(work.Tags(), (Words{"Cinl a.inl 1;\" c", "Cipp a.ipp 1;\" c", "Ctpp a.tpp 1;\" c"}));
}

TEST(MakeTags, DeclaresTheFileSorted)
{
    const Workspace work;
    work.Write("a.c", "int f(void) { return 1; }\n");
    work.Write("b.c", "int g(void) { return 1; }\n");
    const auto expectClaim = [&](const char* when) {
        struct stat status;
        ASSERT_EQ(::stat((work / "tags").c_str(), &status), 0);
        EXPECT_EQ(work.Pseudo("CPLUSTAGS_SORTED"), tagsfile::SortedClaimValue(status.st_size)) << when;
        EXPECT_EQ(status.st_mtim.tv_nsec, tagsfile::SortedClaimNanoseconds(status.st_size)) << when;
        EXPECT_LE(std::abs(std::time(nullptr) - status.st_mtime), 60) << when;
        const std::string all = work.Content("tags");
        const size_t first = all.find(tagsfile::kSortedClaim);
        EXPECT_EQ(all.find(tagsfile::kSortedClaim, first + 1), std::string::npos) << when << ", once";
        EXPECT_TRUE(all.find("!_TAG_CPLUSTAGS_FILES") < first && first < all.find("!_TAG_CPLUSTAGS_TAGS")) << when;
    };
    EXPECT_EQ(work.Run({"a.c"}).status, 0);
    expectClaim("a new file");
    EXPECT_EQ(work.Run({"--append=yes", "b.c"}).status, 0);
    expectClaim("tags added");
    EXPECT_EQ(work.Tags().size(), 2u);
    EXPECT_EQ(work.Run({"-f", "-", "a.c"}).output.find(tagsfile::kSortedClaim), std::string::npos)
        << "standard output has no time";

    // Old lines of other programs are in order too, but not by name: a control character sorts before a tab.
    work.Write("tags", "!_TAG_PROGRAM_NAME\tcplustags\t//\nodd\x01z\tb.c\t1;\"\tf\nodd\tb.c\t1;\"\tf\n");
    EXPECT_EQ(work.Run({"--append=yes", "a.c"}).status, 0);
    ASSERT_EQ(work.Tags().size(), 3u);
    EXPECT_EQ(work.Pseudo("CPLUSTAGS_SORTED"), tagsfile::SortedClaimValue(0)) << "no size that a file has";
}

TEST(MakeTags, TagsPrototypesOnRequest)
{
    const Workspace work;
    work.Write("a.c", "int f(void);\n");
    work.Write("b.h", "int g(void);\n");
    EXPECT_EQ(work.Run({"--c-kinds=+p", "a.c", "b.h"}).status, 0);
    EXPECT_EQ(work.Tags(), (Words{"f a.c 1;\" p", "g b.h 1;\" p"})) << "headers are C++";
}

TEST(MakeTags, TagsObjectiveC)
{
    const Workspace work;
    work.Write("V.h", "#include <a.h>\n  @interface V : NSObject\n- (void) draw: (int) x\n  at: (int) y;\n"
                      "@property int width;\n@end\nint function(void);\n");
    work.Write("V.m", "@protocol Forward;\n@implementation V\n- (void) draw: (int) x\n  at: (int) y\n{\n}\n"
                      "static int helper(void) { return 1; }\n+ (id) make { return nil; }\n@end\n");
    work.Write("W.mm",
               "namespace N { class C {}; }\n@implementation W\n- (void) run {}\n@end\nint free_one() { return 1; }\n");
    work.Write("plain.h", "// an @interface in a comment\nclass Plain {};\n");
    const ProgramRun run = work.Run({"--c-kinds=+p", "V.h", "V.m", "W.mm", "plain.h"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(work.Tags(),
              (Words{"C W.mm 1;\" c namespace:N", "N W.mm 1;\" n", "Plain plain.h 2;\" c", "V V.h 2;\" X",
                     "V V.m 2;\" R", "W W.mm 2;\" R", "draw:at: V.h 3;\" m class:V", "draw:at: V.m 3;\" o class:V",
                     "free_one W.mm 5;\" f", "function V.h 7;\" p", "helper V.m 7;\" f", "make V.m 8;\" O class:V",
                     "run W.mm 3;\" o class:W", "width V.h 5;\" y class:V"}));
}

TEST(MakeTags, IgnoresMacrosEverywhere)
{
    const Workspace work;
    work.Write("a.h", "class EXPORT C {};\nvoid f() AVAILABLE(10);\n");
    work.Write("b.h", "EXPORT @interface D\n- (void) m AVAILABLE(10);\n@end\n");
    work.Write("list", "EXPORT\nAVAILABLE+\n");
    for (const char* list : {"EXPORT,AVAILABLE+", "EXPORT AVAILABLE+", "@list"}) {
        EXPECT_EQ(work.Run({"-I", list, "--c-kinds=+p", "a.h", "b.h"}).status, 0);
        EXPECT_EQ(work.Tags(), (Words{"C a.h 1;\" c", "D b.h 1;\" X", "f a.h 2;\" p", "m b.h 2;\" m class:D"})) << list;
    }
}

TEST(MakeTags, CanForceOneLanguage)
{
    const Workspace work;
    work.Write("vector", "namespace std { class vector {}; }\n");
    work.Write("py.h", "def f():\n    pass\n");
    work.Write("a.unknown", "@interface A\n@end\n");
    work.Write("b.h", "@interface B\n@end\nint namespace;\n");
    EXPECT_EQ(work.Run({"--language-force=C++", "vector"}).status, 0);
    EXPECT_EQ(work.Tags(), (Words{"std vector 1;\" n", "vector vector 1;\" c namespace:std"}));
    EXPECT_EQ(work.Run({"--language-force=Python", "py.h"}).status, 0);
    EXPECT_EQ(work.Tags(), (Words{"f py.h 1;\" f"}));
    EXPECT_EQ(work.Run({"--language-force=ObjectiveC", "a.unknown"}).status, 0);
    EXPECT_EQ(work.Tags(), (Words{"A a.unknown 1;\" X"}));
    EXPECT_EQ(work.Run({"--language-force=C", "b.h"}).status, 0);
    EXPECT_EQ(work.Tags(), (Words{"B b.h 1;\" X", "namespace b.h 3;\" v"})) << "the rest of it is C";
}

TEST(MakeTags, ALanguageThatCtagsDoesNotKnowIsAFailure)
{
    const Workspace work;
    work.Write("a.c", "int f;\n");
    const ProgramRun run = work.Run({"--language-force=Klingon", "a.c"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.errors.find("Klingon"), std::string::npos) << "ctags' own words: " << run.errors;
    EXPECT_EQ(work.Leaves(), Words{"a.c"});
}

TEST(MakeTags, NeverReadsAnMFileAsMatLab)
{
    const Workspace work;
    work.Write("a.m", "% function x = y\nfunction z = w(v)\nint c_function(void) { return 1; }\n");
    EXPECT_EQ(work.Run({"a.m"}).status, 0);
    for (const std::string& line : work.Tags())
        EXPECT_NE(line.find("c_function"), std::string::npos) << line;
}

TEST(MakeTags, IgnoresTheUsersOwnCtagsOptions)
{
    Workspace work;
    work.Write("a.c", "int f;\n");
    work.Write(".ctags.d/mine.ctags", "--langmap=C:.xyz\n--exclude=a.c\n");
    work.environment["HOME"] = work.Path();
    work.environment["CTAGS"] = "--exclude=a.c";
    EXPECT_EQ(work.Run({"a.c"}).status, 0);
    EXPECT_EQ(work.Tags(), Words{"f a.c 1;\" v"});
}

TEST(MakeTags, FilesAreNamedFromTheDirectoryOfTheTagsFile)
{
    const Workspace work;
    work.Write("p/s/a.c", "int a;\n");
    work.Write("q/b.c", "int b;\n");
    EXPECT_EQ(work.Run({"-f", "p/tags", "p/s/a.c", "q/b.c"}).status, 0);
    EXPECT_EQ(work.Tags("p/tags"), (Words{"a s/a.c 1;\" v", "b " + work / "q/b.c" + " 1;\" v"}));
}

TEST(MakeTags, ADashWritesToStandardOutput)
{
    const Workspace work;
    work.Write("a.c", "int a;\n");
    const ProgramRun run = work.Run({"-f", "-", "a.c"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_NE(run.output.find("!_TAG_CPLUSTAGS_TAGS\t1\t"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("\na\ta.c\t1;\"\tv\n"), std::string::npos) << run.output;
    EXPECT_EQ(work.Leaves(), Words{"a.c"});
}

TEST(MakeTags, AListMayBeAFileOrStandardInput)
{
    const Workspace work;
    work.Write("a.c", "int a;\n");
    work.Write("b.c", "int b;\n");
    work.Write("list", "a.c\nb.c");
    EXPECT_EQ(work.Run({"-L", "list"}).status, 0);
    EXPECT_EQ(work.Tags(), (Words{"a a.c 1;\" v", "b b.c 1;\" v"}));
    const ProgramRun piped =
        RunProgram({"/bin/sh", "-c", "printf 'a.c\\n' | " + ShellWord(CPLUSTAGS) + " -L - b.c"}, work.Path());
    EXPECT_EQ(piped.status, 0) << piped.errors;
    EXPECT_EQ(work.Tags(), (Words{"a a.c 1;\" v", "b b.c 1;\" v"}));
    const ProgramRun missing = work.Run({"-L", "nolist"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.errors.find("nolist"), std::string::npos) << missing.errors;
}

TEST(MakeTags, AnEmptyListMakesAnEmptyTagsFile)
{
    const Workspace work;
    work.Write("tags", "old\told.c\t1;\"\tf\n");
    const ProgramRun run = work.Run({"-L", "-"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(work.Tags(), Words{});
    EXPECT_EQ(work.Pseudo("CPLUSTAGS_TAGS"), "0");
    EXPECT_EQ(work.Pseudo("CPLUSTAGS_FILES"), "0");
}

TEST(MakeTags, NeedsNoCtagsForAnEmptyList)
{
    Workspace work;
    work.environment["CPLUSTAGS_CTAGS"] = "/none";
    EXPECT_EQ(work.Run({"-L", "-"}).status, 0);
}

TEST(MakeTags, ListsThatNameOnlyDirectoriesAreEmpty)
{
    const Workspace work;
    fs::create_directory(work / "d");
    EXPECT_EQ(work.Run({"d"}).status, 0);
    EXPECT_EQ(work.Tags(), Words{});
}

TEST(MakeTags, TheOldFileStaysWhenNoSourceCouldBeRead)
{
    const Workspace work;
    work.Write("tags", "old\told.c\t1;\"\tf\n");
    const ProgramRun run = work.Run({"mistyped.c"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.errors.find("cannot read mistyped.c: No such file or directory"), std::string::npos) << run.errors;
    EXPECT_EQ(work.Content("tags"), "old\told.c\t1;\"\tf\n");
}

TEST(MakeTags, UnreadableSourcesAreReportedAndTheRestIsTagged)
{
    const Workspace work;
    work.Write("a.c", "int a;\n");
    fs::create_symlink("loop.c", work / "loop.c");
    const ProgramRun run = work.Run({"--totals", "gone.c", "loop.c", "a.c"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(work.Tags(), Words{"a a.c 1;\" v"});
    EXPECT_NE(run.errors.find("cannot read gone.c"), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find("cannot read loop.c"), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find("1 file, 1 tag, "), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find("; 2 files could not be read\n"), std::string::npos) << run.errors;
}

TEST(MakeTags, PipesInTheListAreNotOpened)
{
    const Workspace work;
    work.Write("a.c", "int a;\n");
    ASSERT_EQ(::mkfifo((work / "pipe.c").c_str(), 0600), 0);
    EXPECT_EQ(work.Run({"pipe.c", "/dev/zero", "a.c"}).status, 0);
    EXPECT_EQ(work.Tags(), Words{"a a.c 1;\" v"});
}

TEST(MakeTags, ForeignFilesAreNotOverwritten)
{
    const Workspace work;
    work.Write("a.c", "int a;\n");
    work.Write("letter.txt", "Dear Sir or Madam\n");
    for (const char* target : {"letter.txt", "a.c", ".", "/dev/null"}) {
        const ProgramRun run = work.Run({"-f", target, "a.c"});
        EXPECT_EQ(run.status, 1) << target;
        EXPECT_NE(run.errors.find("is not a tags file"), std::string::npos) << run.errors;
    }
    EXPECT_EQ(work.Content("letter.txt"), "Dear Sir or Madam\n");
    EXPECT_EQ(work.Content("a.c"), "int a;\n");
    EXPECT_EQ(work.Leaves(), (Words{"a.c", "letter.txt"}));
}

TEST(MakeTags, ATargetInAMissingDirectoryIsAFailure)
{
    const Workspace work;
    work.Write("a.c", "int a;\n");
    const ProgramRun run = work.Run({"-f", "none/tags", "a.c"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.errors.find("none"), std::string::npos) << run.errors;
}

// The names of all tags with their sources, as lookups find them.
std::vector<std::string> Found(const std::string& tagsFile)
{
    std::vector<std::string> found;
    const BEntry entry(tagsFile.c_str());
    TagFile file(&entry, "", false);
    EXPECT_TRUE(file.Rewind());
    std::string name, qualifier;
    char kind;
    EntryRef ref;
    int line;
    while (file.NextMatch(name, qualifier, kind, ref, line, false, TagFile::AnyMatch()))
        found.push_back(name + " in " + ref.Path());
    file.Done();
    return found;
}

TEST(MakeTags, FileNamesOfAnyBytesAreReadBack)
{
    const Workspace work;
    const Words leaves = {"a b.c",         "back\\slash.c", "-dash.c", "quo'te\".c", "$(touch pwned).c",
                          "caf\xc3\xa9.c", "\xff\xfe.c",    ";a&b.c",  "*.c",        "#h.c",
                          " lead.c",       "@at.c",         "~.c",     "!bang.c"};
    Words words = {"-f", "tags", "--"};
    Words expected;
    for (size_t i = 0; i < leaves.size(); ++i) {
        const std::string name = std::string("v") + static_cast<char>('a' + i);
        expected.push_back(name + " in " + work.Write(leaves[i], "int " + name + ";\n"));
        words.push_back(leaves[i]);
    }
    const ProgramRun run = work.Run(words);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(Found(work / "tags"), expected);
    EXPECT_FALSE(fs::exists(work / "pwned"));
}

TEST(MakeTags, DirectoriesOfAnyNameGetTagsFiles)
{
    const Workspace work;
    for (const char* directory : {"new\nline", "tab\there", "return\rhere", "trailing ", "\xff"}) {
        const std::string source = work.Write(std::string(directory) + "/a.h", "@interface A\n@end\nint a;\n");
        work.Write("list", source + "\n");
        const std::string target = work / directory + "/tags";
        const ProgramRun run = work.Run({"-f", target, "-L", "list"});
        EXPECT_EQ(run.status, 0) << directory << run.errors;
        EXPECT_EQ(run.errors, "") << directory;
        EXPECT_EQ(Found(target), (Words{"A in " + source, "a in " + source})) << directory;
    }
}

TEST(MakeTags, FileNamesThatDoNotFitALineAreLeftOut)
{
    const Workspace work;
    work.Write("tab\there.c", "int a;\n");
    work.Write("line\nbreak.c", "int b;\n");
    work.Write("c.c", "int c;\n");
    work.Write("list", "tab\there.c\nline\nbreak.c\nc.c\n");
    const ProgramRun run = work.Run({"--totals", "-L", "list"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(work.Tags(), Words{"c c.c 1;\" v"});
    EXPECT_NE(run.errors.find("tab\\there.c is left out"), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find("line\\nbreak.c is left out"), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find("; 2 files had a name that cannot be written\n"), std::string::npos) << run.errors;
}

TEST(MakeTags, TagsThatAreTooLongAreLeftOutAndCounted)
{
    const Workspace work;
    work.Write("a.c", "int a;\nint " + std::string(1100, 'x') + ";\n");
    const ProgramRun run = work.Run({"--totals", "a.c"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(work.Tags(), Words{"a a.c 1;\" v"});
    EXPECT_NE(run.errors.find("1 file, 1 tag, "), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find("; 1 tag too long\n"), std::string::npos) << run.errors;
}

TEST(MakeTags, TagsThatAreTooLongAreReportedOnceWithTheirFiles)
{
    Workspace work;
    std::string text;
    for (char last = 'a'; last <= 'z'; ++last)
        text += "int " + std::string(1100, 'x') + last + ";\n";
    Words words;
    for (int number = 100; number < 140; ++number) {
        const std::string leaf = std::to_string(number) + ".c";
        work.Write(leaf, number == 120 ? "int a;\n" + text : "int a;\n");
        words.push_back(leaf);
    }
    work.Write("139.c", "int " + std::string(1100, 'y') + ";\n");
    const std::string said = "cplustags: 27 tags are left out, since readers reject lines that long: 26 of " +
                             work / "120.c" + ", 1 of " + work / "139.c" + "\n";
    for (const char* jobs : {"1", "4"}) {
        work.environment["CPLUSTAGS_JOBS"] = jobs;
        const ProgramRun run = work.Run(words);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.errors, said);
        EXPECT_EQ(work.Tags().size(), 39u);
    }
    words.insert(words.begin(), {"-f", "-"});
    EXPECT_EQ(work.Run(words).errors, said);
}

TEST(MakeTags, GivesTheSameResultForAnyNumberOfJobs)
{
    Workspace work;
    std::string list;
    for (const char* folder : {"cplustags", "tagging", "vetch", "tags", "scan", "tests"})
        for (const auto& entry : fs::recursive_directory_iterator(fs::path(TEST_DATA) / "../.." / folder))
            if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h")
                list += entry.path().string() + "\n";
    work.Write("list", list);
    for (const char* jobs : {"1", "2", "4", "7"}) {
        work.environment["CPLUSTAGS_JOBS"] = jobs;
        const ProgramRun run = work.Run({"--c-kinds=+p", "-f", std::string("tags") + jobs, "-L", "list"});
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_TRUE(work.Content(std::string("tags") + jobs) == work.Content("tags1")) << jobs << " jobs";
    }
    EXPECT_GT(work.Tags("tags1").size(), 1000u);
}

class Appending : public testing::Test {
protected:
    void SetUp() override
    {
        work.Write("a.c", "int a1;\nint a2;\n");
        work.Write("b.c", "int b1;\n");
        ASSERT_EQ(work.Run({"a.c", "b.c"}).status, 0);
    }

    ProgramRun Append(Words words)
    {
        words.insert(words.begin(), "--append=yes");
        const ProgramRun run = work.Run(words);
        const Words tags = work.Tags();
        EXPECT_EQ(work.Pseudo("CPLUSTAGS_TAGS"), std::to_string(tags.size()));
        EXPECT_TRUE(std::is_sorted(tags.begin(), tags.end()));
        return run;
    }

    Workspace work;
};

TEST_F(Appending, AddsTheTagsOfNewFiles)
{
    work.Write("ab.c", "int aa;\n");
    EXPECT_EQ(Append({"ab.c"}).status, 0);
    EXPECT_EQ(work.Tags(), (Words{"a1 a.c 1;\" v", "a2 a.c 2;\" v", "aa ab.c 1;\" v", "b1 b.c 1;\" v"}));
    EXPECT_EQ(work.Pseudo("CPLUSTAGS_FILES"), "3");
}

TEST_F(Appending, ReplacesTheTagsOfFilesThatAreNamed)
{
    work.Write("a.c", "int a2;\n");
    const ProgramRun run = Append({"--totals", "./a.c"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(work.Tags(), (Words{"a2 a.c 1;\" v", "b1 b.c 1;\" v"}));
    EXPECT_EQ(work.Pseudo("CPLUSTAGS_FILES"), "2");
    EXPECT_NE(run.errors.find("(in all 2 files, 2 tags)"), std::string::npos) << run.errors;
}

TEST_F(Appending, DropsTheTagsOfFilesThatAreGone)
{
    fs::remove(work / "b.c");
    EXPECT_EQ(Append({"a.c"}).status, 0);
    EXPECT_EQ(work.Tags(), (Words{"a1 a.c 1;\" v", "a2 a.c 2;\" v"}));
    EXPECT_EQ(work.Pseudo("CPLUSTAGS_FILES"), "1");
}

TEST_F(Appending, DropsTheTagsOfANamedFileThatIsGone)
{
    fs::remove(work / "b.c");
    const ProgramRun run = Append({"b.c"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(work.Tags(), (Words{"a1 a.c 1;\" v", "a2 a.c 2;\" v"}));
}

TEST_F(Appending, RecognisesAFileUnderAnyOfItsNames)
{
    work.Write("tags", "x\t" + work / "a.c" + "\t1;\"\tv\nx\t./b.c\t1;\"\tv\nx\tb\\.c\t1;\"\tv\nx\tnone.c\t1;\"\tv\n");
    EXPECT_EQ(Append({"a.c"}).status, 0);
    EXPECT_EQ(work.Tags(), (Words{"a1 a.c 1;\" v", "a2 a.c 2;\" v", "x ./b.c 1;\" v", "x b\\.c 1;\" v"}));
    EXPECT_EQ(Append({"b.c"}).status, 0);
    EXPECT_EQ(work.Tags(), (Words{"a1 a.c 1;\" v", "a2 a.c 2;\" v", "b1 b.c 1;\" v"}));
}

TEST_F(Appending, AnEmptyListChangesNothing)
{
    struct stat before;
    struct stat after;
    ASSERT_EQ(::stat((work / "tags").c_str(), &before), 0);
    EXPECT_EQ(Append({"-L", "-"}).status, 0);
    ASSERT_EQ(::stat((work / "tags").c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino) << "it is the same file";
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec);
    EXPECT_EQ(work.Tags().size(), 3u);
}

TEST_F(Appending, AnEmptyListMakesNoFile)
{
    EXPECT_EQ(work.Run({"--append=yes", "-f", "other", "-L", "-"}).status, 0);
    EXPECT_FALSE(fs::exists(work / "other"));
}

TEST_F(Appending, CreatesAMissingTagsFile)
{
    EXPECT_EQ(work.Run({"--append=yes", "-f", "other", "b.c"}).status, 0);
    EXPECT_EQ(work.Tags("other"), Words{"b1 b.c 1;\" v"});
}

TEST_F(Appending, RefusesAForeignFile)
{
    work.Write("letter", "Dear Sir\n");
    EXPECT_EQ(work.Run({"--append=yes", "-f", "letter", "b.c"}).status, 1);
    EXPECT_EQ(work.Content("letter"), "Dear Sir\n");
}

TEST_F(Appending, KeepsTagsOfAnotherProgram)
{
    work.Write("tags", "!_TAG_FILE_SORTED\t0\t//\nz\tb.c\t/^z$/;\"\tv\ty:z\na\tb.c\t1\n");
    EXPECT_EQ(Append({"a.c"}).status, 0);
    EXPECT_EQ(work.Tags(), (Words{"a b.c 1", "a1 a.c 1;\" v", "a2 a.c 2;\" v", "z b.c /^z$/;\" v y:z"}));
}

} // namespace
