// The script's lines, around a plug-in that records its events.
#include "wren/script/ScriptSession.h"
#include "tests/wren/PluginFixture.h"
#include "vetch/app/Modifiers.h"
#include "vetch/interface/BAlert.h"
#include "vetch/interface/BCheckBox.h"
#include "vetch/interface/BListItem.h"
#include "vetch/interface/BListView.h"
#include "vetch/interface/BMenu.h"
#include "vetch/interface/BMenuBar.h"
#include "vetch/interface/BMenuItem.h"
#include "vetch/interface/BPopUpMenu.h"
#include "vetch/interface/BWindow.h"
#include "wren/script/HeadlessStage.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using wren::Json;
namespace Event = wren::Event;

class Script : public PluginFixture {
protected:
    ~Script() override
    {
        answer = nullptr; // drops references to the test
        End();
    }
    void Begin(const std::string& settings = "")
    {
        stage = std::make_unique<wren::HeadlessStage>(*bundle, settings);
        session = std::make_unique<wren::ScriptSession>(*stage);
        events.clear();
    }
    void End()
    {
        session.reset();
        stage.reset();
    }
    Json Line(const std::string& line) { return session->Answer(line); }
    Json Open(const std::string& text)
    {
        return Line(Json{{"do", "document"}, {"path", "/tmp/a.c"}, {"text", text}}.dump());
    }
    Json State() { return Line(R"({"do": "state"})")["state"]; }

    std::unique_ptr<wren::HeadlessStage> stage;
    std::unique_ptr<wren::ScriptSession> session;
};

