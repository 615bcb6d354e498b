#include "tagging/SourceParser.h"
#include "tagging/ctags/CtagsProgram.h"

#include "tests/support/StandInForCtags.h"
#include "tests/support/TempDirectory.h"
#include "tests/tagging/SymbolTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <map>
#include <mutex>

namespace tagging {
namespace {

using Texts = std::vector<std::string>;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class Recorder final : public Observer {
public:
    void Say(const std::string& message) override
    {
        const std::lock_guard lock(mutex);
        said.push_back(message);
    }
    void Show(size_t, size_t) override {}

    std::mutex mutex;
    Texts said;
};

class SourceParserTest : public testing::Test {
protected:
    SourceParserTest() : signalBefore(std::signal(SIGPIPE, SIG_IGN))
    {
        settings.ctags.program = *FindCtags(work.Path());
        settings.ctags.directory = work.Path();
        settings.ctags.temporaries = work.Path();
        settings.jobs = 3;
    }
    ~SourceParserTest() override { std::signal(SIGPIPE, signalBefore); }

    void UseStandIn(const std::string& branches)
    {
        settings.ctags.program = work.Write("ctags", StandInForCtags(branches));
        std::filesystem::permissions(settings.ctags.program, std::filesystem::perms(0755));
    }

    base::Result<void> Parse(const Texts& files)
    {
        SourceParser parser(settings, recorder, cancel,
                            [&](size_t number, const FileStamp& stamp, std::unique_ptr<ParsedSource> source) {
                                const std::lock_guard lock(mutex);
                                EXPECT_TRUE(!sources.contains(number)) << number;
                                stamps[number] = stamp;
                                sources[number] = std::move(source);
                            });
        for (const std::string& file : files)
            parser.Add(file);
        return parser.Finish();
    }

    Texts NamesOfSymbols(size_t number)
    {
        Texts names;
        for (const Symbol& symbol : sources.at(number)->symbols)
            names.emplace_back(symbol.name);
        return names;
    }

