// The tags of a source's symbols are those that a run for a tags file finds in the source.
#include "tagging/SourceParser.h"
#include "tagging/Tagger.h"
#include "tagging/TagsOfSymbols.h"
#include "tagging/ctags/CtagsProgram.h"

#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <mutex>

namespace tagging {
namespace {

class Silent final : public Observer {
public:
    void Say(const std::string&) override {}
    void Show(size_t, size_t) override {}
};

using Lines = std::vector<std::string>;

Lines LinesOf(std::vector<std::unique_ptr<tagsfile::LineSource>> sources)
{
    const std::unique_ptr<tagsfile::LineSource> merged = tagsfile::Merged(std::move(sources));
    Lines lines;
    for (std::string_view line; merged->Next(line);)
        lines.emplace_back(line);
    return lines;
}

class SameTags : public testing::Test {
protected:
    SameTags() : signalBefore(std::signal(SIGPIPE, SIG_IGN))
    {
        settings.ctags.program = *FindCtags(work.Path());
        settings.ctags.directory = work.Path();
        settings.ctags.temporaries = work.Path();
        settings.jobs = 2;
    }
    ~SameTags() override { std::signal(SIGPIPE, signalBefore); }

    Lines OfTagger(const Lines& files) const
    {
        Silent silent;
        base::CancelToken cancel;
        Tagger tagger(settings, silent, cancel);
        for (const std::string& file : files)
            tagger.Add(file, file);
        tagger.Finish();
        EXPECT_EQ(tagger.Failure(), "");
        return LinesOf(tagger.Lines());
    }

    Lines OfSymbols(const Lines& files) const
    {
        Silent silent;
        base::CancelToken cancel;
        TagStore store;
        std::mutex mutex;
        const auto keep = [&](size_t number, const FileStamp&, std::unique_ptr<ParsedSource> source) {
            const auto prototypes = settings.ctags.prototypes ? Prototypes::Include : Prototypes::LeaveOut;
            const tagsfile::Tags tags = TagsOf(source->symbols, prototypes);
            const std::lock_guard lock(mutex);
            for (const tagsfile::Tag& tag : tags.tags)
                store.Add(static_cast<unsigned>(number), tag);
        };
        SourceParser parser(settings, silent, cancel, keep);
        for (const std::string& file : files)
            parser.Add(file);
        EXPECT_TRUE(parser.Finish());
        store.Sort(files);
        TagsByFile tooLong;
        std::vector<std::unique_ptr<tagsfile::LineSource>> sources;
        sources.push_back(store.Lines(files, &tooLong));
        return LinesOf(std::move(sources));
    }

    void ExpectSame(const Lines& files)
    {
        ASSERT_FALSE(files.empty());
        for (const bool prototypes : {false, true}) {
            settings.ctags.prototypes = prototypes;
            const Lines expected = OfTagger(files);
            EXPECT_GT(expected.size(), files.size());
            EXPECT_EQ(OfSymbols(files), expected) << (prototypes ? "with prototypes" : "without prototypes");
        }
    }

    void (*const signalBefore)(int);
    const TempDirectory work;
    Settings settings;
};

// Every so many files with these suffixes below a directory.
Lines Sample(const std::string& directory, const std::vector<std::string>& suffixes, size_t each)
{
    Lines files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory))
        if (entry.is_regular_file() && std::ranges::find(suffixes, entry.path().extension().string()) != suffixes.end())
            files.push_back(entry.path());
    std::ranges::sort(files);
    Lines sample;
    for (size_t i = 0; i < files.size(); i += each)
        sample.push_back(files[i]);
    return sample;
}

TEST_F(SameTags, OfObjectiveC)
{
    ExpectSame(Sample(TEST_DATA "/objective-c", {".h", ".m", ".mm"}, 1));
}

TEST_F(SameTags, OfTheSystemsHeaders)
{
    ExpectSame(Sample("/usr/include", {".h", ".hpp"}, 53));
}

TEST_F(SameTags, OfScopesThatLookupsDoNotKnow)
{
    ExpectSame({work.Write("a.cpp", "enum Plain { kA };\n"
                                    "enum class Scoped { kB };\n"
                                    "namespace { struct In { enum { kC }; int member; }; }\n"
                                    "void f() { struct Local { int inner; }; enum { kD }; }\n"
                                    "union { struct { int deep; }; } named;\n"
                                    "extern int external; int prototype(int);\n"
                                    "using namespace std; using std::vector; namespace n = std;\n"),
                work.Write("qt.h", "class A : public QObject {\n"
                                   "    Q_OBJECT\n"
                                   "    Q_PROPERTY(int x READ x)\n"
                                   "public slots:\n"
                                   "    void OnClick(int button);\n"
                                   "signals:\n"
                                   "    void Clicked();\n"
                                   "};\n")});
}

} // namespace
} // namespace tagging
