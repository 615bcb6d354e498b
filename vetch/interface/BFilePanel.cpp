#include "vetch/interface/BFilePanel.h"

#include "vetch/app/Modifiers.h"
#include "vetch/display/Display.h"
#include "vetch/interface/BWindow.h"

// Served by the application: the answer arrives on the document thread and the panel dies there.
class BFilePanel::PanelWindow : public BWindow {
public:
    explicit PanelWindow(BFilePanel* panel)
        : BWindow({}, "", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0, vetch::Service::Application,
                  vetch::ShownBy::Host),
          panel(panel)
    {
    }
    ~PanelWindow() override { delete panel; }

    void MessageReceived(BMessage* message) override
    {
        if (message->what != vetch::kPanelDone)
            return BWindow::MessageReceived(message);
        panel->Answer(*message);
        Quit();
    }

private:
    BFilePanel* const panel;
};

BFilePanel::BFilePanel(file_panel_mode, const BMessenger* target, const EntryRef* directory, uint32 flavours,
                       bool multiple, const BMessage* message, void* /*filter*/)
    : window(new PanelWindow(this)), target(target == nullptr ? std::nullopt : std::optional(*target)),
      directory(directory == nullptr ? EntryRef() : *directory), flavours(flavours), multiple(multiple)
{
    SetMessage(message);
}

BWindow* BFilePanel::Window()
{
    return window;
}

void BFilePanel::SetMessage(const BMessage* newMessage)
{
    message = newMessage == nullptr ? BMessage(B_REFS_RECEIVED) : *newMessage;
}

void BFilePanel::Show()
{
    if (window->HasRun())
        return;
    window->Run();
    vetch::PanelDescription description;
    description.panel = window->LooperToken();
    description.handler = window->Token();
    description.title = window->Title();
    description.directory = directory.Path();
    description.directoriesOnly = flavours == B_DIRECTORY_NODE;
    description.multiple = multiple;
    vetch::CurrentDisplay()->Apply(vetch::PanelOpened{description});
}

void BFilePanel::Answer(const BMessage& done)
{
    BMessage answer(message);
    EntryRef chosen;
    int32 count = 0;
    while (done.FindRef("refs", count, &chosen) == B_OK) {
        answer.AddRef("refs", &chosen);
        ++count;
    }
    if (count > 0 && target)
        target->SendMessage(&answer);
}
