#include "windows/EntryWindow.h"

#include "plugin/PluginInterface.h"
#include "tags/Tags.h"
#include "vetch/display/Display.h"
#include "vetch/interface/BButton.h"
#include "vetch/interface/BTextControl.h"
#include "vetch/interface/DialogHelper.h"
#include "windows/SearchWindow.h"

namespace {

constexpr uint32 kLookUp = FourCC("LkUp");
constexpr uint32 kCancel = FourCC("not!");

// Item numbers in the interface file.
const long kSymbolField = 1;
const long kLookUpButton = 2;
const long kCancelButton = 3;

const BPoint kResultsPlace = {300, 200}; // on the screen

} // namespace

EntryWindow* EntryWindow::gEntryWin = nullptr;

EntryWindow::EntryWindow(__CFBundle* bundle, const char* nib, const char* window, const BEntry* localTags,
                         const BEntry* systemTags)
    : BWindow(bundle, nib, window), symbol(new BTextControl), localTags(*localTags), systemTags(*systemTags)
{
    gEntryWin = this;
    AddButton(kLookUpButton, kLookUp);
    AddButton(kCancelButton, kCancel);
    AddChildFromNib(symbol, kSymbolField);
    symbol->MakeFocus();
}

EntryWindow::~EntryWindow()
{
    gEntryWin = nullptr;
}

void EntryWindow::AddButton(long item, uint32 command)
{
    auto* button = new BButton;
    AddChildFromNib(button, item);
    button->SetMessage(new BMessage(command));
}

EntryWindow* EntryWindow::CreateOrShow(PluginInterface* host, const BEntry* localTags, const BEntry* systemTags)
{
    if (gEntryWin == nullptr) {
        gEntryWin = new EntryWindow(host->bundle, "DeclarationDialogs", "EntryWindow", localTags, systemTags);
        gEntryWin->Show();
    } else if (gEntryWin->Lock()) {
        gEntryWin->Show();
        gEntryWin->symbol->MakeFocus();
        DialogHelper::SelectAll(gEntryWin->symbol);
        gEntryWin->Activate(true);
        gEntryWin->Unlock();
    }
    return gEntryWin;
}

void EntryWindow::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kLookUp:
        LookUp();
        break;
    case kCancel:
        Hide();
        break;
    default:
        BLooper::MessageReceived(message); // skips the window's handler: only quitting is left to handle
    }
}

void EntryWindow::LookUp()
{
    Hide();
    auto* results = new SearchWindow;
    Tags tags(&localTags, &systemTags, symbol->Text(), true);
    if (results->PopulateList(*results, tags, &SearchWindow::GetAnySymbols)) {
        results->ShowAt(kResultsPlace); // a single match is listed too: the user is not in the document
    } else {
        results->Quit();
        beep();
    }
}
