#include "symbols/TagsFile.h"

#include "tagging/SourceParser.h"
#include "tagging/ctags/CtagsProgram.h"

#include "tests/support/FileContent.h"
#include "tests/support/RunProgram.h"
#include "tests/support/TempDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <map>

namespace symbols {
namespace {

using testing::HasSubstr;

// Parsed sources as a snapshot that knows its files and their symbols.
class ParsedFiles final : public Snapshot {
public:
    std::map<std::string, std::unique_ptr<tagging::ParsedSource>> sources;

    Symbols ByName(std::string_view, Limits) const override { return {}; }
    Symbols ByPrefix(std::string_view, Limits) const override { return {}; }
    FuzzyMatches Fuzzy(std::string_view, Limits) const override { return {}; }
    Symbols InScope(std::string_view, Limits) const override { return {}; }
    Symbols DerivedFrom(std::string_view, Limits) const override { return {}; }
    std::optional<FileNumber> FindFile(std::string_view) const override { return std::nullopt; }
    File FileOf(FileNumber file) const override
    {
        File result;
        result.path = std::next(sources.begin(), file)->first;
        return result;
    }
    Symbols OfFile(FileNumber file) const override
    {
        Symbols symbols;
        for (const tagging::Symbol& symbol : std::next(sources.begin(), file)->second->symbols)
            symbols.found.push_back({symbol, file});
        return symbols;
    }
    std::vector<Include> IncludesOf(FileNumber) const override { return {}; }
    std::vector<FileNumber> FilesWithLeaf(std::string_view) const override { return {}; }
    std::vector<Include> IncludesOfLeaf(std::string_view, Limits) const override { return {}; }
    std::vector<FileNumber> FilesMentioning(std::string_view, Limits) const override { return {}; }
    void ForEachFile(const std::function<bool(FileNumber, const File&)>& each) const override
    {
        for (FileNumber file = 0; file < sources.size(); ++file)
            if (!each(file, FileOf(file)))
                return;
    }
    std::optional<std::string_view> OpenText(FileNumber) const override { return std::nullopt; }
    Size Totals() const override { return {}; }
    bool IsDamaged() const override { return false; }
};

class TagsFileTest : public testing::Test {
protected:
    TagsFileTest() : signalBefore(std::signal(SIGPIPE, SIG_IGN))
    {
        options.target = work / "tags";
        options.root = work.Path();
        options.version = CPLUSTAGS_VERSION;
        options.jobs = 3;
    }
    ~TagsFileTest() override { std::signal(SIGPIPE, signalBefore); }

    void Index(const std::string& leaf, const std::string& text)
    {
        work.Write(leaf, text);
        tagging::Settings settings;
        settings.ctags.program = *tagging::FindCtags("/");
        settings.ctags.temporaries = work.Path();
        auto parsed = tagging::TextParser(settings).Parse(leaf, text, tagging::TextParser::Locals::No);
        ASSERT_TRUE(parsed);
        files.sources[leaf] = std::move(*parsed);
    }

    void IndexSomeFiles()
    {
        Index("a.cpp", "namespace n { class A { int member; void f(); enum E { kOne }; }; }\n");
        Index("sub/b.h", "int prototype(int);\n#define MACRO 1\n");
        Index("c.m", "@interface I : J\n- (void)run:(int)x;\n@end\nint after;\n");
        Index("empty.c", "");
        Index("long.c", "int " + std::string(2000, 'x') + ";\nint after;\n");
    }

    base::Result<TagsFileCount> Write() { return WriteTagsFile(files, options, cancel); }

    void (*const signalBefore)(int);
    const TempDirectory work;
    ParsedFiles files;
    TagsFileOptions options;
    base::CancelToken cancel;
};

TEST_F(TagsFileTest, IsTheSameThatTheTagsProgramMakes)
{
    IndexSomeFiles();
    for (const bool prototypes : {true, false}) {
        std::vector<std::string> words = {CPLUSTAGS, "-f", work / "expected"};
        if (prototypes)
            words.emplace_back("--c-kinds=+p");
        for (const auto& [path, source] : files.sources)
            words.push_back(path);
        const ProgramRun run = RunProgram(words, work.Path());
        ASSERT_EQ(run.status, 0) << run.errors;
        options.prototypes = prototypes;
        const base::Result<TagsFileCount> written = Write();
        ASSERT_TRUE(written) << written.Failure().Message();
        EXPECT_EQ(Content(work / "tags"), Content(work / "expected"));
        EXPECT_EQ(written->files, 5u);
        EXPECT_EQ(written->tags, prototypes ? 12u : 10u);
        EXPECT_EQ(written->tooLong, 1u);
    }
}

TEST_F(TagsFileTest, CoversTheWantedFiles)
{
    IndexSomeFiles();
    options.wants = [](const File& file) { return file.path.ends_with(".h"); };
    const base::Result<TagsFileCount> written = Write();
    ASSERT_TRUE(written);
    EXPECT_EQ(written->files, 1u);
    EXPECT_THAT(Content(work / "tags"), HasSubstr("\nMACRO\tsub/b.h\t2;\"\td\n"));
}

TEST_F(TagsFileTest, LeavesOutFilesWhoseNamesItCannotHold)
{
    Index("line\nbreak.c", "int a;\n");
    const base::Result<TagsFileCount> written = Write();
    ASSERT_TRUE(written);
    EXPECT_EQ(written->files, 0u);
    EXPECT_EQ(written->unnameable, 1u);
}

TEST_F(TagsFileTest, ReplacesNoFileOfAnotherKind)
{
    IndexSomeFiles();
    work.Write("tags", "My notes.\n");
    const base::Result<TagsFileCount> written = Write();
    ASSERT_FALSE(written);
    EXPECT_EQ(written.Failure().Message(), work / "tags" + " is not a tags file and is left unchanged");
    EXPECT_EQ(Content(work / "tags"), "My notes.\n");
}

TEST_F(TagsFileTest, WritesThroughNoLink)
{
    IndexSomeFiles();
    std::filesystem::create_symlink("elsewhere", work / "tags");
    const base::Result<TagsFileCount> written = Write();
    ASSERT_FALSE(written);
    EXPECT_THAT(written.Failure().Message(), HasSubstr("is a symbolic link to elsewhere and is left unchanged"));
    EXPECT_FALSE(std::filesystem::exists(work / "elsewhere"));
}

TEST_F(TagsFileTest, LeavesTheOldFileWhenItIsCancelled)
{
    IndexSomeFiles();
    ASSERT_TRUE(Write());
    const std::string before = Content(work / "tags");
    Index("new.c", "int fresh;\n");
    cancel.Cancel();
    EXPECT_FALSE(Write());
    EXPECT_EQ(Content(work / "tags"), before);
}

} // namespace
} // namespace symbols
