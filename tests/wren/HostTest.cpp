// The host around a plug-in that records its events.
#include "tests/wren/HostFixture.h"

#include "vetch/app/Modifiers.h"
#include "vetch/interface/BAlert.h"
#include "vetch/interface/BFilePanel.h"
#include "vetch/interface/BMenu.h"
#include "vetch/interface/BMenuBar.h"
#include "vetch/interface/BMenuItem.h"
#include "vetch/interface/BPopUpMenu.h"
#include "vetch/interface/BView.h"
#include "vetch/interface/BWindow.h"
#include "vetch/support/Cancellation.h"
#include "vetch/support/FThread.h"
#include "wren/text/PlainText.h"

#include <atomic>
#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <thread>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using wren::Document;
using wren::KeyRouting;
using wren::PlainText;
using wren::Selection;
namespace Event = wren::Event;

class Host : public HostFixture {};

// Start and end

TEST_F(Host, SetsUpThePluginInOrder)
{
    const std::string settings = home.Write("settings", "DeclAutoComplete off\nother  a  b\n");
    std::vector<std::string> lines;
    answer = [&](long event, PluginInterface* record) {
        if (event == Event::kSettingsCommand)
            for (const char** word = *record->settingsArgs; *word != nullptr; ++word)
                lines.push_back(*word);
        return 0L;
    };
    MakeHost(settings);
    host->Start();
    EXPECT_THAT(TakeEvents(), ElementsAre(1, 2, 104, 104, 5, 307, 500));
    EXPECT_THAT(lines, ElementsAre("DeclAutoComplete", "off", "other", "a", "b"));
    EXPECT_TRUE(std::filesystem::is_directory(home / "Library/Caches"));
    EXPECT_THAT(face.warnings, IsEmpty());
}

TEST_F(Host, StartsWithoutAHomeAndReportsIt)
{
    ::unsetenv("HOME");
    MakeHost();
    host->Start();
    EXPECT_THAT(TakeEvents(), ElementsAre(1, 2, 5, 307, 500));
    EXPECT_THAT(face.warnings, ElementsAre(HasSubstr("no home directory")));
}

TEST_F(Host, StartsWithAnUnwritableHomeAndReportsIt)
{
    const std::string notADirectory = home.Write("file", ""); // cannot be written in, even by root
    ::setenv("HOME", notADirectory.c_str(), 1);
    MakeHost();
    host->Start();
    EXPECT_THAT(TakeEvents(), ElementsAre(1, 2, 5, 307, 500));
    EXPECT_THAT(face.warnings, ElementsAre(HasSubstr("cannot make " + notADirectory)));
}

TEST_F(Host, StartsWithUnreadableSettingsAndReportsThem)
{
    MakeHost(home.Path());
    host->Start();
    EXPECT_THAT(TakeEvents(), ElementsAre(1, 2, 5, 307, 500));
    EXPECT_THAT(face.warnings, ElementsAre(HasSubstr("cannot read the settings")));
}

