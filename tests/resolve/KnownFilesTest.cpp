// Questions that share what is known about files get the same answers as one that knows nothing.
#include "resolve/ParsedText.h"
#include "resolve/Resolver.h"
#include "tests/support/SnapshotOf.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

using Files = std::map<std::string, std::string>;

struct NoSources : resolve::Sources {
    std::optional<std::string> Read(const std::string&) const override { return std::nullopt; }
};

// One index with open texts over it, and questions about a.c.
class KnownFiles : public testing::Test {
protected:
    void Index(const Files& files) { index = texts.Snapshot(files); }

    void Open(const std::string& path, const std::string& text)
    {
        auto parsed = texts.Parser().Parse(path, text, tagging::TextParser::Locals::No);
        ASSERT_TRUE(parsed);
        open[path] = std::make_shared<symbols::OpenText>(path, text, **parsed);
    }
    void Close(const std::string& path) { open.erase(path); }

    // "path:line path:line", the same with and without what earlier questions have learned.
    std::string Definitions(const std::string& withCaret)
    {
        std::string text = withCaret;
        const size_t offset = text.find('|');
        text.erase(offset, 1);
        const auto snapshot = Now();
        const std::string fresh = Answer(*snapshot, text, offset, nullptr);
        EXPECT_EQ(Answer(*snapshot, text, offset, &shared), fresh) << withCaret;
        return fresh;
    }

    std::string Offered(const std::string& text, symbols::Limits limits)
    {
        const auto snapshot = Now();
        std::string names;
        const resolve::Resolver resolver(*snapshot, sources, texts.Parser(), &shared);
        for (const auto& each : resolver.Complete({"a.c", text, text.size()}, limits).found)
            names += std::string(each.symbol.name) + " ";
        return names;
    }

    symbols::SnapshotPointer Now()
    {
        std::vector<std::shared_ptr<const symbols::OpenText>> all;
        for (const auto& [path, text] : open)
            all.push_back(text);
        return symbols::Combined(index, nullptr, "/", all);
    }

    std::string AnswerWithAll(const symbols::Snapshot& snapshot, const std::string& text, size_t offset)
    {
        return Answer(snapshot, text, offset, &shared);
    }

private:
    std::string Answer(const symbols::Snapshot& snapshot, const std::string& text, size_t offset,
                       resolve::ParsedTexts* with)
    {
        const resolve::Resolver resolver(snapshot, sources, texts.Parser(), with);
        std::string answers;
        for (const resolve::Answer& each : resolver.Definition({"a.c", text, offset}, {}).found)
            answers += each.path + ":" + std::to_string(each.symbol.line) + " ";
        return answers;
    }

    TextsParser texts;
    NoSources sources;
    symbols::SnapshotPointer index;
    std::map<std::string, std::shared_ptr<const symbols::OpenText>> open;
    resolve::ParsedTexts shared;
};

const Files kFiles = {
    {"a.c", "#include \"near.h\"\nint a = thing;\n"},
    {"near.h", "#include \"x/far.h\"\n"},
    {"x/far.h", "static int thing;\n"},
    {"y/far.h", "static int thing;\n"},
};
constexpr const char* kQuestion = "#include \"near.h\"\nint a = |thing;\n";

} // namespace

TEST_F(KnownFiles, AnOpenTextLeadsElsewhere)
{
    Index(kFiles);
    EXPECT_EQ(Definitions(kQuestion).substr(0, 9), "x/far.h:1");
    Open("near.h", "#include \"y/far.h\"\n");
    EXPECT_EQ(Definitions(kQuestion).substr(0, 9), "y/far.h:1");
    Open("near.h", "\n#include \"x/far.h\"\n");
    EXPECT_EQ(Definitions(kQuestion).substr(0, 9), "x/far.h:1");
    Open("near.h", "");
    Close("near.h");
    EXPECT_EQ(Definitions(kQuestion).substr(0, 9), "x/far.h:1");
}

TEST_F(KnownFiles, AnOpenTextTakesTheFilesPlace)
{
    Index(kFiles);
    EXPECT_EQ(Definitions(kQuestion).substr(0, 9), "x/far.h:1");
    Open("x/far.h", "\n\nstatic int thing;\n");
    EXPECT_EQ(Definitions(kQuestion).substr(0, 9), "x/far.h:3");
    Open("x/far.h", "\nstatic int thing;\n");
    EXPECT_EQ(Definitions(kQuestion).substr(0, 9), "x/far.h:2") << "a change of another text";
    Close("x/far.h");
    EXPECT_EQ(Definitions(kQuestion).substr(0, 9), "x/far.h:1");
}

TEST_F(KnownFiles, ANewTextIsWhatAnIncludeNames)
{
    Files files = kFiles;
    files["near.h"] = "#include \"new.h\"\n";
    files["old/new.h"] = "static int thing;\n";
    Index(files);
    EXPECT_EQ(Definitions(kQuestion).substr(0, 11), "old/new.h:1");
    Open("new.h", "\nstatic int thing;\n");
    EXPECT_EQ(Definitions(kQuestion).substr(0, 7), "new.h:2") << "the file beside the includer";
}

TEST_F(KnownFiles, AnotherIndexForgetsAll)
{
    Index(kFiles);
    EXPECT_EQ(Definitions(kQuestion).substr(0, 9), "x/far.h:1");
    Files files = kFiles;
    files["x/far.h"] = "\nstatic int thing;\n";
    files["0.c"] = ""; // all numbers of files change
    Index(files);
    EXPECT_EQ(Definitions(kQuestion).substr(0, 9), "x/far.h:2");
}

TEST_F(KnownFiles, OffersWhatAnIncludedTextDeclaresNow)
{
    Index({{"near.h", "int thing_of_the_file;\nint Thing;\n"}});
    const std::string text = "#include \"near.h\"\nint a = th";
    EXPECT_EQ(Offered(text, {}), "thing_of_the_file Thing ");
    EXPECT_EQ(Offered("#include \"near.h\"\nint a = Th", {}), "Thing ") << "a capital counts";
    EXPECT_EQ(Offered(text, {.results = 1}), "thing_of_the_file ");
    Open("near.h", "int thing_of_the_text;\n");
    EXPECT_EQ(Offered(text, {}), "thing_of_the_text ");
}

TEST_F(KnownFiles, IsSharedByThreads)
{
    Index(kFiles);
    const symbols::SnapshotPointer before = Now();
    Open("near.h", "#include \"y/far.h\"\n");
    const symbols::SnapshotPointer after = Now();
    std::string text = kQuestion;
    const size_t offset = text.find('|');
    text.erase(offset, 1);
    std::vector<std::thread> threads;
    std::atomic<int> wrong = 0;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&, thread] {
            for (int i = 0; i < 50; ++i) {
                const bool isFirst = (i + thread) % 2 == 0;
                const std::string answer = AnswerWithAll(isFirst ? *before : *after, text, offset);
                wrong += answer.starts_with(isFirst ? "x/far.h:1 " : "y/far.h:1 ") ? 0 : 1;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}
