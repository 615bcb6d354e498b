#include "tests/load/LoadUser.h"

#include "tests/load/ResourceUse.h"

#include "vetch/app/Modifiers.h"
#include "vetch/support/Clock.h"
#include "wren/headless/Keyboard.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace {

constexpr long kLongestText = 6000;
constexpr long kKeysOfLookup = 10;

const char* const kCommands[] = {"DeclarationLookup", "DefinitionLookup", "SymbolLookup", "SymbolLookupDialog"};
const char* const kNamedKeys[] = {"enter", "tab", "escape", "backspace", "delete", "left", "right", "up", "down"};
const uint32 kClicks[] = {B_OPTION_KEY, B_OPTION_KEY | B_CONTROL_KEY};
const char* const kSettings[] = {
    "DeclAutoComplete on",
    "DeclAutoComplete off",
    "DeclAutoComplete on",
    "DeclAutomaticallyRebuild on",
    "DeclAutomaticallyRebuild off",
    "DeclOptionClickToFindDeclaration off",
    "DeclOptionClickToFindDeclaration on",
    "DeclIgnoreStrings A,B,C",
    "DeclScanSystemDirectories /usr/include /opt/include",
    "DeclIndexSuffixes *.h *.cpp",
};

} // namespace

LoadUser::LoadUser(wren::HeadlessStage& stage, Workspace& workspace, Random& random)
    : stage(stage), workspace(workspace), random(random)
{
}

void LoadUser::Step()
{
    if (!Once(random, 4))
        GoToEnd();
    TypePhrase(workspace.MakePhrase());
    for (size_t key = Pick(random, 3); key > 0; --key)
        Press(kNamedKeys[Pick(random, std::size(kNamedKeys))], Once(random, 4) ? uint32{B_SHIFT_KEY} : 0);
    while (lookups * kKeysOfLookup < keys)
        LookUp();
    if (Once(random, 5))
        ChooseInWindows();
    if (Once(random, 100))
        DoSomethingElse();
    TakeLog();
}

void LoadUser::Rest()
{
    for (const auto& window : stage.Windows())
        stage.Close(window.number);
    Settle();
    wren::Host& host = stage.TheHost();
    for (wren::Document* document : host.AllDocuments().All())
        host.Close(*document);
    if (!host.WaitForBackground(std::chrono::seconds(60))) {
        std::fprintf(stderr, "something is at work for ever: %s\n", ResourceUse::Now().Text().c_str());
        std::exit(1);
    }
    TakeLog();
}

// To its end, or as far as it takes to have the rest completed.
void LoadUser::TypePhrase(const std::string& phrase)
{
    const size_t typed = Once(random, 3) ? 3 + Pick(random, 6) : phrase.size();
    Type("\n" + phrase.substr(0, typed));
    if (typed >= phrase.size())
        return;
    if (Once(random, 3))
        Press(".", B_CONTROL_KEY);
    for (size_t key = Pick(random, 3); key > 0; --key)
        Press("down");
    Press("enter");
}

void LoadUser::GoToEnd()
{
    wren::Document& document = Current();
    document.Select(document.Length(), document.Length());
}

void LoadUser::Type(const std::string& text)
{
    for (const char character : text)
        Press(std::string(1, character));
}

void LoadUser::Press(const std::string& key, uint32 modifiers)
{
    Current();
    stage.PressKey(key, *wren::StrokeOf(key, modifiers));
    ++keys;
    Settle();
}

void LoadUser::Settle()
{
    stage.Settle();
}

void LoadUser::TakeLog()
{
    const wren::Json log = stage.Log().Take();
    for (const wren::Json& entry : log)
        ++deeds[entry.at(0).get<std::string>()];
}

// The document that is typed into: one is closed when there is much in it, with all that could be undone.
wren::Document& LoadUser::Current()
{
    wren::Host& host = stage.TheHost();
    if (wren::Document* document = host.Current(); document != nullptr && document->Length() > kLongestText)
        host.Close(*document);
    if (host.Current() == nullptr)
        OpenSomeSource();
    return *host.Current();
}

void LoadUser::OpenSomeSource()
{
    const std::string path =
        workspace.Source(Pick(random, Workspace::kProjects), Pick(random, Workspace::kSourcesOfProject));
    std::string error;
    if (stage.Open(path, std::nullopt, false, &error) == nullptr) {
        std::fprintf(stderr, "%s: %s\n", path.c_str(), error.c_str());
        std::exit(1);
    }
    Settle();
}

// Mostly.
long LoadUser::SomeWord(const wren::Document& document)
{
    long offset = Pick(random, document.Length() + 1);
    while (offset < document.Length() && std::isalpha(static_cast<unsigned char>(document.CharAt(offset))) == 0)
        ++offset;
    return offset;
}

void LoadUser::LookUp()
{
    wren::Document& document = Current();
    const long offset = SomeWord(document);
    if (Once(random, 4)) {
        stage.Click({std::nullopt, offset, kClicks[Pick(random, 2)], 1});
    } else {
        document.Select(offset, offset);
        stage.RunCommand(kCommands[Pick(random, std::size(kCommands) - (Once(random, 50) ? 0 : 1))]);
    }
    ++lookups;
    Settle();
}

void LoadUser::ChooseInWindows()
{
    for (const auto& window : stage.Windows()) {
        const long items = window.list ? static_cast<long>(window.list->items.size()) : 0;
        if (items > 0 && Once(random, 2))
            stage.InvokeItem(window.number, Pick(random, items));
        else if (items > 0 && Once(random, 2))
            stage.ClickItem(window.number, Pick(random, items));
        else
            stage.Close(window.number);
        Settle();
    }
}

void LoadUser::DoSomethingElse()
{
    long returned = 0;
    switch (Pick(random, 7)) {
    case 0:
        return OpenSomeSource();
    case 1:
        stage.TheHost().Close(Current());
        break;
    case 2:
        ChangeSetting();
        break;
    case 3:
        stage.Undo();
        break;
    case 4:
        stage.OpenPanel("", &returned);
        break;
    case 5:
        stage.ClickButton(Once(random, 2) ? uint32{B_OPTION_KEY} : 0);
        break;
    default:
        ChangeWorld();
    }
    Settle();
}

void LoadUser::ChangeSetting()
{
    stage.TheHost().Events().SettingsCommand(wren::SplitAtBlanks(kSettings[Pick(random, std::size(kSettings))]));
}

void LoadUser::ChangeWorld()
{
    if (Once(random, 4))
        workspace.WriteTags(Pick(random, Workspace::kProjects));
    stage.SetInputPending(Once(random, 4));
    const auto larger = [this] { return static_cast<float>(Pick(random, 2)); };
    const float width = 640 + 640 * larger();
    stage.SetScreen({0, 0, width, 480 + 320 * larger()});
    vetch::AdvanceVirtualClock(static_cast<bigtime_t>(Pick(random, 2'000'000)));
}
