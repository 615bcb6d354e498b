// Lines that open, fill and change documents.
#include "wren/script/LineHandlers.h"

namespace wren::lines {

void OpenDocument(ScriptSession& session, const Line& line, Json& answer)
{
    const std::string path = line.Text("path");
    const std::optional<std::string> text = line.OptionalText("text");
    const bool worksheet = line.OptionalFlag("worksheet").value_or(false);
    std::string error;
    const Document* document = session.TheStage().Open(path, text, worksheet, &error);
    if (document == nullptr)
        throw line.Error("path", "cannot be read: " + JsonText(error).get<std::string>());
    answer["document"] = document->Id();
}

void SetText(ScriptSession& session, const Line& line, Json&)
{
    const std::string text = line.Text("text");
    session.NeedDocument().SetText(text);
}

void Select(ScriptSession& session, const Line& line, Json&)
{
    const long start = line.Integer("start");
    const long end = line.OptionalInteger("end").value_or(start);
    session.NeedDocument().Select(start, end);
}

void Undo(ScriptSession& session, const Line&, Json& answer)
{
    session.NeedDocument();
    const std::optional<std::string> undone = session.TheStage().Undo();
    answer["undone"] = undone ? JsonText(*undone) : Json();
}

} // namespace wren::lines
