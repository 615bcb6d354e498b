// Lines for a user's actions in a document: keys, clicks, buttons and menus.
#include "wren/headless/Keyboard.h"
#include "wren/script/LineHandlers.h"

#include "base/Utf8.h"

#include <string_view>

namespace wren::lines {

namespace {

long Stroke(ScriptSession& session, const std::string& key, const KeyStroke& stroke)
{
    session.NeedDocument();
    return session.TheStage().PressKey(key, stroke);
}

std::optional<MenuChoice> ReadChoice(const Line& line)
{
    if (!line.Has("choose") || line.Raw("choose").is_null())
        return std::nullopt;
    if (line.Raw("choose").is_string())
        return line.Text("choose");
    return line.Integer("choose");
}

TextClick ReadPlace(const Line& line)
{
    TextClick click;
    if (line.Has("at") && !line.Has("offset")) {
        const std::vector<float> at = line.Numbers("at", 2);
        click.at = {at[0], at[1]};
    } else {
        click.offset = line.Integer("offset");
    }
    return click;
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
    for (std::string_view rest = text; !rest.empty(); rest.remove_prefix(base::CodePointLength(rest))) {
        const std::string key(base::FirstCharacter(rest));
        Stroke(session, key, {key, 0});
        session.TheStage().Settle(); // windows answer faster than a user types
    }
}

void Click(ScriptSession& session, const Line& line, Json& answer)
{
    TextClick click = ReadPlace(line);
    if (!click.at)
        session.NeedDocument();
    click.modifiers = line.OptionalModifiers();
    click.buttons = static_cast<uint32>(line.OptionalInteger("buttons").value_or(1));
    answer["returned"] = session.TheStage().Click(click);
}

void Button(ScriptSession& session, const Line& line, Json& answer)
{
    answer["returned"] = session.TheStage().ClickButton(line.OptionalModifiers());
}

void PopUp(ScriptSession& session, const Line& line, Json& answer)
{
    answer["returned"] = session.TheStage().ChooseFromButton(ReadChoice(line));
}

void Menu(ScriptSession& session, const Line& line, Json& answer)
{
    const std::string label = line.Text("choose");
    const std::optional<bool> enabled = session.TheStage().ChooseFromMenu(label);
    if (!enabled)
        throw line.Error("choose", "is no item of the menu: \"" + label + "\"");
    answer["enabled"] = *enabled;
}

void Command(ScriptSession& session, const Line& line, Json& answer)
{
    const std::string name = line.Text("name");
    answer["returned"] = session.TheStage().RunCommand(name);
}

} // namespace wren::lines
