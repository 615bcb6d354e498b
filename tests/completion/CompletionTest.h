// Completion in an editor that is not there: one document, with tags files beside it and in the home directory.
#pragma once

#include "completion/CompletionCommands.h"
#include "completion/CompletionWindow.h"
#include "tests/completion/NamedTags.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Framework.h"
#include "tests/support/HeldFile.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

// Completion remembers the system's names for as long as the process lives, and reads the file again only when that is
// later: so all tests share one home, whose tags file each of them makes anew.
inline const TempHome& Home()
{
    static const TempHome home;
    return home;
}

// The document is "a.cpp" of a folder of its own. There is a system's tags file without names, and no local one. The
// completion command is on Control-'.'.
class CompletionTest : public testing::Test {
protected:
    static constexpr long kDocument = 7;

    CompletionTest()
    {
        UseSystemNames({});
        OpenDocument(folder);
        host.documentID = kDocument;
        host.shortcuts["SymbolCompletion"] = {'.', B_CONTROL_KEY};
    }

    struct Witness : vetch::DisplayObserver {
        int alerts = 0;
        void AlertAnswered(const vetch::AlertDescription&, long) override { ++alerts; }
    };
    Witness witness;
    TempDirectory folder;
    Framework framework{&witness};
    FakeHost host;

    static void UseSystemTags(const std::string& content)
    {
        Home().Write("Library/Caches/a.cpp", "int a = 1 + 1;\n");
        Replace(Home() / "Library/Caches/SystemHeaderTags", content);
    }
    static void UseSystemNames(const Lines& names) { UseSystemTags(TagsOf(names)); }
    void UseLocalTags(const std::string& content) const { Replace(folder / "tags", content); }
    void UseLocalNames(const Lines& names) const { UseLocalTags(TagsOf(names)); }
    // A local tags file whose reader has to wait until it is written: the load that comes to it is under way until
    // then.
    void HoldLocalTags() const
    {
        std::filesystem::remove(folder / "tags");
        ASSERT_TRUE(MakeHeldFile(folder / "tags"));
        SetTime(folder / "tags", NewTime());
    }
    // Returns when the reader has opened the file too.
    std::ofstream OpenHeldTags() const
    {
        const WaitLimit limit("the held tags file had been opened by its reader");
        return std::ofstream(folder / "tags");
    }
    void WriteHeldTags(const std::string& content) const
    {
        OpenHeldTags() << content;
        JoinThreads();
    }
    void OpenDocument(const TempDirectory& directory)
    {
        host.file = EntryRef(directory.Write("a.cpp", "int a = 1 + 1;\n").c_str());
    }

    void Suggest(const std::string& document)
    {
        host.SetMarked(document);
        Call([this] { SelectionSuggestCompletions(&host); });
    }
    void AutoSuggest(const std::string& document)
    {
        host.SetMarked(document);
        Call([this] { SelectionAutoSuggestCompletions(&host); });
    }
    void Choose(const char* completion)
    {
        BMessage message(FourCC("ksel"));
        message.AddString("completion", completion);
        Call([&] { CompletionSelected(&host, &message); });
    }
    // Has the names of the tags files read, so that the next AutoSuggest() finds them. Opens nothing, and closes what
    // is open.
    void LoadNames()
    {
        const FakeHost before = host;
        AutoSuggest("a name that nothing begins with: qqqqqq|");
        JoinThreads();
        AutoSuggest("a name that nothing begins with: qqqqqq|");
        host = before;
    }

    // The list on the screen; nothing when there is none.
    std::optional<vetch::HeadlessDisplay::WindowState> Shown() const
    {
        const auto visible = framework.VisibleWindows();
        EXPECT_LE(visible.size(), 1u);
        return visible.empty() ? std::nullopt : std::make_optional(visible.front());
    }
    Lines Candidates() const { return Shown() ? Shown()->list->items : Lines{}; }
    long Beeps() const { return framework.display.Beeps(); }

    template <class Function>
    void Call(Function function)
    {
        {
            const vetch::PluginCall call;
            function();
        }
        framework.Settle();
    }

private:
    // In one step, as a load may be reading it. Always later than any before.
    static void Replace(const std::string& path, const std::string& content)
    {
        std::ofstream(path + ".new", std::ios::binary) << content;
        SetTime(path + ".new", NewTime());
        std::filesystem::rename(path + ".new", path);
    }
};