TEST_F(Script, RefusesAMalformedLineAndReadsTheNext)
{
    Begin();
    const struct {
        const char* why;
        const char* line;
        const char* error;
    } kCases[] = {
        {"no JSON", "{nonsense", "the line is not"},
        {"an empty line", "", "the line is not"},
        {"a list", "[1, 2]", "the line is not"},
        {"a text", "\"state\"", "the line is not"},
        {"bytes that are not text", "{\"do\": \"\xff\"}", "the line is not"},
        {"nothing to do", "{}", "do is missing"},
        {"not a text to do", R"({"do": 1})", "do is not a text"},
        {"unknown", R"({"do": "dance"})", "do is unknown"},
        {"a document without path", R"({"do": "document"})", "path is missing"},
        {"a path that is not text", R"({"do": "document", "path": 3})", "path is not a text"},
        {"a text that is not a string", R"({"do": "document", "path": "/tmp/a", "text": null})", "text is not a text"},
        {"a switch that is none", R"({"do": "document", "path": "/tmp/a", "worksheet": 1})", "worksheet is neither"},
        {"a document that is not there", R"({"do": "document", "path": "/no/such"})", "path cannot be read"},
        {"text without a document", R"({"do": "text", "text": ""})", "document is missing"},
        {"select without a document", R"({"do": "select", "start": 0})", "document is missing"},
        {"key without a document", R"({"do": "key", "key": "a"})", "document is missing"},
        {"type without a document", R"({"do": "type", "text": "a"})", "document is missing"},
        {"undo without a document", R"({"do": "undo"})", "document is missing"},
        {"an offset without a document", R"({"do": "click", "offset": 0})", "document is missing"},
        {"a selection without start", R"({"do": "select"})", "start is missing"},
        {"a start that is not a number", R"({"do": "select", "start": "0"})", "start is not a whole number"},
        {"half a byte", R"({"do": "select", "start": 0.5})", "start is not a whole number"},
        {"too large", R"({"do": "select", "start": 18446744073709551615})", "start is not a whole number"},
        {"an end that is not a number", R"({"do": "select", "start": 0, "end": []})", "end is not"},
        {"no key", R"({"do": "key"})", "key is missing"},
        {"two characters", R"({"do": "key", "key": "ab"})", "key is neither"},
        {"an unknown modifier", R"({"do": "key", "key": "a", "modifiers": ["hyper"]})", "modifiers has no"},
        {"modifiers that are not a list", R"({"do": "key", "key": "a", "modifiers": "shift"})",
         "modifiers is not a list"},
        {"modifiers that are not texts", R"({"do": "button", "modifiers": [1]})", "modifiers is not a list"},
        {"nothing to type", R"({"do": "type"})", "text is missing"},
        {"a click nowhere", R"({"do": "click"})", "offset is missing"},
        {"half a place", R"({"do": "click", "at": [1]})", "at is not a list of 2 numbers"},
        {"a place that is none", R"({"do": "click", "at": [1, "2"]})", "at is not a list of 2 numbers"},
        {"buttons that are not a number", R"({"do": "click", "at": [1, 2], "buttons": "1"})", "buttons is not"},
        {"a choice that is none", R"({"do": "popup", "choose": true})", "choose is not a whole number"},
        {"no item", R"({"do": "menu"})", "choose is missing"},
        {"an unknown item", R"({"do": "menu", "choose": "Dance"})", "choose is no item"},
        {"no command", R"({"do": "command"})", "name is missing"},
        {"no event", R"({"do": "event"})", "event is missing"},
        {"an event that is not a number", R"({"do": "event", "event": "1"})", "event is not"},
        {"words that are not a list", R"({"do": "event", "event": 104, "args": "a"})", "args is not"},
        {"a message that is not an object", R"({"do": "event", "event": 202, "message": 1})",
         "message is not an object"},
        {"a message without code", R"({"do": "event", "event": 202, "message": {}})", "message.what is missing"},
        {"a long code", R"({"do": "event", "event": 202, "message": {"what": "kselx"}})", "message.what is not four"},
        {"a string that is none", R"({"do": "event", "event": 202, "message": {"what": "ksel", "strings": {"a": 1}}})",
         "message.strings.a is not a text"},
        {"a number that is none", R"({"do": "event", "event": 202, "message": {"what": "ksel", "ints": {"a": ""}}})",
         "message.ints.a is not a whole number"},
        {"a large number", R"({"do": "event", "event": 202, "message": {"what": "ksel", "ints": {"a": 2147483648}}})",
         "message.ints.a is too large"},
        {"refs that are not a list", R"({"do": "event", "event": 202, "message": {"what": "gnlt", "refs": "/"}})",
         "message.refs is not a list"},
        {"a switch that is none", R"({"do": "event", "event": 6, "window": 0})", "window is neither"},
        {"no line", R"({"do": "setting"})", "line is missing"},
        {"an empty line", R"({"do": "setting", "line": "  "})", "line has no word"},
        {"no answer", R"({"do": "answer"})", "alert is missing"},
        {"an answer that is none", R"({"do": "answer", "alert": "OK"})", "alert is not a whole number"},
        {"a file that is none", R"({"do": "answer", "file": 1})", "file is not a text"},
        {"no window", R"({"do": "invoke", "index": 0})", "window is missing"},
        {"no index", R"({"do": "invoke", "window": 1})", "index is missing"},
        {"a window that is not there", R"({"do": "mouse", "window": 1, "index": 0})",
         "window is none that is to be seen"},
        {"a press nowhere", R"({"do": "press", "window": 9, "item": 1})", "window is none that is to be seen"},
        {"a text nowhere", R"({"do": "enter", "window": 9, "item": 1, "text": ""})",
         "window is none that is to be seen"},
        {"a check without on", R"({"do": "check", "window": 9, "item": 1})", "on is missing"},
        {"closing nothing", R"({"do": "close", "window": 9})", "window is none that is to be seen"},
        {"a panel that is none", R"({"do": "panel", "identifier": 1})", "identifier is not a text"},
        {"no time", R"({"do": "clock"})", "advance is missing"},
        {"back in time", R"({"do": "clock", "advance": -1})", "advance is negative"},
        {"the end of time", R"({"do": "clock", "advance": 9223372036854775807})", "advance is too large"},
        {"half a screen", R"({"do": "screen", "frame": [0, 0]})", "frame is not a list of 4 numbers"},
        {"a shortcut for nothing", R"({"do": "shortcut", "key": "a"})", "command is missing"},
        {"a shortcut that is none", R"({"do": "shortcut", "command": "c", "key": "ab"})", "key is no key"},
        {"pending what", R"({"do": "pending"})", "on is missing"},
        {"a limit that is none", R"({"do": "settle", "timeout": "1"})", "timeout is not"},
        {"a limit in the past", R"({"do": "settle", "timeout": -1})", "timeout is not between"},
        {"an endless limit", R"({"do": "settle", "timeout": 9223372036854775807})", "timeout is not between"},
    };
    const Json before = State();
    events.clear();
    for (const auto& each : kCases) {
        const Json answer = Line(each.line);
        EXPECT_EQ(answer["ok"], false) << each.why;
        EXPECT_THAT(answer["error"].get<std::string>(), StartsWith(each.error)) << each.why;
        EXPECT_EQ(answer["log"], Json::array()) << each.why;
    }
    EXPECT_THAT(TakeEvents(), IsEmpty()) << "a line that is refused reaches nobody";
    EXPECT_EQ(State(), before);
}

