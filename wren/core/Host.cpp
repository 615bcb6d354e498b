#include "wren/core/Host.h"

#include "base/Utf8.h"
#include "vetch/app/Loop.h"
#include "vetch/interface/BMenu.h"
#include "vetch/interface/BMenuItem.h"
#include "vetch/interface/BView.h"
#include "vetch/interface/BWindow.h"
#include "vetch/storage/Home.h"
#include "vetch/support/Cancellation.h"
#include "vetch/support/FThread.h"
#include "wren/core/Face.h"
#include "wren/core/HostObserver.h"
#include "wren/core/OwnSettings.h"
#include "wren/core/PluginBundle.h"
#include "wren/core/SystemTags.h"

#include <algorithm>

namespace wren {

namespace {

constexpr const char* kOrChoose = ", or choose a value in the preferences";
constexpr size_t kLongestProblem = 300; // bytes: a bad line may be very long

// Never cuts a UTF-8 character.
std::string Shortened(const std::string& text)
{
    if (text.size() <= kLongestProblem)
        return text;
    size_t end = kLongestProblem;
    while (end > 0 && base::ContinuesCharacter(text[end]))
        --end;
    return text.substr(0, end) + "...";
}

// Closes windows that the framework made for the plug-in, such as an unanswered file panel. They are not loopers of the
// plug-in's library.
void QuitWhatIsLeft()
{
    for (const vetch::LooperToken token : vetch::Loopers())
        if (BLooper* looper = vetch::FindLooper(token); looper != nullptr && looper != be_app)
            looper->Quit();
}

} // namespace

Host::Host(PluginBundle& bundle, Face& face, HostObserver& observer, const std::string& settingsFile)
    : bundle(bundle), face(face),
      application(std::make_unique<HostApplication>(static_cast<ApplicationClient&>(*this))), documents(face),
      settings(settingsFile), worksheet(documents),
      calls({documents, commands, settings, menus, worksheet, panels, bundle, face, observer}), events(calls, documents)
{
}

Host::~Host()
{
    ShutDown();
}

void Host::SetOwnSettings(OwnSettings* settings)
{
    own = settings;
    ownNames = settings->Names();
}

void Host::Start(CacheDirectory directory)
{
    started = true;
    if (directory == CacheDirectory::Make)
        if (const std::string problem = MakeSystemTagsDirectory(Home()); !problem.empty())
            face.Warn(problem);
    events.FirstContact();
    events.Register();
    SendFirstSettings();
    SendStoredSettings();
    events.MenuBarBuilt();
    events.ResourceIDs();
    events.OfferPanels();
    // A face with its own settings is an editor, and another editor may store to the same file.
    if (own != nullptr)
        NoteSettings();
}

// The order matters. Windows run the plug-in's code and use its settings, and background loads fill its caches: all
// have ended before it unloads.
void Host::ShutDown()
{
    if (!started)
        return;
    started = false;
    vetch::CancelReading(true);
    panels.CloseAll();
    events.Deactivated();
    vetch::QuitLoopersOf(bundle.CodeAddress());
    vetch::RunPending();
    vetch::JoinThreads();
    vetch::CancelReading(false);
    vetch::RunPending();
    documents.CloseAll();
    QuitWhatIsLeft();
    events.Unload();
}

// A load that just ended may have posted a message that starts further work.
bool Host::WaitForBackground(std::chrono::milliseconds limit)
{
    constexpr std::chrono::milliseconds kDeliverAgain(20); // the interval for messages from other threads
    const auto end = std::chrono::steady_clock::now() + limit;
    vetch::Settle();
    while (true) {
        if (vetch::BackgroundIsIdle()) {
            vetch::Settle();
            if (vetch::BackgroundIsIdle())
                return true;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left.count() <= 0)
            return false;
        vetch::WaitForIdleBackground(std::min(left, kDeliverAgain));
        vetch::Settle();
    }
}

Document* Host::Open(const std::string& path, const std::optional<std::string>& text, bool asWorksheet,
                     std::string* error)
{
    Document* document = documents.FindByPath(path);
    if (document != nullptr) {
        if (text)
            document->SetText(*text);
    } else {
        std::optional<std::string> content;
        if (!text && !path.empty() && !(content = ReadWholeFile(path, error)))
            return nullptr;
        document = &documents.Open(path, text ? std::string_view(*text) : content.value_or(""), asWorksheet);
        if (asWorksheet)
            worksheet.Opened(*document);
    }
    MakeCurrent(*document);
    return document;
}

Document& Host::New()
{
    Document& document = documents.Open("", "", false);
    MakeCurrent(document);
    return document;
}

void Host::MakeCurrent(Document& document)
{
    if (documents.Current() == &document)
        return;
    if (documents.Current() != nullptr)
        events.Deactivated();
    documents.SetCurrent(&document);
    events.Activated();
}

void Host::Close(Document& document)
{
    // The plug-in's windows point into the document that is left.
    if (documents.Current() == &document)
        events.Deactivated();
    documents.Close(document.Id());
}

void Host::UserCame()
{
    documents.SetUserPresent(true);
    if (documents.Current() != nullptr)
        events.Activated();
}

void Host::UserLeft()
{
    documents.SetUserPresent(false);
    if (documents.Current() != nullptr)
        events.Deactivated();
}

KeyRouting Host::RouteKey(const KeyStroke& key)
{
    // The plug-in sees the key before its own shortcut does: with its pop-up open, the shortcut chooses from the
    // pop-up.
    const long returned = events.KeyDown(key);
    if (returned == 2)
        return {returned, false};
    const char code = key.bytes.size() == 1 ? key.bytes.front() : '\0';
    const std::optional<std::string> command = code == '\0' ? std::nullopt : commands.CommandFor({code, key.modifiers});
    if (!command)
        return {returned, true};
    events.Command(*command);
    events.PrimitiveDone();
    return {returned, false};
}

std::optional<std::string> Host::Undo()
{
    Document* document = documents.Current();
    if (document == nullptr)
        return std::nullopt;
    std::optional<std::string> undone = document->Undo();
    if (undone)
        events.DocumentChanged();
    return undone;
}

std::optional<bool> Host::ChooseFromSearchMenu(const std::string& label)
{
    const BMenuItem* item = menus.Search()->FindItem(label.c_str());
    if (item == nullptr || item->IsSeparator())
        return std::nullopt;
    events.MenusShowing();
    const bool enabled = item->IsEnabled();
    if (enabled)
        events.Command(menus.CommandOf(item));
    return enabled;
}

BWindow* Host::OpenPreferences(const std::string& identifier, long* returned)
{
    BWindow* window = MakePreferencePanel(identifier, returned);
    window->Show();
    return window;
}

BWindow* Host::MakePreferencePanel(const std::string& identifier, long* returned)
{
    std::string wanted = identifier;
    if (wanted.empty() && !panels.Registered().empty())
        wanted = panels.Registered().front().identifier;
    const auto [window, container] = panels.MakeWindow(bundle.Directory(), bundle.Identifier(), wanted);
    *returned = events.OpenPanel(wanted, container->Token());
    return window;
}

bool Host::SaveSettings(std::string* error)
{
    if (own != nullptr && !settings.MakeDirectory(error))
        return false;
    settings.BeginSave();
    HaveSettingsWritten();
    return settings.EndSave(error);
}

void Host::NoteSettings()
{
    settings.BeginNote();
    HaveSettingsWritten();
    settings.EndNote();
}

void Host::HaveSettingsWritten()
{
    for (const std::string& name : ownNames)
        settings.Register(name);
    events.SaveSettings();
    if (own != nullptr)
        for (const std::string& line : own->Lines())
            settings.Write(line + "\n");
    for (const std::string& line : firstSettings)
        WriteWithFirst(line);
}

// The plug-in writes all values but its own defaults. To it, our first value looks like the user's choice, and its own
// default, chosen by the user, like none.
void Host::WriteWithFirst(const std::string& line)
{
    const std::string name = SplitAtBlanks(line).front();
    const std::optional<std::string> value = events.Setting(name);
    if (!value)
        return;
    const std::string chosen = name + " " + *value;
    settings.WriteInstead(name, chosen == line ? std::nullopt : std::optional(chosen));
}

void Host::MessageForDocument(long document, const BMessage& message)
{
    if (documents.Find(document) != nullptr)
        events.MessageFor(document, message);
}

void Host::MessageForFrontDocument(const BMessage& message)
{
    const Document* front = documents.Current();
    events.MessageFor(front == nullptr ? 0 : front->Id(), message);
}

void Host::OpenMatch(const std::string& path, long line)
{
    face.OpenMatch(path, line);
}

void Host::TagsFileUnread(const std::string& path, const std::string& why)
{
    face.Warn(UnreadNotice(path, why));
}

void Host::SendFirstSettings()
{
    for (const std::string& line : firstSettings)
        if (settings.IsRegistered(SplitAtBlanks(line).front()))
            events.SettingsLine(line);
}

void Host::SendStoredSettings()
{
    std::vector<StoredLine> lines;
    std::string error;
    if (!settings.Load(&lines, &error))
        face.Warn("cannot read the settings: " + error);
    for (const StoredLine& line : lines) {
        if (IsOwn(SplitAtBlanks(line.text).front())) {
            TakeOwn(line);
        } else {
            WarnAboutUnknown(line);
            SendToPlugin(line);
        }
    }
}

bool Host::IsOwn(const std::string& setting) const
{
    return std::find(ownNames.begin(), ownNames.end(), setting) != ownNames.end();
}

void Host::TakeOwn(const StoredLine& line)
{
    std::string problem;
    if (!own->Take(line.text, &problem))
        WarnAbout(line, SplitAtBlanks(line.text).front() + ": " + problem, kOrChoose);
}

void Host::SendToPlugin(const StoredLine& line)
{
    const bool accepted = events.SettingsLine(line.text);
    const std::vector<std::string> words = SplitAtBlanks(line.text);
    if (!settings.IsRegistered(words.front()))
        return;
    if (accepted)
        return settings.Accepted(line.text);
    settings.Refused(line.text);
    if (own != nullptr)
        WarnAbout(line, words.front() + (words.size() == 1 ? " has no value" : " cannot be \"" + words[1] + "\""),
                  kOrChoose);
}

// The setting may belong to a plug-in that is not loaded. A plug-in that registers nothing does not reveal the settings
// it knows.
void Host::WarnAboutUnknown(const StoredLine& line)
{
    const std::string name = SplitAtBlanks(line.text).front();
    if (own == nullptr || settings.IsRegistered(name) || (!settings.HasRegistered() && !name.starts_with("Wren")))
        return;
    WarnAbout(line, "no setting is named \"" + name + "\"", "");
}

void Host::WarnAbout(const StoredLine& line, const std::string& problem, const char* otherRemedy)
{
    face.Warn(settings.File() + ":" + std::to_string(line.number) + ": " + Shortened(problem) +
              "; the line is left out and kept: correct or remove it" + otherRemedy);
}

} // namespace wren
