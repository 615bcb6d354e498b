#include "plugin/KeyEvents.h"

#include "plugin/Activation.h"
#include "tests/plugin/PluginTest.h"

namespace {

class KeyEvents : public PluginTest {
protected:
    void OpenResultsBeside(const char* document)
    {
        OpenResults();
        Seats::Reset();
        host.SetMarked(document);
    }
    bool Suggested() const { return Seats::calls == Calls{"SelectionAutoSuggestCompletions"}; }
};

struct Noted {
    const char* why;
    const char* text;
    const char* autoComplete;
    long caret, start, size;
};

const Noted kNoted[] = {
    {"an identifier before the caret", "x = dra|", "on", 7, 4, 3},
    {"none", "x = |", "on", 0, 0, 0},
    {"one that continues after the caret", "x = dr|a", "on", 0, 0, 0},
    {"a selection", "x = [[dra]]", "on", 0, 0, 0},
    {"one that begins the document starts before it", "dra|", "on", 3, -1, 4},
    {"nothing while completion while typing is off", "x = dra|", "off", 0, 0, 0},
};

TEST_F(KeyEvents, AKeyDownRecordsTheIdentifierBeforeTheCaret)
{
    for (const Noted& row : kNoted) {
        Set("DeclAutoComplete", row.autoComplete);
        gPreKeyDownSelStart = gPreKeyDownPatternStart = gPreKeyDownPatternSize = 99;
        host.SetMarked(row.text);
        Send(300);
        EXPECT_EQ(SendKeyDown('x'), 0) << row.why;
        EXPECT_EQ(gPreKeyDownSelStart, row.caret) << row.why;
        EXPECT_EQ(gPreKeyDownPatternStart, row.start) << row.why;
        EXPECT_EQ(gPreKeyDownPatternSize, row.size) << row.why;
        EXPECT_EQ(gJustActivatedWindow, nullptr) << row.why;
    }
}

TEST_F(KeyEvents, AKeyDownClosesTheResults)
{
    OpenResultsBeside("x = dra|");
    EXPECT_EQ(SendKeyDown('q'), 0);
    EXPECT_FALSE(ResultsAreOpen());
    EXPECT_EQ(Seats::calls, Calls{"RouteKeyboardEventIfNeeded q"});
}

TEST_F(KeyEvents, AKeyThatTheCompletionsTookClosesNothing)
{
    OpenResultsBeside("x = dra|");
    Seats::routed = 2;
    EXPECT_EQ(SendKeyDown('q'), 2);
    EXPECT_TRUE(ResultsAreOpen());
    EXPECT_EQ(gPreKeyDownPatternSize, 3); // noted all the same
}

struct Typed {
    const char* why;
    const char* before;
    const char* after;
    bool suggests;
};

const Typed kTyped[] = {
    {"the identifier grew", "x = dra|", "x = draw|", true},
    {"by several letters at once", "x = d|", "x = draw|", true},
    {"at the start of the document", "dra|", "draw|", true},
    {"a new identifier began", "x = |", "x = d|", true},
    {"a new one began elsewhere: its one letter is enough", "|x = ;", "x = d|;", true},
    {"a new one began with two letters, and starts where none was", "x = |", "x = dr|", false},
    {"one began the document, where one of size 1 seemed to stand", "|", "d|", true},
    {"the caret moved on without an identifier", "x = dra|", "x = dra;|", false},
    {"a blank ended it", "x = dra|", "x = dra |", false},
    {"a new one began where the old one was noted", "x = dra|", "x = dra d|", false},
    {"the caret moved back", "x = dra|", "x = dr|", false},
    {"nothing moved", "x = dra|", "x = dra|", false},
    {"the document was emptied: its start, where one of size 1 seems to stand, is not forward", "x = |", "|", false},
    {"the identifier moved and grew", "x = dra|", "yy = draw|", false},
    {"the caret went on, but the identifier shrank", "aa.drawing|", "aa.drawing.dr|", false},
    {"a colon counts as part of it", "x = std|", "x = std:|", true},
};

TEST_F(KeyEvents, ATypedKeySuggestsWhileAnIdentifierGrowsAndClosesOtherwise)
{
    for (const Typed& row : kTyped) {
        host.SetMarked(row.before);
        SendKeyDown('x');
        OpenResultsBeside(row.after); // they stand for any palette
        gHandlingAutoCompletePrimitive = true;
        Send(300);
        EXPECT_EQ(Send(207), 0) << row.why;
        EXPECT_EQ(Suggested(), row.suggests) << row.why;
        EXPECT_EQ(ResultsAreOpen(), row.suggests) << row.why;
        EXPECT_FALSE(gHandlingAutoCompletePrimitive) << row.why;
        EXPECT_EQ(gJustActivatedWindow, nullptr) << row.why;
        Send(309);
    }
}

struct Rule {
    const char* why;
    long caret, start, size; // noted at the key; now they are 8, 4, 4
    bool fits;
};

// In a document of one piece some of these follow from others, as the caret stands where the identifier ends.
const Rule kRules[] = {
    {"forward, at the same place, and longer", 7, 4, 3, true},
    {"not forward", 8, 4, 3, false},
    {"backward", 9, 4, 3, false},
    {"at another place", 7, 3, 3, false},
    {"not longer", 7, 4, 4, false},
    {"shorter", 7, 4, 5, false},
};

TEST_F(KeyEvents, EachRecordedValueCountsSeparately)
{
    for (const Rule& row : kRules)
        for (const long event : {207L, 208L}) {
            OpenResultsBeside("x = draw|");
            gPreKeyDownSelStart = row.caret;
            gPreKeyDownPatternStart = row.start;
            gPreKeyDownPatternSize = row.size;
            EXPECT_EQ(Send(event), 0) << row.why;
            EXPECT_EQ(ResultsAreOpen(), row.fits) << row.why << " " << event;
            EXPECT_EQ(Suggested(), row.fits && event == 207) << row.why << " " << event;
            Send(309);
        }
}

struct Passed {
    const char* why;
    bool pending;
    const char* autoComplete;
};

const Passed kPassed[] = {
    {"more keys wait", true, "on"},
    {"completion while typing is off", false, "off"},
    {"both", true, "off"},
};

TEST_F(KeyEvents, AnIgnoredTypedKeyStillClearsFlags)
{
    for (const Passed& row : kPassed) {
        for (const char* after : {"x = draw|", "x = dr|"}) {
            Set("DeclAutoComplete", "on");
            host.pending = false;
            host.SetMarked("x = dra|");
            SendKeyDown('x');
            OpenResultsBeside(after);
            Send(300);
            gHandlingAutoCompletePrimitive = true;
            host.pending = row.pending;
            Set("DeclAutoComplete", row.autoComplete);
            EXPECT_EQ(Send(207), 0) << row.why;
            EXPECT_TRUE(Seats::calls.empty()) << row.why;
            EXPECT_TRUE(ResultsAreOpen()) << row.why;
            EXPECT_EQ(gJustActivatedWindow, nullptr) << row.why;
            EXPECT_FALSE(gHandlingAutoCompletePrimitive) << row.why;
            Send(309);
        }
    }
}

struct Edited {
    const char* why;
    const char* before;
    const char* after;
    bool closes;
};

const Edited kEdited[] = {
    {"the identifier grew", "x = dra|", "x = draw|", false},
    {"the identifier shrank", "x = dra|", "x = dr|", true},
    {"nothing changed", "x = dra|", "x = dra|", true},
    {"another identifier", "x = dra|", "x = dra.d|", true},
    {"a new identifier: here it closes", "x = |", "x = d|", true},
    {"no identifier", "x = dra|", "x = dra;|", true},
};

TEST_F(KeyEvents, AnEditNeverSuggestsAndClosesUnlessTheIdentifierGrew)
{
    for (const Edited& row : kEdited) {
        host.SetMarked(row.before);
        SendKeyDown('x');
        for (const bool pending : {false, true}) { // unlike after a typed key, it does not matter whether more wait
            OpenResultsBeside(row.after);
            host.pending = pending;
            Send(300);
            EXPECT_EQ(Send(208), 0) << row.why;
            EXPECT_EQ(ResultsAreOpen(), !row.closes) << row.why;
            EXPECT_TRUE(Seats::calls.empty()) << row.why;
            EXPECT_EQ(gJustActivatedWindow, window) << row.why << ": a click may still be the one that activated it";
            Send(309);
        }
    }
}

TEST_F(KeyEvents, AnEditClosesNothingWhenCompletionWhileTypingIsOff)
{
    for (const bool ownEdit : {true, false}) {
        Set("DeclAutoComplete", "on");
        host.SetMarked("x = dra|");
        SendKeyDown('x');
        OpenResultsBeside("x = dr|");
        Set("DeclAutoComplete", "off");
        gHandlingAutoCompletePrimitive = ownEdit;
        EXPECT_EQ(Send(208), 0);
        EXPECT_TRUE(ResultsAreOpen()) << ownEdit;
        EXPECT_FALSE(gHandlingAutoCompletePrimitive);
        Send(309);
    }
}

TEST_F(KeyEvents, TheCompletionCommandsOwnEditClosesNothing)
{
    host.SetMarked("x = dra|");
    SendKeyDown('.');
    SendCommand("SymbolCompletion");
    EXPECT_TRUE(gHandlingAutoCompletePrimitive);
    OpenResultsBeside("x = dra|"); // stands for the list that the command opened
    Send(208);
    EXPECT_TRUE(ResultsAreOpen());
    EXPECT_FALSE(gHandlingAutoCompletePrimitive);
    Send(208);
    EXPECT_FALSE(ResultsAreOpen());
}

TEST_F(KeyEvents, OnlyTheCompletionCommandShieldsItsEdit)
{
    for (const char* name : {"SymbolLookup", "DeclarationLookup", "DefinitionLookup", "SomethingElse"}) {
        SendCommand(name);
        EXPECT_FALSE(gHandlingAutoCompletePrimitive) << name;
    }
}

} // namespace