TEST_F(Script, RefusesADeeplyNestedLine)
{
    Begin();
    const std::string open(1'000'000, '['), close(1'000'000, ']');
    EXPECT_EQ(Line("{\"do\": \"state\", \"id\": " + open + close + "}")["ok"], false);
    EXPECT_EQ(Line(open)["ok"], false);
    EXPECT_EQ(Line(R"({"do": "state", "id": [[[[[[[[1]]]]]]]]})")["ok"], true);
}

TEST_F(Script, ReturnsTheIdentifierOfALine)
{
    Begin();
    EXPECT_EQ(Line(R"({"id": 7, "do": "state"})")["id"], 7);
    EXPECT_EQ(Line(R"({"id": ["a", {"b": null}], "do": "dance"})")["id"], Json::parse(R"(["a", {"b": null}])"));
    EXPECT_FALSE(Line(R"({"do": "state"})").contains("id"));
}

TEST_F(Script, ReportsTheStartInTheFirstAnswer)
{
    const std::string settings = home.Write("settings", "a 1\n");
    std::string seen;
    answer = [&](long event, PluginInterface* record) {
        if (event == Event::kRegister) {
            record->RegisterCommand("Do", "Does \xff");
            record->SetPluginFlags(0x638);
            record->RegisterSetting("a");
        }
        if (event == Event::kMenuBarBuilt)
            record->AddMenuItem(be_app->MenuBar()->FindItem("Search")->Submenu(), 0, "Do it", "Do", 0, 0x42);
        if (event == Event::kResourceIDs)
            record->SetResourceIDs(14000, 14001);
        if (event == Event::kOfferPanels)
            record->RegisterPreferencePanel("id", "Title", "icon");
        return 0L;
    };
    Begin(settings);
    const Json first = Line(R"({"do": "state"})");
    EXPECT_EQ(first["log"], Json::parse(R"([
        ["RegisterCommand", "Do", "Does \ufffd"], ["SetPluginFlags", 1592], ["RegisterSetting", "a"],
        ["AddMenuItem", "Search", 0, "Do it", "Do", "", 66], ["SetResourceIDs", 14000, 14001],
        ["RegisterPreferencePanel", "id", "Title", "icon"]])"));
    EXPECT_EQ(first["state"], Json::parse(R"({"document": null, "worksheet": "", "clock": 1000000, "windows": [],
        "menu": [["Do it", true, "", 66]]})"));
    EXPECT_EQ(Line(R"({"do": "state"})")["log"], Json::array());
}

