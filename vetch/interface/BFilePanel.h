// Asks the user for files or directories.
#pragma once

#include "vetch/app/BMessage.h"
#include "vetch/app/BMessenger.h"
#include "vetch/storage/EntryRef.h"
#include "vetch/support/Types.h"

#include <optional>

enum file_panel_mode { B_OPEN_PANEL };
enum : uint32 { B_DIRECTORY_NODE = 4 }; // node flavours: what the user can choose

class BWindow;

// Make it with new and Show() it: it deletes itself after the answer or when closed. Document thread only.
class BFilePanel {
public:
    // Copies the messenger, the directory and the message; any of them may be null. 'filter' is ignored.
    BFilePanel(file_panel_mode mode, const BMessenger* target, const EntryRef* directory, uint32 flavours,
               bool multiple, const BMessage* message, void* filter);

    BWindow* Window();                           // for its title; it dies with the panel
    void SetMessage(const BMessage* newMessage); // copied; null is an empty B_REFS_RECEIVED

    // Opens the panel and returns. The answer is posted to the target later: the message, with the chosen files as
    // "refs". A closed panel posts nothing.
    void Show();

private:
    class PanelWindow;

    ~BFilePanel() = default;
    void Answer(const BMessage& done);

    PanelWindow* const window; // owns this panel
    const std::optional<BMessenger> target;
    const EntryRef directory;
    const uint32 flavours;
    const bool multiple;
    BMessage message;
};
