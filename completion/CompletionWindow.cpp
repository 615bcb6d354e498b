#include "completion/CompletionWindow.h"

#include "plugin/PluginInterface.h"
#include "tags/Candidates.h"
#include "tags/Tags.h"
#include "vetch/app/BMessageFilter.h"
#include "vetch/app/Modifiers.h"
#include "vetch/interface/BListItem.h"

namespace {

constexpr uint32 kPicked = FourCC("Pick");
constexpr uint32 kCompletionChosen = FourCC("ksel");

constexpr rgb_color kFocusedColour = {180, 200, 240, 255};
constexpr rgb_color kUnfocusedColour = {200, 200, 200, 255};

constexpr uint32 kShortcutModifiers = B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY;

constexpr char kUp = 0x1e;
constexpr char kDown = 0x1f;
constexpr char kEnter = 0x0a;
constexpr char kSpace = ' ';

// The first byte and the modifiers of a key-down message; false without either. The further bytes of a key never match
// a key that moves in a list.
bool ReadKey(const BMessage& keyDown, char& key, int32& modifiers)
{
    int8 byte;
    if (keyDown.FindInt8("byte", 0, &byte) != B_OK || keyDown.FindInt32("modifiers", &modifiers) != B_OK)
        return false;
    key = static_cast<char>(byte);
    return true;
}

// A click on the list gives it the keyboard. The list owns the filter. Window's thread.
class ClickFilter : public BMessageFilter {
public:
    explicit ClickFilter(CompletionWindow* window) : BMessageFilter(B_ANY_DELIVERY, B_ANY_SOURCE), window(window) {}

    filter_result Filter(BMessage* message, BHandler**) override
    {
        if (message->what == B_MOUSE_DOWN)
            window->SetFocus(true);
        return B_DISPATCH_MESSAGE;
    }

private:
    CompletionWindow* window;
};

} // namespace

CompletionWindow* CompletionWindow::gCompletionWindow = nullptr;

CompletionWindow::CompletionWindow(PluginInterface* host, long documentID)
    : TagWindow("", false, kPicked), documentID(documentID)
{
    gCompletionWindow = this;
    host->GetCommandShortcut("SymbolCompletion", &shortcutKey, &shortcutModifiers);
    shortcutModifiers &= kShortcutModifiers;
    SetFocus(false);
    List()->AddFilter(new ClickFilter(this));
}

CompletionWindow::~CompletionWindow()
{
    gCompletionWindow = nullptr;
}

void CompletionWindow::SetFocus(bool newFocused)
{
    const WindowSection section(*this);
    if (!section)
        return;
    focused = newFocused;
    List()->SetSelectionColor(newFocused ? kFocusedColour : kUnfocusedColour);
}

bool CompletionWindow::IsInvokeShortcutEvent(const BMessage* keyDown) const
{
    char key;
    int32 modifiers;
    if (!ReadKey(*keyDown, key, modifiers))
        return false;
    // More modifiers may be held, such as lock keys: a shortcut with Control also works with Control and Shift.
    return (modifiers & shortcutModifiers) == shortcutModifiers && key == shortcutKey;
}

void CompletionWindow::DispatchMessage(BMessage* message, BHandler* handler)
{
    auto* list = dynamic_cast<BListView*>(handler);
    if (message->what == B_KEY_DOWN && list != nullptr && IsInvokeShortcutEvent(message))
        list->Invoke();
    else
        BWindow::DispatchMessage(message, handler);
}

void CompletionWindow::MessageReceived(BMessage* message)
{
    if (message->what == kPicked)
        Choose(*message);
    else
        BWindow::MessageReceived(message);
}

// The entry may be gone: the list may have been refilled since the choice. A fast user may choose twice; only the first
// counts, or the rest of a selector would be inserted twice.
void CompletionWindow::Choose(const BMessage& pick)
{
    int32 index;
    if (pick.FindInt32("index", &index) != B_OK || index < 0 || index >= static_cast<int32>(kMostListedCandidates))
        return; // no selection, or the "more" entry
    const auto* item = dynamic_cast<const BStringItem*>(List()->ItemAt(index));
    if (item == nullptr || hasChosen)
        return;
    hasChosen = true;
    BMessage chosen(kCompletionChosen);
    chosen.AddString("completion", item->Text());
    PluginInterface::PostMessageToDocument(documentID, &chosen);
    PostMessage(B_QUIT_REQUESTED);
}

bool CompletionWindow::RouteKeyboardEvent(BMessage* keyDown)
{
    char key;
    int32 modifiers;
    if (!ReadKey(*keyDown, key, modifiers))
        return false;
    bool taken = false;
    if (IsInvokeShortcutEvent(keyDown)) {
        taken = true;
    } else if (modifiers == 0 && key == kDown) {
        SetFocus(true); // the key still moves the selection: the first Down selects the second entry
        taken = true;
    } else {
        // Caps Lock is a modifier too: with it on, arrows belong to the document. So do all other keys, which also take
        // the keyboard from the list: even Escape leaves it open, for the next letters.
        taken = focused && modifiers == 0 && (key == kSpace || key == kEnter || key == kUp);
        if (!taken)
            SetFocus(false);
    }
    if (taken)
        PostMessage(keyDown, List());
    return taken;
}

long CompletionWindow::RouteKeyboardEventIfNeeded(PluginInterface*, const BMessage* keyDown)
{
    if (gCompletionWindow == nullptr)
        return 0;
    BMessage copy(*keyDown);
    return gCompletionWindow->RouteKeyboardEvent(&copy) ? 2 : 0;
}