TEST_F(Script, LogsEditsAndUndoesThem)
{
    Begin();
    answer = [](long event, PluginInterface* record) {
        if (event == Event::kCommand) {
            record->BeginUndo(4, 6, "Insert symbol completion");
            record->DeleteText(4, 2);
            record->InsertText("ba\xffr", 4, 4);
            record->Select(8, 8);
            record->CommandDone(0);
            record->AppendToWorksheet("line\n", true, true, true);
        }
        return 1L;
    };
    EXPECT_EQ(Open("foo ba")["document"], 1);
    Line(R"({"do": "select", "start": 6})");
    const Json answer = Line(R"({"do": "command", "name": "Do"})");
    EXPECT_EQ(answer["returned"], 1);
    EXPECT_EQ(answer["log"], Json::parse(R"([["BeginUndo", 4, 6, "Insert symbol completion"], ["DeleteText", 4, 2],
        ["InsertText", "ba\ufffdr", 4], ["Select", 8, 8], ["CommandDone", 0],
        ["AppendToWorksheet", "line\n", true, true, true]])"));
    EXPECT_EQ(State()["document"],
              Json::parse(R"({"id": 1, "path": "/tmp/a.c", "text": "foo ba\ufffdr", "selection": [8, 8]})"));
    EXPECT_EQ(State()["worksheet"], "line\n");
    events.clear();
    EXPECT_EQ(Line(R"({"do": "undo"})")["undone"], "Insert symbol completion");
    EXPECT_THAT(TakeEvents(), ElementsAre(209));
    EXPECT_EQ(State()["document"]["text"], "foo ba");
    EXPECT_EQ(Line(R"({"do": "undo"})")["undone"], nullptr);
}

TEST_F(Script, SendsTheEventsOfAKeyStrokeInOrder)
{
    Begin();
    Open("");
    const struct {
        const char* why;
        const char* line;
        std::vector<long> events;
        const char* text;
    } kCases[] = {
        {"a character", R"({"do": "key", "key": "a"})", {206, 207}, "a"},
        {"enter", R"({"do": "key", "key": "enter"})", {206, 207}, "a\n"},
        {"backspace", R"({"do": "key", "key": "backspace"})", {206, 208}, "a"},
        {"an arrow", R"({"do": "key", "key": "left"})", {206, 208}, "a"},
        {"escape", R"({"do": "key", "key": "escape"})", {206}, "a"},
        {"control", R"({"do": "key", "key": "b", "modifiers": ["control"]})", {206}, "a"},
        {"the shortcut", R"({"do": "key", "key": ".", "modifiers": ["control", "caps"]})", {206, 103, 208}, "a"},
        {"a word",
         R"({"do": "type", "text": "x\u00e9"})",
         {206, 207, 206, 207},
         "x\u00e9"
         "a"},
    };
    for (const auto& each : kCases) {
        events.clear();
        Line(each.line);
        EXPECT_EQ(TakeEvents(), each.events) << each.why;
        EXPECT_EQ(State()["document"]["text"], each.text) << each.why;
    }
}

TEST_F(Script, DoesNotTypeAKeyThatThePluginTakes)
{
    Begin();
    Open("");
    answer = [](long event, PluginInterface*) { return event == Event::kKeyDown ? 2L : 0L; };
    events.clear();
    EXPECT_EQ(Line(R"({"do": "key", "key": "a"})")["returned"], 2);
    EXPECT_THAT(TakeEvents(), ElementsAre(206));
    EXPECT_EQ(State()["document"]["text"], "");
}

TEST_F(Script, HoldsModifiersAndTheMouseWhileALineRuns)
{
    Begin();
    Open("one\ntwo");
    answer = [](long event, PluginInterface* record) {
        BPoint where;
        uint32 buttons = 0;
        record->GetMouse(&where, &buttons, true);
        if (event == Event::kMouseDown)
            return record->OffsetAt(&where) * 1000 + static_cast<long>(buttons * 100 + modifiers());
        return static_cast<long>(modifiers());
    };
    EXPECT_EQ(Line(R"({"do": "click", "offset": 5, "modifiers": ["option"]})")["returned"], 5164);
    EXPECT_EQ(Line(R"({"do": "click", "at": [14, 0], "buttons": 2})")["returned"], 2200);
    EXPECT_EQ(Line(R"({"do": "click", "at": [700, 600.5], "buttons": 0})")["returned"], 7000);
    EXPECT_EQ(Line(R"({"do": "button", "modifiers": ["option", "shift"]})")["returned"], 0x41);
    EXPECT_EQ(Line(R"({"do": "button"})")["returned"], 0);
}

