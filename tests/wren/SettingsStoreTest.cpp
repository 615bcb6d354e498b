#include "wren/core/SettingsStore.h"

#include "tests/support/FileContent.h"
#include "tests/support/TempDirectory.h"
#include "wren/core/Documents.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using wren::SettingsStore;

namespace {

std::vector<std::string> Loaded(const std::string& path)
{
    std::vector<wren::StoredLine> stored;
    std::string error;
    EXPECT_TRUE(SettingsStore(path).Load(&stored, &error)) << error;
    std::vector<std::string> lines;
    for (const wren::StoredLine& line : stored)
        lines.push_back(line.text);
    return lines;
}

} // namespace

TEST(SplitAtBlanks, Cases)
{
    const struct {
        const char* why;
        const char* line;
        std::vector<std::string> words;
    } kCases[] = {
        {"a switch", "DeclAutoComplete off", {"DeclAutoComplete", "off"}},
        {"runs of blanks are one", " a   b  c ", {"a", "b", "c"}},
        {"backslashes and quotes stay", "a x\\ y \"b c\" 'd'", {"a", "x\\", "y", "\"b", "c\"", "'d'"}},
        {"a tab is part of a word", "a b\tc", {"a", "b\tc"}},
        {"an empty value leaves the name alone", "DeclIndexSuffixes ", {"DeclIndexSuffixes"}},
        {"nothing", "   ", {}},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(wren::SplitAtBlanks(each.line), each.words) << each.why;
}

TEST(SettingsStore, LoadsEveryNonEmptyLine)
{
    const TempDirectory directory;
    const std::string odd = "a 1\n\n   \nb \"x y\nno value\n" + std::string(5000, 'z') + " long\nlast without end";
    const std::string file = directory.Write("settings", odd);
    EXPECT_THAT(Loaded(file),
                ElementsAre("a 1", "b \"x y", "no value", std::string(5000, 'z') + " long", "last without end"));
}

TEST(SettingsStore, CountsLinesAsAnEditorDoes)
{
    const TempDirectory directory;
    std::vector<wren::StoredLine> lines;
    std::string error;
    SettingsStore(directory.Write("settings", "a 1\n\n  \nb 2")).Load(&lines, &error);
    EXPECT_THAT(lines, ElementsAre(wren::StoredLine{1, "a 1"}, wren::StoredLine{4, "b 2"}));
}

TEST(SettingsStore, KeepsNulBytesAndInvalidUtf8)
{
    const TempDirectory directory;
    const std::string bytes("a \0\xff\n", 5);
    EXPECT_THAT(Loaded(directory.Write("settings", bytes)), ElementsAre(std::string("a \0\xff", 4)));
}

TEST(SettingsStore, LoadsNothingWithoutAFile)
{
    const TempDirectory directory;
    EXPECT_THAT(Loaded(directory / "missing"), ElementsAre());
    EXPECT_THAT(Loaded(""), ElementsAre());
}

TEST(SettingsStore, SaysWhyAFileCannotBeRead)
{
    const TempDirectory directory;
    std::vector<wren::StoredLine> lines;
    std::string error;
    EXPECT_FALSE(SettingsStore(directory.Path()).Load(&lines, &error));
    EXPECT_THAT(error, ::testing::HasSubstr("Is a directory"));
}

TEST(SettingsStore, RewritesRegisteredLinesAndKeepsOtherLines)
{
    const TempDirectory directory;
    const std::string file = directory.Write("settings", "mine 1\nTheirs  \"a\\ b\"\n\nmine 2\nlast");
    SettingsStore store(file);
    store.Register("mine");
    store.Register("absent");
    store.BeginSave();
    store.Write("mine 3\n");
    std::string error;
    EXPECT_TRUE(store.EndSave(&error)) << error;
    EXPECT_EQ(Content(file), "Theirs  \"a\\ b\"\n\nlast\nmine 3\n");
}

TEST(SettingsStore, RemovesLinesThatAreNotRewritten)
{
    const TempDirectory directory;
    const std::string file = directory.Write("settings", "mine 1\n");
    SettingsStore store(file);
    store.Register("mine");
    store.BeginSave();
    std::string error;
    EXPECT_TRUE(store.EndSave(&error));
    EXPECT_EQ(Content(file), "");
}

TEST(SettingsStore, WritesNothingOutsideASaveAndNothingWithoutAFile)
{
    const TempDirectory directory;
    const std::string file = directory.Write("settings", "");
    SettingsStore store(file);
    store.Write("stray 1\n");
    store.BeginSave();
    std::string error;
    EXPECT_TRUE(store.EndSave(&error));
    EXPECT_EQ(Content(file), "");

    SettingsStore kept("");
    kept.BeginSave();
    kept.Write("a 1\n");
    EXPECT_TRUE(kept.EndSave(&error));
}

TEST(SettingsStore, LeavesTheFileAloneWhenItCannotWrite)
{
    const TempDirectory directory;
    const std::string file = directory / "gone/settings";
    SettingsStore store(file);
    store.Register("mine");
    store.BeginSave();
    store.Write("mine 2\n");
    std::string error;
    EXPECT_FALSE(store.EndSave(&error));
    EXPECT_THAT(error, ::testing::HasSubstr(file));
    EXPECT_FALSE(std::filesystem::exists(directory / "gone"));
}

TEST(SettingsStore, WritesThroughALink)
{
    const TempDirectory directory;
    const std::string file = directory.Write("real", "");
    std::filesystem::create_symlink(file, directory / "link");
    SettingsStore store(directory / "link");
    store.BeginSave();
    store.Write("a 1\n");
    std::string error;
    EXPECT_TRUE(store.EndSave(&error)) << error;
    EXPECT_TRUE(std::filesystem::is_symlink(directory / "link"));
    EXPECT_EQ(Content(file), "a 1\n");
}

TEST(SettingsStore, KeepsRefusedLinesUntilAnotherValueIsWritten)
{
    const struct {
        const char* why;
        const char* stored;
        const char* accepted; // the other lines
        const char* written;
        const char* then;
    } kCases[] = {
        {"nothing is written for a default", "mine On\n", nullptr, "", "mine On\n"},
        {"the value stayed", "mine On\nmine off\n", "mine off", "mine off\n", "mine On\nmine off\n"},
        {"blanks are not another value", "mine On\nmine   off\n", "mine   off", "mine off\n", "mine On\nmine off\n"},
        {"a first value", "mine On\n", nullptr, "mine off\n", "mine off\n"},
        {"another value", "mine On\nmine a\n", "mine a", "mine b\n", "mine b\n"},
        {"a value for another name", "mine On\n", nullptr, "other 1\n", "mine On\nother 1\n"},
        {"twice", "mine On\nmine On\n", nullptr, "", "mine On\nmine On\n"},
    };
    for (const auto& each : kCases) {
        const TempDirectory directory;
        const std::string file = directory.Write("settings", each.stored);
        SettingsStore store(file);
        store.Register("mine");
        store.Register("other");
        store.Refused("mine On");
        if (each.accepted != nullptr)
            store.Accepted(each.accepted);
        store.BeginSave();
        store.Write(each.written);
        std::string error;
        EXPECT_TRUE(store.EndSave(&error)) << error;
        EXPECT_EQ(Content(file), each.then) << each.why;
    }
}

namespace {

// An editor's settings, "mine" and "other", in a file that another editor also writes.
class SharedSettings : public ::testing::Test {
protected:
    SettingsStore Loaded(const std::string& lines)
    {
        file = directory.Write("settings", lines);
        SettingsStore store(file);
        store.Register("mine");
        store.Register("other");
        std::vector<wren::StoredLine> loaded;
        std::string error;
        EXPECT_TRUE(store.Load(&loaded, &error)) << error;
        return store;
    }
    static void TakeBaseline(SettingsStore& store, const std::string& written)
    {
        store.BeginNote();
        store.Write(written);
        store.EndNote();
    }
    std::string Saved(SettingsStore& store, const std::string& written)
    {
        store.BeginSave();
        store.Write(written);
        std::string error;
        EXPECT_TRUE(store.EndSave(&error)) << error;
        return Content(file);
    }

    const TempDirectory directory;
    std::string file;
};

} // namespace

TEST_F(SharedSettings, ValuesOfAnotherEditorStay)
{
    const struct {
        const char* why;
        const char* loaded;
        const char* atStart;   // written at the start
        const char* meanwhile; // the file's content at the save
        const char* written;
        const char* then;
    } kCases[] = {
        {"nothing has changed", "mine  1\n", "mine 1\n", "mine  1\n", "mine 1\n", "mine 1\n"},
        {"the other has chosen", "mine 1\n", "mine 1\n", "mine 2\n", "mine 1\n", "mine 2\n"},
        {"the default", "mine 1\n", "mine 1\n", "other 2\n", "mine 1\n", "other 2\n"},
        {"in the default's place", "", "", "mine 2\n", "", "mine 2\n"},
        {"in the place of a default that was stored", "mine 0\n", "", "mine 2\n", "", "mine 2\n"},
        {"this one has chosen", "mine 1\n", "mine 1\n", "mine 1\n", "mine 3\n", "mine 3\n"},
        {"this one has chosen the default", "mine 1\n", "mine 1\n", "mine 2\nTheirs\n", "", "Theirs\n"},
        {"both: the later one counts", "mine 1\n", "mine 1\n", "mine 2\n", "mine 3\n", "mine 3\n"},
        {"each something", "mine 1\n", "mine 1\n", "mine 2\n", "mine 1\nother 3\n", "mine 2\nother 3\n"},
        {"the order of lines", "mine 1\nmine 2\n", "mine 2\n", "mine 2\nmine 1\n", "mine 2\n", "mine 2\nmine 1\n"},
    };
    for (const auto& each : kCases) {
        SettingsStore store = Loaded(each.loaded);
        TakeBaseline(store, each.atStart);
        EXPECT_EQ(Content(file), each.loaded) << each.why << ": nothing is stored at the start";
        directory.Write("settings", each.meanwhile);
        EXPECT_EQ(Saved(store, each.written), each.then) << each.why;
        EXPECT_EQ(Saved(store, each.written), each.then) << each.why << ", once more";
    }
}

TEST_F(SharedSettings, ValuesStayUntilAnotherOneIsChosenHere)
{
    SettingsStore store = Loaded("mine 1\n");
    TakeBaseline(store, "mine 1\n");
    directory.Write("settings", "mine 2\n");
    EXPECT_EQ(Saved(store, "mine 1\n"), "mine 2\n");
    EXPECT_EQ(Saved(store, "mine 1\nother 1\n"), "mine 2\nother 1\n");
    EXPECT_EQ(Saved(store, "mine 3\nother 1\n"), "mine 3\nother 1\n");
    directory.Write("settings", "mine 4\nother 1\n");
    EXPECT_EQ(Saved(store, "mine 3\nother 1\n"), "mine 4\nother 1\n") << "a stored value is no longer a choice";
}

TEST_F(SharedSettings, ARefusedLineIsRemovedOnceAnotherValueWasChosenAndReverted)
{
    const struct {
        const char* why;
        const char* atStart;
        const char* noted;
        const char* then;
    } kCases[] = {
        {"nothing was chosen", "", "", "mine On\n"},
        {"another name was", "", "other 1\n", "mine On\n"},
        {"the default again", "", "mine off\n", ""},
        {"the value that was accepted again", "mine a\n", "mine b\n", "mine a\n"},
        {"the default in between", "mine a\n", "", "mine a\n"},
    };
    for (const auto& each : kCases) {
        SettingsStore store = Loaded("mine On\n");
        store.Refused("mine On");
        if (*each.atStart != '\0')
            store.Accepted("mine a");
        TakeBaseline(store, each.atStart);
        store.BeginNote();
        store.Write(each.noted);
        store.EndNote();
        EXPECT_EQ(Content(file), "mine On\n") << each.why << ": nothing is stored by that";
        EXPECT_EQ(Saved(store, each.atStart), each.then) << each.why;
    }
}

TEST_F(SharedSettings, ChoosingTheDefaultRemovesARefusedLine)
{
    SettingsStore store = Loaded("mine On\nmine a\n");
    store.Refused("mine On");
    store.Accepted("mine a");
    TakeBaseline(store, "mine a\n");
    EXPECT_EQ(Saved(store, ""), "");
}

TEST_F(SharedSettings, AllValuesAreWrittenWhenTheFileIsGone)
{
    SettingsStore store = Loaded("mine 1\n");
    TakeBaseline(store, "mine 1\n");
    std::filesystem::remove(file);
    EXPECT_EQ(Saved(store, "mine 1\n"), "mine 1\n");
}
