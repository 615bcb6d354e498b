// Lines that do what a user does in a document: keys, clicks, buttons and menus.
#include "wren/script/Keyboard.h"
#include "wren/script/LineHandlers.h"
#include "wren/script/PressKey.h"

#include "vetch/app/Modifiers.h"
#include "vetch/display/Utf8.h"

#include <string_view>

namespace wren::lines {

namespace {

// The modifier keys that a user holds while something else happens.
class HeldModifiers {
public:
    explicit HeldModifiers(uint32 bits) { vetch::SetModifiers(bits); }
    ~HeldModifiers() { vetch::SetModifiers(0); }
    HeldModifiers(const HeldModifiers&) = delete;
    HeldModifiers& operator=(const HeldModifiers&) = delete;
};

long Stroke(ScriptSession& session, const std::string& key, const KeyStroke& stroke)
{
    const HeldModifiers held(stroke.modifiers);
    session.NeedDocument();
    return PressKey(session.TheHost(), key, stroke);
}

std::optional<MenuChoice> ReadChoice(const Line& line)
{
    if (!line.Has("choose") || line.Raw("choose").is_null())
        return std::nullopt;
    if (line.Raw("choose").is_string())
        return line.Text("choose");
    return line.Integer("choose");
}

BPoint ReadPlace(ScriptSession& session, const Line& line)
{
    if (line.Has("at") && !line.Has("offset")) {
        const std::vector<float> at = line.Numbers("at", 2);
        return {at[0], at[1]};
    }
    const long offset = line.Integer("offset");
    return session.TheFace().CellCentre(session.NeedDocument(), offset);
}

} // namespace

void Key(ScriptSession& session, const Line& line, Json& answer)
{
    const std::string key = line.Text("key");
    const std::optional<KeyStroke> stroke = StrokeOf(key, line.OptionalModifiers());
    if (!stroke)
        throw line.Error("key", "is neither one character nor the name of a key: \"" + key + "\"");
    answer["returned"] = Stroke(session, key, *stroke);
}

void Type(ScriptSession& session, const Line& line, Json&)
{
    const std::string text = line.Text("text");
    session.NeedDocument();
    for (std::string_view rest = text; !rest.empty(); rest.remove_prefix(vetch::CodePointLength(rest))) {
        const std::string key(rest.substr(0, vetch::CodePointLength(rest)));
        Stroke(session, key, {key, 0});
        session.Settle(); // nobody types faster than windows answer
    }
}

void Click(ScriptSession& session, const Line& line, Json& answer)
{
    const BPoint where = ReadPlace(session, line);
    const uint32 modifiers = line.OptionalModifiers();
    const long buttons = line.OptionalInteger("buttons").value_or(1);
    const HeldModifiers held(modifiers);
    session.TheFace().mouse = {where, static_cast<uint32>(buttons)};
    answer["returned"] = session.TheHost().Events().MouseDown();
    session.TheFace().mouse.buttons = 0;
}

void Button(ScriptSession& session, const Line& line, Json& answer)
{
    const HeldModifiers held(line.OptionalModifiers());
    answer["returned"] = session.TheHost().Events().ButtonClicked();
}

void PopUp(ScriptSession& session, const Line& line, Json& answer)
{
    session.Display().ChooseNext(ReadChoice(line));
    answer["returned"] = session.TheHost().Events().ButtonPopUp();
    session.Display().ChooseNext(std::nullopt);
}

void Menu(ScriptSession& session, const Line& line, Json& answer)
{
    const std::string label = line.Text("choose");
    const std::optional<bool> enabled = session.TheHost().ChooseFromSearchMenu(label);
    if (!enabled)
        throw line.Error("choose", "is no item of the menu: \"" + label + "\"");
    answer["enabled"] = *enabled;
}

void Command(ScriptSession& session, const Line& line, Json& answer)
{
    const std::string name = line.Text("name");
    answer["returned"] = session.TheHost().Events().Command(name);
}

} // namespace wren::lines
