#include "wren/headless/PressKey.h"

#include "wren/core/Host.h"
#include "wren/headless/Keyboard.h"

namespace wren {

long PressKey(Host& host, const std::string& key, const KeyStroke& stroke)
{
    const long before = host.Current()->Id();
    const KeyRouting routing = host.RouteKey(stroke);
    Document* document = host.AllDocuments().Find(before);
    if (!routing.applies || document == nullptr)
        return routing.returned;
    const KeyEffect effect = ApplyKey(*document, key, stroke.modifiers);
    if (effect == KeyEffect::Typed)
        host.Events().KeyTyped();
    else if (effect == KeyEffect::Edited)
        host.Events().PrimitiveDone();
    return routing.returned;
}

} // namespace wren