    void (*const signalBefore)(int);
    const TempDirectory work;
    Settings settings;
    Recorder recorder;
    base::CancelToken cancel;
    std::mutex mutex;
    std::map<size_t, FileStamp> stamps;
    std::map<size_t, std::unique_ptr<ParsedSource>> sources;
};

FileStamp StampOf(const std::string& path)
{
    struct stat status;
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return FileStamp::Of(status);
}

TEST_F(SourceParserTest, ParsesAsTheParserOfTextsDoes)
{
    Texts files;
    const Texts texts = {"#include <a.h>\nint f(int a) { return a; }\n", "namespace n { struct { int x; } s; }\n",
                         "@interface A : B\n- (void)run;\n@end\nint after;\n", "template <class T> class C {};\n", ""};
    const Texts leaves = {"a.c", "b.cpp", "c.m", "d.h", "e.h"};
    for (size_t i = 0; i < texts.size(); ++i)
        files.push_back(work.Write(leaves[i], texts[i]));
    ASSERT_TRUE(Parse(files));
    ASSERT_EQ(sources.size(), texts.size());
    TextParser parser(settings);
    for (size_t i = 0; i < texts.size(); ++i) {
        const auto parsed = parser.Parse(leaves[i], texts[i], TextParser::Locals::No);
        ASSERT_TRUE(parsed) << parsed.Failure().Message();
        EXPECT_EQ(TextsOf(sources[i]->symbols), TextsOf((*parsed)->symbols));
        EXPECT_EQ(sources[i]->names, (*parsed)->names);
        EXPECT_EQ(sources[i]->language, (*parsed)->language);
        EXPECT_EQ(sources[i]->contentHash, ContentHash(texts[i]));
        EXPECT_EQ(stamps[i], StampOf(files[i]));
    }
    EXPECT_EQ(sources[2]->language, Language::ObjectiveC);
    EXPECT_EQ(sources[3]->language, Language::Cplusplus);
}

TEST_F(SourceParserTest, GivesASourceForEachOfManyFiles)
{
    Texts files;
    for (int i = 0; i < 1000; ++i)
        files.push_back(work.Write("d/s" + std::to_string(i) + ".c", "int v" + std::to_string(i) + ";\n"));
    ASSERT_TRUE(Parse(files));
    ASSERT_EQ(sources.size(), files.size());
    for (size_t i = 0; i < files.size(); ++i)
        EXPECT_THAT(NamesOfSymbols(i), ElementsAre("v" + std::to_string(i)));
}

TEST_F(SourceParserTest, KeepsTheNamesOfAFileThatCrashesCtags)
{
    UseStandIn("*s1.c) kill -SEGV $$;;\n");
    const Texts files = {work.Write("s0.c", "int zero;"), work.Write("s1.c", "#include <a.h>\nint one;"),
                         work.Write("s2.c", "int two;")};
    ASSERT_TRUE(Parse(files));
    ASSERT_EQ(sources.size(), 3u);
    EXPECT_THAT(NamesOfSymbols(1), IsEmpty());
    EXPECT_THAT(SortedNames(*sources[1]), ElementsAre("one"));
    EXPECT_EQ(sources[1]->includes.size(), 1u);
    EXPECT_EQ(stamps[1], StampOf(files[1]));
    EXPECT_THAT(recorder.said, ElementsAre("ctags crashed on " + files[1] + ", which is left out"));
}

TEST_F(SourceParserTest, SurvivesManyFilesThatCrashCtags)
{
    UseStandIn("*bad*) kill -SEGV $$;;\n");
    Texts files;
    for (int i = 0; i < 30; ++i)
        files.push_back(work.Write("bad" + std::to_string(i) + ".c", ""));
    files.push_back(work.Write("good.c", ""));
    ASSERT_TRUE(Parse(files));
    EXPECT_EQ(sources.size(), 31u);
    EXPECT_EQ(recorder.said.size(), 30u);
}

TEST_F(SourceParserTest, GivesNoSourceForAFileThatCannotBeRead)
{
    const Texts files = {work / "absent.c", work.Write("there.c", "int i;"), work.Path()};
    ASSERT_TRUE(Parse(files));
    ASSERT_EQ(sources.size(), 3u);
    EXPECT_EQ(sources[0], nullptr);
    EXPECT_THAT(NamesOfSymbols(1), ElementsAre("i"));
    EXPECT_EQ(sources[2], nullptr);
    EXPECT_THAT(recorder.said,
                UnorderedElementsAre("cannot read " + files[0] + ": No such file or directory",
                                     "cannot read " + files[2] + ": it is not a plain file, or too large"));
}

TEST_F(SourceParserTest, HasNoHashOfAFileThatChangesMeanwhile)
{
    UseStandIn("*s0.c) echo 'int other;' >$name;;\n");
    const Texts files = {work.Write("s0.c", "int zero;"), work.Write("s1.c", "int one;")};
    ASSERT_TRUE(Parse(files));
    EXPECT_NE(sources.at(0)->contentHash, ContentHash("int zero;"));
    EXPECT_NE(sources.at(0)->contentHash, ContentHash("int other;\n"));
    EXPECT_NE(stamps[0], StampOf(files[0]));
    EXPECT_EQ(sources.at(1)->contentHash, ContentHash("int one;"));
    EXPECT_EQ(stamps[1], StampOf(files[1]));
}

TEST_F(SourceParserTest, ParsesFilesWithAnyName)
{
    const Texts files = {work.Write("line\nbreak.c", "int a;"), work.Write("blank.c ", "int b;"),
                         work.Write("-o option.c", "int c;"), work.Write("back\\slash.c", "int d;")};
    ASSERT_TRUE(Parse(files));
    for (size_t i = 0; i < files.size(); ++i)
        EXPECT_THAT(NamesOfSymbols(i), ElementsAre(std::string(1, static_cast<char>('a' + i))));
}

TEST_F(SourceParserTest, EndsWithoutAnErrorWhenItIsCancelled)
{
    UseStandIn("*) sleep 1000;;\n");
    const Texts files = {work.Write("a.c", "")};
    cancel.Cancel();
    EXPECT_TRUE(Parse(files));
    EXPECT_TRUE(sources.empty());
}

TEST_F(SourceParserTest, ReportsACtagsThatDoesNotWork)
{
    settings.ctags.program = work / "absent";
    const base::Result<void> result = Parse({work.Write("a.c", "")});
    ASSERT_FALSE(result);
    EXPECT_THAT(result.Failure().Message(), testing::HasSubstr(work / "absent"));
}

} // namespace
} // namespace tagging
