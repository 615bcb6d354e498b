#include "wren/desktop/display/UserPosts.h"

#include "vetch/app/BMessage.h"
#include "vetch/app/Loop.h"
#include "vetch/app/Modifiers.h"
#include "vetch/display/Display.h"
#include "vetch/storage/EntryRef.h"
#include "wren/core/KeyMessage.h"

namespace wren {

namespace {

bool Post(vetch::HandlerToken to, const BMessage& message)
{
    return vetch::PostToHandler(to, message) == B_OK;
}

BMessage Message(uint32 what, const TextEdit& edit)
{
    BMessage message(what);
    message.AddString("text", edit.text.c_str());
    message.AddInt32("start", static_cast<int32>(edit.start));
    message.AddInt32("end", static_cast<int32>(edit.end));
    return message;
}

BMessage Message(uint32 what, const char* name, bool value)
{
    BMessage message(what);
    message.AddInt32(name, value);
    return message;
}

} // namespace

bool PostMouseDown(vetch::HandlerToken list, long index, int clicks)
{
    BMessage message(B_MOUSE_DOWN);
    message.AddInt32("index", static_cast<int32>(index));
    message.AddInt32("clicks", clicks);
    return Post(list, message);
}

bool PostKeyDown(vetch::HandlerToken list, const KeyStroke& key)
{
    return Post(list, KeyMessage(key));
}

bool PostPressed(vetch::HandlerToken button)
{
    return Post(button, BMessage(vetch::kPressed));
}

bool PostChecked(vetch::HandlerToken box, bool on)
{
    return Post(box, Message(vetch::kChecked, "on", on));
}

bool PostTextEdited(vetch::HandlerToken control, const TextEdit& edit)
{
    return Post(control, Message(vetch::kTextEdited, edit));
}

bool PostTextEntered(vetch::HandlerToken control, const TextEdit& edit)
{
    return Post(control, Message(vetch::kTextEntered, edit));
}

bool PostFrameChanged(vetch::HandlerToken window, const BRect& frame)
{
    BMessage message(vetch::kFrameChanged);
    message.AddInt32("left", static_cast<int32>(frame.left));
    message.AddInt32("top", static_cast<int32>(frame.top));
    message.AddInt32("right", static_cast<int32>(frame.right));
    message.AddInt32("bottom", static_cast<int32>(frame.bottom));
    return Post(window, message);
}

bool PostActivated(vetch::HandlerToken window, bool active)
{
    return Post(window, Message(vetch::kActivated, "active", active));
}

bool PostQuitRequested(vetch::HandlerToken window)
{
    return Post(window, BMessage(B_QUIT_REQUESTED));
}

bool PostPanelDone(vetch::HandlerToken panel, const std::vector<std::string>& paths)
{
    BMessage message(vetch::kPanelDone);
    for (const std::string& path : paths) {
        const EntryRef chosen(path.c_str());
        message.AddRef("refs", &chosen);
    }
    return Post(panel, message);
}

} // namespace wren