TEST_F(Script, AnswersThePluginsMenu)
{
    Begin();
    Open("");
    long chosen = -2;
    answer = [&](long event, PluginInterface*) {
        if (event != Event::kButtonPopUp)
            return 0L;
        BPopUpMenu menu("aMenu", false, false);
        menu.AddItem(new BMenuItem("First", nullptr, 'f', 0x4));
        menu.AddItem(new BMenuItem("Second", nullptr));
        menu.ItemAt(1)->SetEnabled(false);
        BMenuItem* item = menu.Go({48, 86}, false, false, false);
        chosen = item == nullptr ? -1 : menu.IndexOf(item);
        return 1L;
    };
    const struct {
        const char* why;
        const char* line;
        long chosen;
        Json choice;
    } kCases[] = {
        {"by index", R"({"do": "popup", "choose": 0})", 0, "First"},
        {"by label", R"({"do": "popup", "choose": "First"})", 0, "First"},
        {"dismissed", R"({"do": "popup"})", -1, nullptr},
        {"explicitly", R"({"do": "popup", "choose": null})", -1, nullptr},
        {"a disabled row", R"({"do": "popup", "choose": "Second"})", -1, nullptr},
        {"no such row", R"({"do": "popup", "choose": 5})", -1, nullptr},
    };
    for (const auto& each : kCases) {
        const Json answer = Line(each.line);
        EXPECT_EQ(answer["returned"], 1) << each.why;
        EXPECT_EQ(chosen, each.chosen) << each.why;
        const Json rows = Json::parse(R"([["First", true, "f", 4], ["Second", false, "", 0]])");
        EXPECT_EQ(answer["log"],
                  Json::array({Json::array({"popup", "aMenu", rows, Json::array({48, 86}), each.choice})}))
            << each.why;
    }
}

TEST_F(Script, AnswersAlertsFromItsQueue)
{
    Begin();
    std::vector<long> answers;
    answer = [&](long event, PluginInterface*) {
        if (event == Event::kCommand)
            answers.push_back((new BAlert("Title", "Text", "A", "B", "C"))->Go());
        return 0L;
    };
    Line(R"({"do": "answer", "alert": 0})");
    Line(R"({"do": "answer", "alert": 1})");
    for (int i = 0; i < 3; ++i)
        Line(R"({"do": "command", "name": "x"})");
    EXPECT_THAT(answers, ElementsAre(0, 1, 2)) << "the last button answers where nothing is queued";
}

TEST_F(Script, SendsARawEventAndReturnsThePluginsReply)
{
    Begin();
    Open("");
    answer = [](long event, PluginInterface* record) {
        record->initReplyA = 16;
        if (event == Event::kQuerySetting)
            record->ReturnSettingNameValue(record->name);
        if (event == Event::kFilesOfSymbol) {
            const EntryRef ref("/x/y.h");
            record->message->AddRef("refs", &ref);
        }
        return (record->window == nullptr ? 10L : 0) + (record->documentID == 0 ? 1 : 0);
    };
    EXPECT_EQ(Line(R"({"do": "event", "event": 999, "window": false})"), Json::parse(R"({"ok": true, "returned": 10,
        "initReplyA": 16, "initReplyB": 0, "returnedValue": null, "message": null, "log": []})"));
    EXPECT_EQ(Line(R"({"do": "event", "event": 999, "document": false})")["returned"], 1);
    EXPECT_EQ(Line(R"({"do": "event", "event": 402, "name": "n"})")["returnedValue"], "n");
    EXPECT_EQ(Line(R"({"do": "event", "event": 10010, "symbol": "y.h"})")["message"],
              Json::parse(R"({"what": "", "strings": {}, "ints": {}, "refs": ["/x/y.h"]})"));
    const char* message =
        R"({"what": "ksel", "strings": {"completion": "a"}, "ints": {"n": 5, "byte": 46}, "refs": ["/a"]})";
    EXPECT_EQ(Line(std::string(R"({"do": "event", "event": 202, "message": )") + message + "}")["message"],
              Json::parse(message));
}

