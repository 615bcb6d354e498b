// A tree with an index, for stories about what happens to the tree.
#pragma once

#include "symbols/Index.h"
#include "tests/support/TempDirectory.h"
#include "tests/symbols/IndexDump.h"

#include <gtest/gtest.h>

#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <vector>

namespace symbols {

inline tagging::Settings TestSettings()
{
    std::signal(SIGPIPE, SIG_IGN); // as programs do
    const base::Result<tagging::Settings> settings = IndexSettings();
    EXPECT_TRUE(settings) << settings.Failure().Message();
    return settings ? *settings : tagging::Settings();
}

inline IndexOptions OptionsFor(const std::string& root, const std::string& cache)
{
    IndexOptions options;
    options.root = root;
    options.cache = cache;
    options.tagging = TestSettings();
    return options;
}

// The files of tests are young, and updates compare the content of young files. This one looks settled.
inline void MakeOld(const std::string& path, time_t seconds = 3600)
{
    timespec now;
    ::clock_gettime(CLOCK_REALTIME, &now);
    const timespec times[2] = {{now.tv_sec - seconds, 0}, {now.tv_sec - seconds, 0}};
    EXPECT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0) << path;
}

class IndexStory {
public:
    explicit IndexStory(const std::string& root = "") : top(root.empty() ? tree / "tree" : root)
    {
        std::filesystem::create_directories(top);
        index.emplace(OptionsFor(top, Cache()));
    }

    std::string Path(const std::string& leaf) const { return top + "/" + leaf; }
    std::string Cache() const { return tree / "cache"; }
    std::string Write(const std::string& leaf, const std::string& text) const
    {
        std::filesystem::create_directories(std::filesystem::path(Path(leaf)).parent_path());
        std::ofstream(Path(leaf), std::ios::binary) << text;
        return Path(leaf);
    }
    void Remove(const std::string& leaf) const { std::filesystem::remove_all(Path(leaf)); }

    UpdateResult Update() { return Checked(index->Update(Listener(), cancel)); }
    UpdateResult UpdateFiles(std::vector<std::string> leaves)
    {
        for (std::string& leaf : leaves)
            leaf = Path(leaf);
        return Checked(index->UpdateFiles(leaves, Listener(), cancel));
    }

    // Whether the index says what one from nothing says.
    void ExpectAsFresh() const
    {
        const TempDirectory cache;
        Index fresh(OptionsFor(top, cache.Path()));
        const base::CancelToken never;
        ASSERT_TRUE(fresh.Update({}, never));
        EXPECT_EQ(DumpOf(index->Current()), DumpOf(fresh.Current()));
    }

    std::string AnswerFor(std::string_view name) const { return symbols::AnswerFor(index->Current(), name); }

    Index::Listener Listener()
    {
        return {nullptr, [this](const std::string& message) { messages.push_back(message); }};
    }

    const TempDirectory tree;
    const std::string top;
    std::optional<Index> index;
    base::CancelToken cancel;
    std::vector<std::string> messages;

private:
    static UpdateResult Checked(const base::Result<UpdateResult>& result)
    {
        EXPECT_TRUE(result) << result.Failure().Message();
        return result ? *result : UpdateResult();
    }
};

} // namespace symbols
