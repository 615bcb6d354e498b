// Tags files that are no good, or change under the user's hands, and names and patterns of unusual kinds: each a clear
// outcome, and completion goes on.
#include "tests/completion/TypingTest.h"

#include <random>

using namespace std::string_literals;

namespace {

class CompletionBadInput : public TypingTest {
protected:
    // What typing and the command make of "good".
    void ExpectGoodNames(const Lines& names, const std::string& why)
    {
        LoadNames();
        AutoSuggest("good|");
        EXPECT_EQ(Candidates(), names) << why;
        framework.QuitWindows();
        Suggest("good|");
        EXPECT_EQ(Candidates(), names) << why;
        framework.QuitWindows();
    }
};

std::string RandomBytes(size_t count)
{
    std::mt19937 random(3);
    std::string bytes;
    while (bytes.size() < count)
        bytes += static_cast<char>(random());
    return bytes;
}

TEST_F(CompletionBadInput, DamagedTagsFilesStillGiveTheirGoodNames)
{
    const std::string good = TagsOf({"good", "goods"});
    const Lines both = {"good", "goods"};
    const struct {
        const char* why;
        std::string content;
        Lines names;
    } kFiles[] = {
        {"nothing", "", {}},
        {"one byte", "g", {}},
        {"a name alone", "good\n", {}},
        {"a line that is cut off", good + "goodness\ta.cpp", both},
        {"lines without names", "\n\t\n\t\t\t\n" + good, both},
        {"tabs alone", std::string(100000, '\t') + "\n" + good, both},
        {"line ends alone", std::string(100000, '\n') + good, both},
        {"an endless line", std::string(3000000, 'x') + "\n" + good, both},
        {"an endless line that is all there is", std::string(3000000, 'x'), {}},
        {"zeros", std::string(100000, '\0') + "\n" + good, both},
        {"any bytes", RandomBytes(200000) + "\n" + good, both},
        {"any bytes behind", good + RandomBytes(200000), both},
        {"no order", TagsOf({"goods", "good"}), both},
    };
    for (const auto& [why, content, names] : kFiles) {
        UseLocalTags(content);
        LoadNames();
        AutoSuggest("good|");
        EXPECT_EQ(Candidates(), names) << why;
        framework.QuitWindows();
    }
}

TEST_F(CompletionBadInput, TheCommandSurvivesDamagedTagsFiles)
{
    const std::string good = TagsOf({"good", "goods"});
    for (const std::string& content : {std::string(3000000, 'x') + "\n" + good, std::string(100000, '\0') + "\n" + good,
                                       good + RandomBytes(200000), "\t\t\n" + good, good + "goodness\ta.cpp"}) {
        UseLocalTags(content);
        Suggest("good|");
        EXPECT_EQ(Candidates(), (Lines{"good", "goods"}));
        framework.QuitWindows();
    }
}

TEST_F(CompletionBadInput, ADirectoryInPlaceOfATagsFileHasNoNames)
{
    UseSystemNames({"good", "goods"});
    std::filesystem::create_directory(folder / "tags");
    ExpectGoodNames({"good", "goods"}, "the system's are there");
    std::filesystem::remove(folder / "tags");
}

TEST_F(CompletionBadInput, AFileThatVanishesWhileItIsReadKeepsWhatWasRead)
{
    HoldLocalTags();
    AutoSuggest("good|");
    {
        std::ofstream writer = OpenHeldTags();
        writer << TagsOf({"good"});
        std::filesystem::remove(folder / "tags");
        writer << TagsOf({"goods"});
    }
    JoinThreads();
    AutoSuggest("good|");
    EXPECT_EQ(Candidates(), (Lines{"good", "goods"})) << "who has a file open reads it to its end";
}

TEST_F(CompletionBadInput, AFileThatVanishesBeforeItIsReadIsReadWhenItComesBack)
{
    UseSystemNames({"goodness"});
    HoldLocalTags();
    AutoSuggest("good|");
    WriteHeldTags(""); // gone before anything was in it
    std::filesystem::remove(folder / "tags");
    AutoSuggest("goodn|");
    EXPECT_EQ(Candidates(), Lines{"goodness"});
    UseLocalNames({"good"});
    ExpectGoodNames({"good", "goodness"}, "it is back");
}

TEST_F(CompletionBadInput, AFileThatIsReplacedWhileItIsReadIsReadAgain)
{
    HoldLocalTags();
    AutoSuggest("good|");
    std::ofstream writer = OpenHeldTags();
    UseLocalNames({"goods"}); // in its place
    writer << TagsOf({"good"});
    writer.close();
    JoinThreads();
    AutoSuggest("good|");
    JoinThreads();
    AutoSuggest("good|");
    EXPECT_EQ(Candidates(), Lines{"goods"});
}

TEST_F(CompletionBadInput, AReloadAtEachKeyStrokeShowsNothingUntilItEnds)
{
    for (const bool isLocal : {true, false}) {
        UseLocalNames({"goodness"});
        UseSystemNames({"goodness"});
        LoadNames();
        host.SetMarked("|");
        for (const char key : "goodne"s) {
            isLocal ? UseLocalNames({"goods", "goodness"}) : UseSystemNames({"goods", "goodness"});
            Press(key);
            EXPECT_FALSE(Shown()) << key << ": the names are being loaded, again";
            JoinThreads();
        }
        Type("s");
        EXPECT_EQ(Candidates(), Lines{"goodness"});
        framework.QuitWindows();
    }
}

TEST_F(CompletionBadInput, AReloadAtEachKeyStrokeLeavesTheListUnchanged)
{
    UseLocalNames({"goods", "goodness"});
    LoadNames();
    host.SetMarked("|");
    Type("goo");
    for (const char key : "dn"s) {
        UseSystemNames({"goodnight"});
        Press(key);
        EXPECT_EQ(Candidates(), (Lines{"goodness", "goods"})) << key;
        JoinThreads();
    }
    Type("e");
    EXPECT_EQ(Candidates(), Lines{"goodness"});
}

TEST_F(CompletionBadInput, ALateChoiceCompletesTheTextAsItIsNow)
{
    UseLocalNames({"goods", "goodness"});
    LoadNames();
    const struct {
        const char* why;
        const char* now;
        const char* after;
    } kDocuments[] = {
        {"the word went on", "x = goodn|;", "x = goodness|;"},
        {"the word is gone", "x = |;", "x = |;"},
        {"the text is gone", "|", "|"},
        {"the caret went elsewhere", "x = good; yy|", "x = good; goodness|"},
        {"or where no word is", "x = good; |", "x = good; |"},
    };
    for (const auto& [why, now, after] : kDocuments) {
        host.SetMarked("x = |;");
        Type("good");
        ASSERT_TRUE(framework.display.InvokeItem(Shown()->number, 0)) << why;
        framework.Settle();
        host.SetMarked(now);
        DeliverMessages();
        EXPECT_EQ(host.Marked(), after) << why;
    }
}

TEST_F(CompletionBadInput, AChoiceForAClosedDocumentIsDropped)
{
    UseLocalNames({"goods", "goodness"});
    LoadNames();
    host.SetMarked("x = |;");
    Type("good");
    ASSERT_TRUE(framework.display.InvokeItem(Shown()->number, 0));
    framework.Settle();
    host.documentID = 8; // the user is in another by now
    host.SetMarked("y = goo|;");
    DeliverMessages();
    EXPECT_EQ(host.Marked(), "y = goo|;");
    EXPECT_FALSE(Shown());
}

TEST_F(CompletionBadInput, NonAsciiBytesAreShownAndInsertedUnchanged)
{
    const Lines names = {"goo", "goo\x80", "goo\xc3\xbc", "goo\xff"};
    UseLocalNames({"goo\xff", "goo", "goo\xc3\xbc", "goo\x80"});
    LoadNames();
    for (size_t i = 0; i < names.size(); ++i) {
        AutoSuggest("goo|");
        ASSERT_EQ(Candidates(), names);
        DoubleClick(static_cast<long>(i));
        EXPECT_EQ(host.Marked(), names[i] + "|");
    }
}

TEST_F(CompletionBadInput, NothingHappensWhereNothingIsTyped)
{
    UseLocalNames({"draw"});
    LoadNames();
    for (const char* document : {"|", "x = |", "[a |", "[|", "a; |;", "f(a, |)", "\xc3\xbc|"}) {
        Suggest(document);
        EXPECT_EQ(host.Marked(), document);
        AutoSuggest(document);
        EXPECT_EQ(host.Marked(), document);
        EXPECT_FALSE(Shown()) << document;
    }
    EXPECT_EQ(Beeps(), 0);
}

TEST_F(CompletionBadInput, NamesOfAnyLengthAreCompletedAsFarAsTheyAreRead)
{
    const std::string longest(900, 'n'); // a tag's line has room for little more
    UseLocalNames({longest});
    LoadNames();
    Suggest(longest.substr(0, 899) + "|");
    EXPECT_EQ(host.Marked(), longest + "|");
    for (const size_t length : {1023, 1024, 1025, 3000}) {
        const std::string typed(length, 'n');
        const long beeps = Beeps();
        Suggest(typed + "|");
        EXPECT_EQ(Beeps(), beeps + 1) << length << ": a pattern as any other";
        AutoSuggest(typed + "|");
        EXPECT_FALSE(Shown());
        EXPECT_EQ(host.Marked(), typed + "|");
        Choose("chosen");
        EXPECT_EQ(host.Marked(), "chosen|") << length;
    }
}

TEST_F(CompletionBadInput, ASelectorOfMoreThan1024CharactersIsNotAPattern)
{
    UseLocalNames({"other"});
    LoadNames();
    const struct {
        size_t length;
        bool isPattern;
    } kLengths[] = {{1023, true}, {1024, true}, {1025, false}, {3000, false}};
    for (const auto& [length, isPattern] : kLengths) {
        const std::string typed = "[a s:b " + std::string(length - 2, 'n') + "|"; // the pattern is "s:nnn"
        UseLocalNames({"other"});
        const long beeps = Beeps();
        Suggest(typed);
        EXPECT_EQ(Beeps() - beeps, isPattern) << length << ": one that has no candidates, or none at all";
        host.log.clear();
        Choose(("s:" + std::string(length - 2, 'n') + "n:").c_str());
        EXPECT_EQ(host.log.empty(), !isPattern) << length;
    }
}

TEST_F(CompletionBadInput, ASelectionOfMoreThan1024CharactersClosesTheList)
{
    UseLocalNames(Lines(1, std::string(900, 'n')));
    LoadNames();
    const std::string word(600, 'n');
    AutoSuggest("[[" + word + "]]");
    EXPECT_TRUE(Shown());
    AutoSuggest("[[" + std::string(1025, 'n') + "]]");
    EXPECT_FALSE(Shown());
}

} // namespace