TEST_F(Script, NeverGivesThePluginANullPointer)
{
    Begin();
    answer = [](long event, PluginInterface* record) {
        EXPECT_NE(record->name, nullptr);
        EXPECT_NE(record->symbol, nullptr);
        EXPECT_NE(record->message, nullptr);
        EXPECT_NE((*record->settingsArgs)[0], nullptr);
        EXPECT_EQ(record->panelView == nullptr, event != Event::kOpenPanel);
        EXPECT_NE(record->panelIdentifier, nullptr);
        return 0L;
    };
    for (const int event : {103, 104, 202, 206, 402, 502, 10010})
        EXPECT_EQ(Line(Json{{"do", "event"}, {"event", event}}.dump())["ok"], true);
}

TEST_F(Script, SendsNothingAfterARawUnload)
{
    Begin();
    Line(R"({"do": "event", "event": 3})");
    events.clear();
    EXPECT_EQ(Line(R"({"do": "command", "name": "x"})")["ok"], true);
    End();
    EXPECT_THAT(TakeEvents(), IsEmpty());
}

TEST_F(Script, SplitsASettingsLine)
{
    Begin();
    std::vector<std::string> words;
    answer = [&](long, PluginInterface* record) {
        for (const char** word = *record->settingsArgs; *word != nullptr; ++word)
            words.push_back(*word);
        return 1L;
    };
    EXPECT_EQ(Line(R"({"do": "setting", "line": "a  \"b c\\ "})")["returned"], 1);
    EXPECT_THAT(words, ElementsAre("a", "\"b", "c\\"));
}

TEST_F(Script, SavesTheSettingsAndLogsTheLines)
{
    Begin(home / "settings");
    answer = [](long, PluginInterface* record) {
        record->WriteSettings("%s %s\n", "name", "");
        return 0L;
    };
    EXPECT_EQ(Line(R"({"do": "save"})"), Json::parse(R"({"ok": true, "log": [["WriteSettings", "name \n"]]})"));
    std::string error;
    EXPECT_EQ(wren::ReadWholeFile(home / "settings", &error), "name \n");
}

TEST_F(Script, ReportsAWindowAndTheUsersActions)
{
    Begin();
    Open("");
    auto* items = new std::vector<std::unique_ptr<BStringItem>>;
    answer = [&](long event, PluginInterface*) {
        if (event != Event::kCommand)
            return 0L;
        auto* window = new BWindow({10, 20, 110, 220}, "List", B_FLOATING_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0x200);
        auto* list = new BListView({0, 0, 100, 200}, "list", 0, B_FOLLOW_ALL_SIDES, 0);
        window->AddChild(list);
        for (const char* text : {"one", "two"}) {
            items->push_back(std::make_unique<BStringItem>(text));
            list->AddItem(items->back().get());
        }
        list->SetInvocationMessage(new BMessage(B_REFS_RECEIVED));
        list->SetTarget(be_app);
        window->SetSizeLimits(50, 300, 40, 400);
        list->MakeFocus();
        window->Show();
        return 1L;
    };
    EXPECT_EQ(Line(R"({"do": "command", "name": "x"})")["log"], Json::parse(R"([["show", 1]])"));
    const Json windows = State()["windows"];
    ASSERT_EQ(windows.size(), 1u) << "document windows are not listed";
    EXPECT_EQ(windows[0]["window"], 1);
    EXPECT_EQ(windows[0]["title"], "List");
    EXPECT_EQ(windows[0]["look"], B_FLOATING_WINDOW_LOOK);
    EXPECT_EQ(windows[0]["visible"], true);
    EXPECT_EQ(windows[0]["frame"], Json::parse("[10, 20, 110, 220]"));
    EXPECT_EQ(windows[0]["limits"], Json::parse("[50, 300, 40, 400]"));
    EXPECT_EQ(windows[0]["list"]["items"], Json::parse(R"(["one", "two"])"));
    EXPECT_EQ(windows[0]["list"]["selected"], -1);
    EXPECT_EQ(windows[0]["list"]["focus"], true);
    EXPECT_EQ(windows[0]["controls"], Json::array());

    EXPECT_EQ(Line(R"({"do": "mouse", "window": 1, "index": 1})")["ok"], true);
    EXPECT_EQ(State()["windows"][0]["list"]["selected"], 1);
    EXPECT_EQ(Line(R"({"do": "invoke", "window": 1, "index": 0})")["ok"], true);
    EXPECT_THAT(Line(R"({"do": "invoke", "window": 1, "index": 2})")["error"].get<std::string>(),
                StartsWith("index is no item"));
    EXPECT_THAT(Line(R"({"do": "press", "window": 1, "item": 4})")["error"].get<std::string>(),
                StartsWith("item is no button"));
    EXPECT_EQ(Line(R"({"do": "close", "window": 1})")["log"].back(), Json::parse(R"(["close", 1])"));
    EXPECT_EQ(State()["windows"], Json::array());
    EXPECT_THAT(Line(R"({"do": "close", "window": 1})")["error"].get<std::string>(), StartsWith("window is none"));
    delete items;
}

