// What a user sees at the keyboard, from the first letter to the chosen entry.
#include "plugin/KeyEvents.h"
#include "tests/completion/TypingTest.h"
#include "tests/support/RefusedThreads.h"

namespace {

class Typing : public TypingTest {
protected:
    // The names are loaded, and the document is open.
    void Open(const char* document, const Lines& names)
    {
        UseLocalNames(names);
        LoadNames();
        host.SetMarked(document);
        host.log.clear();
    }
    bool IsFocused() const { return Shown()->list->colour == rgb_color{180, 200, 240, 255}; }
    long Undos() const
    {
        return std::count_if(host.log.begin(), host.log.end(),
                             [](const std::string& line) { return line.compare(0, 9, "BeginUndo") == 0; });
    }

    const Lines strings = {"NSStream", "NSString", "NSStringEncoding"};
};

TEST_F(Typing, ALaterKeyOpensTheListWhenItsThreadFailedToStart)
{
    Open("x = |;", strings);
    Complaints complaints;
    {
        const RefusedThreads refused;
        EXPECT_EQ(Type("NSSt\x1f"), 0) << "no list takes a key";
        EXPECT_TRUE(framework.Windows().empty());
        EXPECT_EQ(CompletionWindow::gCompletionWindow, nullptr);
        EXPECT_EQ(complaints.Take(), Lines{NoThreadsFor("a window is not shown")}) << "once, not once a key";
    }
    host.SetMarked("x = NSSt|;");
    Type("r");
    EXPECT_EQ(Candidates(), strings);
}

TEST_F(Typing, ALaterKeyLoadsTheNamesWhenTheirThreadFailedToStart)
{
    UseLocalNames(strings);
    host.SetMarked("x = |;");
    Complaints complaints;
    {
        const RefusedThreads refused;
        EXPECT_EQ(Type("NSStr"), 0);
        EXPECT_EQ(complaints.Take().size(), 1u) << "once, not once a key";
    }
    Type("i");
    JoinThreads();
    EXPECT_FALSE(Shown());
    Type("n");
    EXPECT_EQ(Candidates(), (Lines{"NSString", "NSStringEncoding"}));
    EXPECT_EQ(host.Marked(), "x = NSStrin|;");
}

TEST_F(Typing, TheListOpensAtTheThirdLetterAndIsRefilledByLaterOnes)
{
    Open("x = |;", strings);
    const struct {
        char key;
        Lines listed;
    } kKeys[] = {
        {'N', {}},
        {'S', {}},
        {'S', strings},
        {'t', strings},
        {'r', strings},
        {'i', {"NSString", "NSStringEncoding"}},
        {'n', {"NSString", "NSStringEncoding"}},
        {'g', {"NSString", "NSStringEncoding"}},
        {'E', {"NSStringEncoding"}},
        {'n', {"NSStringEncoding"}},
        {';', {}},
    };
    long number = 0;
    for (const auto& [key, listed] : kKeys) {
        EXPECT_FALSE(Press(key)) << key << " is typed";
        ASSERT_EQ(Candidates(), listed) << host.Marked();
        if (!listed.empty()) {
            EXPECT_TRUE(number == 0 || number == Shown()->number) << "one window all the time";
            EXPECT_FALSE(IsFocused());
            EXPECT_EQ(Shown()->frame.left, 48 + 7 * 7) << "it stands where it opened";
            number = Shown()->number;
        }
    }
    EXPECT_EQ(host.Marked(), "x = NSStringEn;|;");
    EXPECT_EQ(Undos(), 0) << "nothing but the user's keys";
    EXPECT_EQ(Beeps(), 0);
}

TEST_F(Typing, TheListClosesOnceTheNameIsTypedInFull)
{
    Open("|", {"drawing"});
    EXPECT_EQ(Type("drawin"), 0);
    EXPECT_EQ(Candidates(), Lines{"drawing"});
    Type("g");
    EXPECT_FALSE(Shown());
    Type("s");
    EXPECT_FALSE(Shown());
}

TEST_F(Typing, DownAndEnterChooseAnEntry)
{
    Open("x = |;", strings);
    Type("NSSt");
    EXPECT_EQ(Type("\x1f\x1f\x1e\n"), 4) << "Down, Down, Up, Enter";
    EXPECT_EQ(host.Marked(), "x = NSString|;");
    EXPECT_FALSE(Shown());
    EXPECT_EQ(Undos(), 1);
    EXPECT_EQ(Type("\x1f\n"), 0) << "the document has all keys again";
}

TEST_F(Typing, EnterAndBlankAreTypedUnlessTheListHasTheFocus)
{
    for (const char* key : {"\n", " "}) {
        Open("|", strings);
        EXPECT_EQ(Type("NSSt"), 0);
        ASSERT_TRUE(Shown());
        EXPECT_EQ(Type(key), 0);
        EXPECT_EQ(host.text, std::string("NSSt") + key);
        EXPECT_FALSE(Shown());
    }
}

TEST_F(Typing, LettersLeaveTheListAndRefillIt)
{
    Open("|", strings);
    Type("NSSt\x1f");
    ASSERT_TRUE(IsFocused());
    ASSERT_EQ(Shown()->list->selected, 1);
    EXPECT_EQ(Type("r"), 0);
    EXPECT_FALSE(IsFocused());
    EXPECT_EQ(Shown()->list->selected, 0);
    EXPECT_EQ(Candidates(), strings);
    EXPECT_EQ(Type("\n"), 0) << "so Enter is the document's";
}

TEST_F(Typing, EscapeLeavesTheListOpenButNotInIt)
{
    Open("|", strings);
    Type("NSSt\x1f");
    EXPECT_FALSE(Press(kEscape));
    ASSERT_TRUE(Shown());
    EXPECT_FALSE(IsFocused());
}

TEST_F(Typing, BackspaceAndLeftArrowCloseTheList)
{
    for (const char key : {kBackspace, kLeftArrow}) {
        Open("|", strings);
        Type("NSStr");
        ASSERT_TRUE(Shown());
        EXPECT_FALSE(Press(key));
        EXPECT_FALSE(Shown()) << static_cast<int>(key);
    }
}

TEST_F(Typing, DownWithCapsLockGoesToTheDocumentAndClosesTheList)
{
    Open("|", strings);
    Type("NSStr");
    EXPECT_FALSE(Press(B_DOWN_ARROW, B_CAPS_LOCK));
    EXPECT_FALSE(Shown());
    EXPECT_EQ(host.Marked(), "NSSt|r");
}

TEST_F(Typing, TheShortcutInsertsThenListsThenChooses)
{
    Open("x = |;", strings);
    CompleteWhileTyping(false);
    Type("NSStr");
    EXPECT_FALSE(PressShortcut()) << "no list can take it";
    EXPECT_EQ(Candidates(), strings) << "they agree on no more";
    EXPECT_TRUE(PressShortcut());
    EXPECT_EQ(host.Marked(), "x = NSStream|;");
    EXPECT_FALSE(Shown());
    EXPECT_FALSE(PressShortcut());
    EXPECT_EQ(Beeps(), 1);
}

TEST_F(Typing, TheCommandsListSurvivesTheCommandsOwnEdit)
{
    Open("x = NSStr|;", strings);
    PressShortcut(); // its own 208 comes behind it
    ASSERT_TRUE(Shown());
    Send(208);
    framework.Settle();
    EXPECT_FALSE(Shown()) << "the next one is another's";
}

// The editor may tell of the command's edit while the command is still at it.
TEST_F(Typing, TheCommandMarksItsEditBeforeItStarts)
{
    struct TellingHost : FakeHost {
        void InsertText(const char* inserted, long length, long offset) override
        {
            marked = gHandlingAutoCompletePrimitive;
            FakeHost::InsertText(inserted, length, offset);
        }
        bool marked = false;
    };
    Open("x = NSStringE|;", strings);
    TellingHost telling;
    static_cast<FakeHost&>(telling) = host;
    telling.name = "SymbolCompletion";
    {
        const vetch::PluginCall call;
        PluginMain(103, &telling);
    }
    EXPECT_EQ(telling.Marked(), "x = NSStringEncoding|;");
    EXPECT_TRUE(telling.marked);
    EXPECT_TRUE(gHandlingAutoCompletePrimitive) << "and until the editor says that it is done";
}

TEST_F(Typing, ChoosesFromTheListOfTypingWithTheShortcut)
{
    Open("x = |;", strings);
    Type("NSSt\x1f");
    EXPECT_TRUE(PressShortcut());
    EXPECT_EQ(host.Marked(), "x = NSString|;");
}

TEST_F(Typing, ADoubleClickChoosesAnEntry)
{
    Open("x = |;", strings);
    Type("NSSt");
    DoubleClick(2);
    EXPECT_EQ(host.Marked(), "x = NSStringEncoding|;");
    EXPECT_FALSE(Shown());
}

TEST_F(Typing, ChoosesOneOfAScopesNames)
{
    Open("x = std::|;", {"std::vector", "std::vector_base"});
    Type("vec");
    ASSERT_EQ(Candidates(), (Lines{"vector", "vector_base"}));
    Type("\x1f\n");
    EXPECT_EQ(host.Marked(), "x = std::vector_base|;");
    Open("Outer<int>::|", {"A::Outer::name", "Outer::names"});
    Type("na");
    ASSERT_EQ(Candidates(), Lines{"Outer::names"});
    PressShortcut();
    EXPECT_EQ(host.Marked(), "Outer<int>::names|");
    Open("Outer::|", {"A::Outer::name", "Outer::names"});
    Type("na");
    ASSERT_EQ(Candidates(), (Lines{"A::Outer::name", "Outer::names"}));
    PressShortcut();
    EXPECT_EQ(host.Marked(), "Outer::name|");
}

TEST_F(Typing, ASelectorIsCompletedPartByPart)
{
    Open("[a |];", {"initWith:and:or:", "initWith:but:"});
    Type("ini");
    ASSERT_EQ(Candidates(), (Lines{"initWith:and:or:", "initWith:but:"}));
    PressShortcut();
    EXPECT_EQ(host.Marked(), "[a initWith: |and: or:];");
    Open("[a initWith:b |];", {"initWith:and:or:", "initWith:but:"});
    Type("b");
    ASSERT_EQ(Candidates(), Lines{"initWith:but:"}) << "the piece before counts among the letters";
    PressShortcut();
    EXPECT_EQ(host.Marked(), "[a initWith:b but:|];");
    EXPECT_EQ(Undos(), 1);
}

TEST_F(Typing, NothingOpensOrClosesWithTheSettingOff)
{
    Open("|", strings);
    CompleteWhileTyping(false);
    Type("NSStr");
    EXPECT_FALSE(Shown());
    PressShortcut();
    ASSERT_EQ(Candidates(), strings);
    EXPECT_EQ(Type("q;"), 0);
    EXPECT_EQ(Candidates(), strings) << "what the user opened stays, whatever is typed";
    EXPECT_EQ(Type("\x1f"), 1) << "and takes its keys";
}

TEST_F(Typing, TheListIsNotRefilledWhileMoreKeysWait)
{
    Open("|", strings);
    Type("NSSt");
    host.pending = true;
    Type("ri");
    EXPECT_EQ(Candidates(), strings);
    host.pending = false;
    Type("n");
    EXPECT_EQ(Candidates(), (Lines{"NSString", "NSStringEncoding"}));
}

TEST_F(Typing, LeavingTheDocumentClosesTheList)
{
    for (const long event : {209L, 301L, 308L, 309L}) {
        Open("|", strings);
        Type("NSSt");
        ASSERT_TRUE(Shown());
        Send(event);
        EXPECT_FALSE(Shown()) << event;
        EXPECT_EQ(CompletionWindow::gCompletionWindow, nullptr) << event;
    }
}

TEST_F(Typing, AKeyThatTheListReturnsClosesIt)
{
    Open("|", strings);
    Type("NSSt");
    EXPECT_EQ(SendMessage(202, BMessage(B_KEY_DOWN)), 0);
    framework.Settle();
    EXPECT_FALSE(Shown());
}

TEST_F(Typing, TheLookupResultsGiveWayToTyping)
{
    Open("x = |;", {"draw", "draw", "drawRect"});
    host.SetMarked("draw|");
    Send(100);
    framework.Settle();
    ASSERT_EQ(Candidates().size(), 2u) << "two matches for draw";
    host.SetMarked("x = |;");
    EXPECT_EQ(Type("d"), 0);
    EXPECT_FALSE(Shown());
    Type("ra");
    EXPECT_EQ(Candidates(), (Lines{"draw", "drawRect"}));
}

} // namespace
