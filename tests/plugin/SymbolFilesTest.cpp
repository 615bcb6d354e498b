#include "plugin/SymbolFiles.h"

#include "tests/plugin/PluginTest.h"

namespace {

class SymbolFiles : public PluginTest {
protected:
    // Each tags file gets a time of its own: paths are read again only when the time differs.
    std::string WriteTags(const std::string& leaf, const std::string& lines)
    {
        const std::string path = home.Write(leaf, lines);
        static int hours = 0;
        std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) - std::chrono::hours(++hours));
        return path;
    }
    // What event 10010 adds for an include-style name, asked from home/src.
    Calls FilesOf(const char* symbol, long expectedResult)
    {
        const std::string directory = home / "src";
        BMessage reply;
        host.name = directory.c_str();
        host.symbol = symbol;
        host.message = &reply;
        EXPECT_EQ(Send(10010), expectedResult) << symbol;
        host.message = nullptr;
        Calls files;
        EntryRef file;
        for (int32 i = 0; reply.FindRef("refs", i, &file) == B_OK; ++i)
            files.push_back(file.Path());
        return files;
    }
};

TEST_F(SymbolFiles, AreSortedByPath)
{
    WriteTags("src/tags", TagLine("a", "/z/one/view.h", 1, 'p') + TagLine("b", "/a/two/view.h", 1, 'p') +
                              TagLine("c", "/a/two/preview.h", 1, 'p') +
                              TagLine("d", "/F/AppKit.framework/Headers/NSView.h", 1, 'p'));
    EXPECT_EQ(FilesOf("view.h", 2), (Calls{"/a/two/view.h", "/z/one/view.h"}));
    EXPECT_EQ(FilesOf("one/view.h", 2), Calls{"/z/one/view.h"});
    EXPECT_EQ(FilesOf("AppKit/NSView.h", 2), Calls{"/F/AppKit.framework/Headers/NSView.h"});
    EXPECT_EQ(FilesOf("Foundation/NSView.h", 0), Calls{});
    EXPECT_EQ(FilesOf("missing.h", 0), Calls{});
}

TEST_F(SymbolFiles, KeepTheirEscapes)
{
    WriteTags("src/tags", TagLine("a", "lib/view.h", 1, 'p') + TagLine("b", "/my\\ files/view.h", 1, 'p'));
    const std::string here = std::filesystem::current_path();
    EXPECT_EQ(FilesOf("view.h", 2), (Calls{"/my\\ files/view.h", here + "/lib/view.h"}));
}

TEST_F(SymbolFiles, AreNotFoundWithoutTags)
{
    EXPECT_EQ(FilesOf("view.h", 0), Calls{});
}

TEST_F(SymbolFiles, SystemFilesAreFoundFromTheSecondQueryOn)
{
    std::filesystem::rename(WriteTags("system-tags", TagLine("a", "/usr/include/view.h", 1, 'p')), [this] {
        home.WriteSystemTags("");
        return home / "Library/Caches/SystemHeaderTags";
    }());
    EXPECT_EQ(FilesOf("view.h", 0), Calls{});
    JoinThreads();
    EXPECT_EQ(FilesOf("view.h", 2), Calls{"/usr/include/view.h"});
}

TEST_F(SymbolFiles, AnIncompleteQueryGetsNoReply)
{
    WriteTags("src/tags", TagLine("a", "/a/view.h", 1, 'p'));
    const std::string directory = home / "src";
    BMessage reply;
    for (const int missing : {0, 1, 2}) {
        host.name = missing == 0 ? nullptr : directory.c_str();
        host.symbol = missing == 1 ? nullptr : "view.h";
        host.message = missing == 2 ? nullptr : &reply;
        EXPECT_EQ(Send(10010), 0) << missing;
    }
    host.message = nullptr;
    EntryRef file;
    EXPECT_NE(reply.FindRef("refs", &file), B_OK);
}

} // namespace