TEST_F(Script, OpensAPanelWithItsControls)
{
    bool applied = false;
    struct Applicator : BCheckBoxValueApplicator {
        explicit Applicator(bool& value) : value(value) {}
        void Invoke(const BCheckBox* box) override { value = box->Value(); }
        bool& value;
    };
    answer = [&](long event, PluginInterface* record) {
        if (event == Event::kOfferPanels)
            record->RegisterPreferencePanel("test.recording", "Symbols", "icon");
        if (event == Event::kOpenPanel && std::string(record->panelIdentifier) == "test.recording") {
            auto* box = new BCheckBox;
            record->panelView->AddChildFromNib(box, 10);
            box->SetValueApplicator(new Applicator(applied));
        }
        return 0L;
    };
    Begin();
    Line(R"({"do": "state"})");
    const Json opened = Line(R"({"do": "panel"})");
    EXPECT_EQ(opened, Json::parse(R"({"ok": true, "returned": 0, "window": 1, "log": [["show", 1]]})"));
    const Json window = State()["windows"][0];
    EXPECT_EQ(window["title"], "Symbols");
    EXPECT_EQ(window["controls"][0], Json::parse(R"({"item": 10, "kind": "check", "value": false})"));
    EXPECT_EQ(Line(R"({"do": "check", "window": 1, "item": 10, "on": true})")["ok"], true);
    EXPECT_TRUE(applied);
    EXPECT_EQ(State()["windows"][0]["controls"][0]["value"], true);
    EXPECT_EQ(Line(R"({"do": "panel", "identifier": "other"})")["window"], 2);
    EXPECT_EQ(Line(R"({"do": "close", "window": 1})")["log"].back(), Json::parse(R"(["close", 1])"));
}

TEST_F(Script, MovesTheClockAndTheScreenAndBindsKeys)
{
    Begin();
    Open("");
    Line(R"({"do": "clock", "advance": 250})");
    EXPECT_EQ(State()["clock"], 1'000'250);
    Line(R"({"do": "screen", "frame": [0, 0, 640, 480]})");
    EXPECT_EQ(stage->Display().ScreenFrame({0, 0}), (BRect{0, 0, 640, 480}));
    bool pending = false;
    answer = [&](long event, PluginInterface* record) {
        pending = record->InputPending();
        return event == Event::kCommand && std::string(record->name) == "Do" ? 1L : 0L;
    };
    Line(R"({"do": "pending", "on": true})");
    Line(R"({"do": "shortcut", "command": "Do", "key": "d", "modifiers": ["command", "shift"]})");
    events.clear();
    Line(R"({"do": "key", "key": "d", "modifiers": ["shift", "command"]})");
    EXPECT_THAT(TakeEvents(), ElementsAre(206, 103, 208));
    EXPECT_TRUE(pending);
    EXPECT_EQ(Line(R"({"do": "settle"})")["ok"], true);
}