namespace {

// So slow that a host that does not wait for it almost always finishes first.
struct Slow {
    void Work(std::atomic<bool>* done)
    {
        for (int i = 0; i < 20'000; ++i)
            std::this_thread::yield();
        *done = true;
    }
};

} // namespace

TEST_F(Host, UnloadsThePluginOnceAfterAllWorkEnded)
{
    StartHost();
    OpenText("/tmp/a.c", "");
    Slow slow;
    std::atomic<bool> done = false;
    bool idleAtUnload = false;
    answer = [&](long event, PluginInterface*) {
        if (event == Event::kDeactivated)
            FThread::Run(&Slow::Work, &slow, &done);
        if (event == Event::kUnload)
            idleAtUnload = done && vetch::ThreadsAreIdle();
        return 0L;
    };
    events.clear();
    host->ShutDown();
    host->ShutDown();
    EXPECT_THAT(TakeEvents(), ElementsAre(301, 3));
    EXPECT_TRUE(idleAtUnload);
    host->Events().Command("SymbolLookup");
    EXPECT_THAT(TakeEvents(), IsEmpty()) << "nothing is sent after the plug-in was unloaded";
}

TEST_F(Host, QuitsThePluginsWindowsBeforeItWaitsForTheirThreads)
{
    StartHost();
    Slow slow;
    std::atomic<bool> done = false;
    plugin->makeLooper([&] { FThread::Run(&Slow::Work, &slow, &done); })->Run();
    bool idleAtUnload = false;
    answer = [&](long event, PluginInterface*) {
        if (event == Event::kUnload)
            idleAtUnload = done && vetch::ThreadsAreIdle();
        return 0L;
    };
    host->ShutDown();
    EXPECT_TRUE(idleAtUnload);
    vetch::JoinThreads(); // no thread uses the test's objects any longer, even after a failure
}

namespace {

// Reads a file without an end.
struct EndlessReader {
    void Work(std::atomic<bool>* wasCancelled)
    {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        while (!vetch::ReadingIsCancelled() && std::chrono::steady_clock::now() < limit)
            std::this_thread::yield();
        *wasCancelled = vetch::ReadingIsCancelled();
    }
};

} // namespace

TEST_F(Host, CancelsThePluginsReadingAtShutdown)
{
    StartHost();
    EndlessReader reader;
    std::atomic<bool> loadEnded = false;
    std::atomic<bool> windowEnded = false;
    FThread::Run(&EndlessReader::Work, &reader, &loadEnded);
    plugin->makeLooper([&] { reader.Work(&windowEnded); })->Run(); // a lookup from the dialog
    host->ShutDown();
    EXPECT_TRUE(loadEnded);
    EXPECT_TRUE(windowEnded);
    EXPECT_FALSE(vetch::ReadingIsCancelled()) << "the next host reads";
}

TEST_F(Host, WarnsAboutTagsFilesThatAreNotRead)
{
    StartHost();
    BMessage message(FourCC("tgur"));
    message.AddString("path", "/src/tags");
    be_app->PostMessage(&message);
    message.AddString("why", "it is too long");
    be_app->PostMessage(&message);
    vetch::RunPending();
    EXPECT_THAT(face.warnings, ElementsAre("/src/tags is not read: it is too long; remove it, or make the tags again"));
}

TEST_F(Host, ShutsDownInItsDestructor)
{
    StartHost();
    host.reset();
    EXPECT_THAT(TakeEvents(), ElementsAre(301, 3));
}

// The record

TEST_F(Host, AnswersWithoutADocument)
{
    StartHost();
    answer = [&](long, PluginInterface* record) {
        long start = -1, end = -1;
        record->GetSelection(&start, &end);
        EXPECT_EQ(start, 0);
        EXPECT_EQ(end, 0);
        EXPECT_EQ(record->TextLength(), 0);
        EXPECT_EQ(record->CharAt(0), '\0');
        EXPECT_EQ(record->LineAt(5), 0);
        EXPECT_EQ(record->window, nullptr);
        EXPECT_EQ(record->documentID, 0);
        EXPECT_NE(record->DocumentRef(), nullptr);
        EXPECT_EQ(*record->DocumentRef(), EntryRef());
        EXPECT_FALSE(record->IsWorksheet());
        char buffer[] = "..";
        record->GetText(buffer, 0, 2);
        EXPECT_STREQ(buffer, "..");
        record->BeginUndo(0, 0, "nothing");
        record->InsertText("x", 1, 0);
        record->DeleteText(0, 1);
        record->Select(0, 1);
        EXPECT_EQ(record->PointAt(0), BPoint());
        const BPoint where;
        EXPECT_EQ(record->OffsetAt(&where), 0);
        return 1L;
    };
    EXPECT_EQ(host->Events().Command("any"), 1);
    EXPECT_EQ(log.Take(), wren::Json::array());
}

TEST_F(Host, GivesThePluginItsDocument)
{
    StartHost();
    OpenText("/tmp/dir/a.c", "one\ntwo").Select(4, 7);
    answer = [&](long, PluginInterface* record) {
        long start = -1, end = -1;
        record->GetSelection(&start, &end);
        EXPECT_EQ(start, 4);
        EXPECT_EQ(end, 7);
        EXPECT_EQ(record->TextLength(), 7);
        EXPECT_EQ(record->CharAt(4), 't');
        EXPECT_EQ(record->LineAt(4), 1);
        EXPECT_EQ(record->documentID, 1);
        EXPECT_TRUE(record->window->IsActive());
        EXPECT_EQ(record->DocumentRef()->Path(), "/tmp/dir/a.c");
        EXPECT_EQ(record->PointAt(5), (BPoint{55, 111}));
        EXPECT_EQ(record->bundle, bundle->Directory());
        const BRect button = record->ButtonFrame();
        EXPECT_EQ(record->window->ConvertToScreen({button.left, button.bottom}), (BPoint{48, 80}));
        return 0L;
    };
    host->Events().Command("any");
}

TEST_F(Host, AlwaysWritesBothPartsOfAShortcut)
{
    StartHost();
    answer = [&](long, PluginInterface* record) {
        char key = 'x';
        uint32 bits = 99;
        record->GetCommandShortcut("SymbolCompletion", &key, &bits);
        EXPECT_EQ(key, '.');
        EXPECT_EQ(bits, uint32(B_CONTROL_KEY));
        record->GetCommandShortcut("SymbolLookup", &key, &bits);
        EXPECT_EQ(key, '\0');
        EXPECT_EQ(bits, 0u);
        return 0L;
    };
    host->Events().Command("any");
}

TEST_F(Host, OwnsTheReplyToASettingsQuery)
{
    StartHost();
    answer = [](long event, PluginInterface* record) {
        if (event != Event::kQuerySetting || std::string(record->name) == "unknown")
            return 0L;
        record->ReturnSettingNameValue(record->name[0] == 'e' ? "" : "on");
        return 1L;
    };
    EXPECT_EQ(host->Events().Setting("DeclAutoComplete"), "on");
    EXPECT_EQ(host->Events().Setting("empty"), "");
    EXPECT_EQ(host->Events().Setting("unknown"), std::nullopt);
}

TEST_F(Host, AsksForTheFilesOfASymbolWithTheDocumentsDirectory)
{
    StartHost();
    Document& document = OpenText("/tmp/dir/a.c", "");
    answer = [](long, PluginInterface* record) {
        EXPECT_STREQ(record->name, "/tmp/dir");
        EXPECT_STREQ(record->symbol, "AppKit/NSView.h");
        const EntryRef first("/x/NSView.h");
        const EntryRef second("/y/NSView.h");
        record->message->AddRef("refs", &first);
        record->message->AddRef("refs", &second);
        return 2L;
    };
    EXPECT_THAT(host->Events().FilesOfSymbol(document, "AppKit/NSView.h"),
                ElementsAre(EntryRef("/x/NSView.h"), EntryRef("/y/NSView.h")));
}

TEST_F(Host, ExpandsTheWorksheetsDirectoryIntoAnArray)
{
    StartHost();
    const auto expand = [&](const char* text, long length) {
        std::string expanded;
        answer = [&](long, PluginInterface* record) {
            char* const array = record->ExpandVariables(text, length);
            expanded = array == nullptr ? "(null)" : array;
            delete[] array;
            return 0L;
        };
        host->Events().Command("any");
        return expanded;
    };
    EXPECT_EQ(expand("$WORKSHEET_DIR", -1), home.Path()) << "no Worksheet has been opened";
    std::string error;
    answer = nullptr;
    host->Open("/tmp/ws/Worksheet", "", true, &error);
    EXPECT_EQ(expand("$WORKSHEET_DIR/tags", -1), "/tmp/ws/tags");
    EXPECT_EQ(expand("$WORKSHEET_DIR/tags", 14), "/tmp/ws");
    EXPECT_EQ(expand("$OTHER", -1), "$OTHER");
    EXPECT_EQ(expand(nullptr, -1), "(null)");
}

TEST_F(Host, WritesSettingsOfAnyLength)
{
    StartHost(home / "settings");
    const std::string value(10'000, 'v');
    answer = [&](long event, PluginInterface* record) {
        if (event == Event::kSaveSettings)
            record->WriteSettings("%s %s\n", "DeclIndexSuffixes", value.c_str());
        return 0L;
    };
    std::string error;
    EXPECT_TRUE(host->SaveSettings(&error)) << error;
    EXPECT_EQ(wren::ReadWholeFile(home / "settings", &error), "DeclIndexSuffixes " + value + "\n");
    EXPECT_EQ(log.Take(),
              wren::Json::array({wren::Json::array({"WriteSettings", "DeclIndexSuffixes " + value + "\n"})}));
}

// Edits

TEST_F(Host, ClosesAnUndoableEditThatACallLeftOpen)
{
    StartHost();
    Document& document = OpenText("/tmp/a.c", "ab");
    answer = [](long event, PluginInterface* record) {
        if (event != Event::kCommand)
            return 0L;
        record->BeginUndo(0, 0, "first");
        record->InsertText("1", 1, 0);
        record->BeginUndo(1, 1, "second");
        record->InsertText("2", 1, 1);
        record->InsertText("3", 1, 2);
        return 1L;
    };
    host->Events().Command("any");
    document.Insert(0, "typed ");
    EXPECT_EQ(host->Undo(), PlainText::kEdit) << "later edits of the user do not belong to the plug-in's edit";
    EXPECT_EQ(host->Undo(), "second");
    EXPECT_EQ(document.Text(), "1ab");
    EXPECT_EQ(host->Undo(), "first");
    EXPECT_EQ(document.Text(), "ab");
    EXPECT_EQ(host->Undo(), std::nullopt);
}

TEST_F(Host, NotifiesThePluginOfUndoButNotOfItsOwnEdits)
{
    StartHost();
    OpenText("/tmp/a.c", "ab");
    answer = [](long event, PluginInterface* record) {
        if (event == Event::kCommand)
            record->InsertText("x", 1, 0);
        return 0L;
    };
    events.clear();
    host->Events().Command("any");
    EXPECT_THAT(TakeEvents(), ElementsAre(103));
    host->Undo();
    EXPECT_THAT(TakeEvents(), ElementsAre(209));
    host->Undo();
    EXPECT_THAT(TakeEvents(), IsEmpty()) << "nothing was undone";
}

// Keys

TEST_F(Host, OffersAKeyToThePluginBeforeItsShortcuts)
{
    StartHost();
    OpenText("/tmp/a.c", "");
    const struct {
        const char* why;
        const char* bytes;
        uint32 modifiers;
        long answerToKey;
        std::vector<long> events;
        bool applies;
    } kCases[] = {
        {"a plain key", "a", 0, 0, {206}, true},
        {"a key that the plug-in takes", "\n", 0, 2, {206}, false},
        {"handled is not used up", "a", 0, 1, {206}, true},
        {"a shortcut runs its command and is not a typed key", ".", B_CONTROL_KEY, 0, {206, 103, 208}, false},
        {"a shortcut that the plug-in takes first", ".", B_CONTROL_KEY, 2, {206}, false},
        {"several bytes are not a shortcut", "\xc3\xa9", B_CONTROL_KEY, 0, {206}, true},
    };
    for (const auto& each : kCases) {
        answer = [&](long event, PluginInterface*) { return event == Event::kKeyDown ? each.answerToKey : 0L; };
        events.clear();
        const KeyRouting routing = host->RouteKey({each.bytes, each.modifiers});
        EXPECT_EQ(TakeEvents(), each.events) << each.why;
        EXPECT_EQ(routing.returned, each.answerToKey) << each.why;
        EXPECT_EQ(routing.applies, each.applies) << each.why;
    }
}

TEST_F(Host, GivesThePluginAllBytesOfAKey)
{
    StartHost();
    OpenText("/tmp/a.c", "");
    std::string bytes;
    int32 bits = -1;
    answer = [&](long, PluginInterface* record) {
        EXPECT_EQ(record->message->what, B_KEY_DOWN);
        int8 byte = 0;
        for (int32 i = 0; record->message->FindInt8("byte", i, &byte) == B_OK; ++i)
            bytes += static_cast<char>(byte);
        EXPECT_EQ(record->message->FindInt32("modifiers", &bits), B_OK);
        return 0L;
    };
    host->RouteKey({"\xe2\x82\xac", 0});
    EXPECT_EQ(bytes, "\xe2\x82\xac");
    EXPECT_EQ(bits, 0);
}

// Documents

TEST_F(Host, NotifiesBothDocumentsOfASwitch)
{
    StartHost();
    std::vector<std::string> told;
    answer = [&](long event, PluginInterface* record) {
        told.push_back(std::to_string(event) + " " + std::to_string(record->documentID) +
                       (record->window->IsActive() ? " active" : ""));
        return 0L;
    };
    OpenText("/tmp/a.c", "");
    OpenText("/tmp/b.c", "");
    std::string error;
    EXPECT_EQ(host->Open("/tmp/./a.c", {}, false, &error)->Id(), 1);
    EXPECT_EQ(host->Open("/tmp/a.c", {}, false, &error)->Id(), 1);
    EXPECT_THAT(told, ElementsAre("300 1 active", "301 1 active", "300 2 active", "301 2 active", "300 1 active"));
}

TEST_F(Host, NeverReusesAnIdentifier)
{
    StartHost();
    EXPECT_EQ(OpenText("/tmp/a.c", "").Id(), 1);
    host->AllDocuments().Close(1);
    EXPECT_EQ(host->Current(), nullptr);
    EXPECT_EQ(OpenText("/tmp/a.c", "").Id(), 2);
}

TEST_F(Host, ReadsADocumentFromItsFileUnlessItIsGivenText)
{
    StartHost();
    const std::string file = home.Write("a.c", std::string("x\0y\xff", 4));
    std::string error;
    EXPECT_EQ(host->Open(file, {}, false, &error)->Text(), std::string("x\0y\xff", 4));
    EXPECT_EQ(host->Open(file, "new", false, &error)->Text(), "new");
    EXPECT_EQ(host->Open(home / "missing.c", {}, false, &error), nullptr);
    EXPECT_THAT(error, HasSubstr("No such file"));
    EXPECT_EQ(host->Open(home.Path(), {}, false, &error), nullptr);
    EXPECT_THAT(error, HasSubstr("Is a directory"));
    EXPECT_EQ(host->Current()->Path(), file) << "nothing has changed";
}

TEST_F(Host, KeepsTextForTheWorksheetUntilItOpens)
{
    StartHost();
    OpenText("/tmp/a.c", "");
    answer = [](long event, PluginInterface* record) {
        if (event == Event::kCommand)
            record->AppendToWorksheet("more\n", true, true, true);
        return 0L;
    };
    host->Events().Command("any");
    EXPECT_EQ(host->TheWorksheet().Text(), "more\n");
    std::string error;
    Document* worksheet = host->Open("/tmp/Worksheet", "first\n", true, &error);
    EXPECT_EQ(worksheet->Text(), "first\nmore\n");
    host->Events().Command("any");
    EXPECT_EQ(worksheet->Text(), "first\nmore\nmore\n");
    EXPECT_EQ(host->TheWorksheet().Text(), worksheet->Text());
}

// Messages

TEST_F(Host, ReturnsAMessageToItsDocument)
{
    StartHost();
    OpenText("/tmp/a.c", "");
    OpenText("/tmp/b.c", "");
    std::vector<long> documents;
    answer = [&](long event, PluginInterface* record) {
        EXPECT_EQ(event, Event::kDocumentMessage);
        EXPECT_EQ(record->message->what, FourCC("ksel"));
        EXPECT_EQ(record->window, host->AllDocuments().WindowOf(record->documentID));
        documents.push_back(record->documentID);
        return 2L;
    };
    const BMessage choice(FourCC("ksel"));
    for (const long id : {1, 2, 0, 77, -1})
        PluginInterface::PostMessageToDocument(id, &choice);
    vetch::Settle();
    EXPECT_THAT(documents, ElementsAre(1, 2)) << "messages for documents that are not there are dropped";
    for (const long id : {2, 1, 2})
        PluginInterface::PostMessageToDocument(id, &choice);
    host->AllDocuments().Close(2);
    vetch::Settle();
    EXPECT_THAT(documents, ElementsAre(1, 2, 1)) << "as are those for documents that have gone meanwhile";
}

TEST_F(Host, GivesAChosenDirectoryToTheFrontDocument)
{
    StartHost();
    std::vector<long> documents;
    answer = [&](long event, PluginInterface* record) {
        if (event == Event::kDocumentMessage) {
            EXPECT_EQ(record->message->what, FourCC("gnlt"));
            EXPECT_EQ(record->window == nullptr, record->documentID == 0);
            documents.push_back(record->documentID);
        }
        return 0L;
    };
    be_app->PostMessage(FourCC("gnlt"));
    vetch::Settle();
    OpenText("/tmp/a.c", "");
    OpenText("/tmp/b.c", "");
    be_app->PostMessage(FourCC("gnlt"));
    vetch::Settle();
    EXPECT_THAT(documents, ElementsAre(0, 2));
}

TEST_F(Host, OpensTheMatchThatAWindowPosts)
{
    StartHost();
    BMessage match(B_REFS_RECEIVED);
    const EntryRef ref("/usr/include/stdio.h");
    match.AddRef("refs", &ref);
    match.AddInt32("be:line", 356);
    be_app->PostMessage(&match);
    BMessage nothing(B_REFS_RECEIVED);
    const EntryRef empty;
    nothing.AddRef("refs", &empty);
    be_app->PostMessage(&nothing);
    be_app->PostMessage(B_REFS_RECEIVED);
    vetch::Settle();
    EXPECT_THAT(face.opened, ElementsAre("/usr/include/stdio.h:356"));
}

// Calls within calls

// Runs a function while an alert of the plug-in is open.
class AlertWitness : public vetch::DisplayObserver {
public:
    void AlertAnswered(const vetch::AlertDescription&, long) override
    {
        if (whenAsked)
            whenAsked();
    }
    std::function<void()> whenAsked;
};

TEST_F(Host, KeepsEventsAndMessagesDuringAPluginCall)
{
    AlertWitness witness;
    vetch::HeadlessDisplay asking(&witness);
    vetch::SetDisplay(&asking);
    StartHost();
    OpenText("/tmp/a.c", "");
    std::vector<std::string> order;
    witness.whenAsked = [&] {
        EXPECT_EQ(host->Events().Deactivated(), 0);
        host->Events().Activated();
        const BMessage choice(FourCC("ksel"));
        PluginInterface::PostMessageToDocument(1, &choice);
        vetch::RunPending();
        order.push_back("asked");
    };
    answer = [&](long event, PluginInterface*) {
        order.push_back("begin " + std::to_string(event));
        if (event == Event::kCommand)
            (new BAlert("title", "text", "OK", nullptr, nullptr))->Go();
        order.push_back("end " + std::to_string(event));
        return 1L;
    };
    EXPECT_EQ(host->Events().Command("any"), 1);
    vetch::Settle();
    EXPECT_THAT(order, ElementsAre("begin 103", "asked", "end 103", "begin 301", "end 301", "begin 300", "end 300",
                                   "begin 202", "end 202"));
    answer = nullptr;
    host.reset();
}

TEST_F(Host, DropsAKeptEventOfAClosedDocument)
{
    AlertWitness witness;
    vetch::HeadlessDisplay asking(&witness);
    vetch::SetDisplay(&asking);
    StartHost();
    OpenText("/tmp/a.c", "");
    OpenText("/tmp/b.c", "");
    witness.whenAsked = [&] {
        host->Events().DocumentChanged();
        host->AllDocuments().Close(2);
        host->Events().Dismissed();
    };
    answer = [&](long event, PluginInterface*) {
        if (event == Event::kCommand)
            (new BAlert("title", "text", "OK", nullptr, nullptr))->Go();
        return 0L;
    };
    events.clear();
    host->Events().Command("any");
    EXPECT_THAT(TakeEvents(), ElementsAre(103, 308));
    answer = nullptr;
    host.reset();
}

// Menus and panels

TEST_F(Host, RunsTheCommandOfAnEnabledMenuItem)
{
    StartHost();
    std::vector<std::string> commands;
    answer = [&](long event, PluginInterface* record) {
        BMenu* search = be_app->MenuBar()->FindItem("Search")->Submenu();
        if (event == Event::kMenuBarBuilt) {
            search->AddSeparatorItem();
            record->AddMenuItem(search, search->CountItems(), "Look up", "SymbolLookup", 0, 3);
            EXPECT_EQ(record->AddMenuItem(nullptr, 0, "Nowhere", "None", 0, 0), nullptr);
        }
        if (event == Event::kMenusShowing)
            search->FindItem("Look up")->SetEnabled(record->documentID != 0);
        if (event == Event::kCommand)
            commands.push_back(record->name);
        return 0L;
    };
    host->Events().MenuBarBuilt();
    EXPECT_EQ(host->ChooseFromSearchMenu("Look up"), false);
    OpenText("/tmp/a.c", "");
    EXPECT_EQ(host->ChooseFromSearchMenu("Look up"), true);
    EXPECT_EQ(host->ChooseFromSearchMenu("Unknown"), std::nullopt);
    EXPECT_EQ(host->ChooseFromSearchMenu(""), std::nullopt) << "a separator";
    EXPECT_THAT(commands, ElementsAre("SymbolLookup"));
    const BMenuItem* item = host->MenuBar().Search()->ItemAt(1);
    EXPECT_EQ(item->Shortcut(), '\0');
    EXPECT_EQ(item->ShortcutModifiers(), 3u) << "kept without a key: they tell dynamic items apart";
}

TEST_F(Host, OpensThePluginsPanel)
{
    StartHost();
    std::vector<std::string> opened;
    answer = [&](long event, PluginInterface* record) {
        if (event == Event::kOfferPanels)
            record->RegisterPreferencePanel("test.recording", "Symbols", "Declaration.icns");
        if (event == Event::kOpenPanel) {
            EXPECT_NE(record->panelView, nullptr);
            opened.push_back(record->panelIdentifier);
        }
        if (event == Event::kDeactivated) {
            EXPECT_THAT(display.Windows(), IsEmpty()) << "panels go first: they show the plug-in's settings";
        }
        return 0L;
    };
    host->Events().OfferPanels();
    long returned = -1;
    EXPECT_EQ(host->OpenPreferences("", &returned)->Title(), "Symbols");
    EXPECT_EQ(returned, 0);
    EXPECT_EQ(host->OpenPreferences("somebody.else", &returned)->Title(), "Preferences");
    EXPECT_THAT(opened, ElementsAre("test.recording", "somebody.else"));
    vetch::Settle();
    EXPECT_THAT(display.Windows(), SizeIs(2));
    host->ShutDown();
    EXPECT_THAT(display.Windows(), IsEmpty());
}

TEST_F(Host, ClosesOpenWindowsBeforeItUnloadsThePlugin)
{
    StartHost();
    OpenText("/tmp/a.c", "");
    const BMessenger application(nullptr);
    size_t openAtUnload = 0;
    answer = [&](long event, PluginInterface*) {
        if (event == Event::kCommand) {
            const BMessage chosen(FourCC("gnlt"));
            (new BFilePanel(B_OPEN_PANEL, &application, nullptr, B_DIRECTORY_NODE, false, &chosen, nullptr))->Show();
            new BFilePanel(B_OPEN_PANEL, &application, nullptr, B_DIRECTORY_NODE, false, &chosen, nullptr);
            new BWindow({0, 0, 100, 100}, "never shown", B_FLOATING_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0);
        }
        if (event == Event::kUnload)
            openAtUnload = vetch::Loopers().size();
        return 0L;
    };
    host->Events().Command("any");
    ASSERT_THAT(vetch::Loopers(), SizeIs(5)) << "the application, the document, two panels and a window";
    host->ShutDown();
    EXPECT_EQ(openAtUnload, 1u) << "the application";
}

// Background work

namespace {

struct Ending {
    std::atomic<bool> allowed = false;
    std::atomic<bool> reached = false;
};

// Like the plug-in's tags generation: on a thread that is never joined.
std::shared_ptr<Ending> StartDetachedThread()
{
    const auto ending = std::make_shared<Ending>();
    EXPECT_TRUE(vetch::StartDetached(nullptr, [ending] {
        while (!ending->allowed)
            std::this_thread::yield();
        ending->reached = true;
    }));
    return ending;
}

} // namespace

TEST_F(Host, WaitsForDetachedThreads)
{
    StartHost();
    EXPECT_TRUE(host->WaitForBackground(std::chrono::minutes(1)));
    const auto ending = StartDetachedThread();
    EXPECT_FALSE(host->WaitForBackground(std::chrono::milliseconds(1)));
    ending->allowed = true;
    EXPECT_TRUE(host->WaitForBackground(std::chrono::minutes(1)));
    EXPECT_TRUE(ending->reached);
}

TEST_F(Host, DoesNotWaitForThreadsOfItsFaces)
{
    StartHost();
    std::atomic<bool> mayEnd = false;
    std::thread thread([&] {
        while (!mayEnd)
            std::this_thread::yield();
    });
    EXPECT_TRUE(host->WaitForBackground(std::chrono::minutes(1)));
    mayEnd = true;
    thread.join();
}

TEST_F(Host, LeavesTheDefaultHandlingOfEndedChildren)
{
    StartHost();
    OpenText("/tmp/a.c", "");
    struct sigaction action;
    ASSERT_EQ(::sigaction(SIGCHLD, nullptr, &action), 0);
    EXPECT_EQ(action.sa_handler, SIG_DFL);
    EXPECT_EQ(action.sa_flags & SA_NOCLDWAIT, 0);
}

TEST_F(Host, DoesNotCountAWindowsThreadAsWork)
{
    StartHost();
    auto* window = new BWindow({0, 0, 100, 100}, "w", B_FLOATING_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0);
    window->Show();
    EXPECT_TRUE(host->WaitForBackground(std::chrono::minutes(1)));
    window->Quit();
    EXPECT_TRUE(host->WaitForBackground(std::chrono::minutes(1)));
}
