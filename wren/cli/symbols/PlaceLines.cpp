#include "wren/cli/symbols/PlaceLines.h"

#include "base/Identifier.h"
#include "wren/cli/symbols/SymbolRow.h"
#include "wren/symbols/NameColumn.h"
#include "wren/symbols/SourceLines.h"
#include "wren/symbols/WorkspaceSources.h"

#include <algorithm>
#include <string_view>

namespace wren {

namespace {

using Json = nlohmann::ordered_json;

std::string AbsolutePath(const symbols::Workspace& workspace, const std::string& path)
{
    symbols::File file;
    file.path = path;
    return workspace.AbsolutePath(file);
}

SourceLines::Reader ReaderFor(const symbols::Workspace& workspace)
{
    return [&workspace](const std::string& path) { return workspace.Read(path); };
}

std::string_view IdentifierAt(std::string_view line, unsigned column)
{
    line.remove_prefix(std::min<size_t>(line.size(), column - 1));
    return line.substr(0,
                       static_cast<size_t>(std::ranges::find_if_not(line, base::IsIdentifierCharacter) - line.begin()));
}

} // namespace

PlaceLines LinesOf(const resolve::Answers& answers, const symbols::Workspace& workspace)
{
    PlaceLines lines{{}, answers.more, answers.name};
    SourceLines sources(ReaderFor(workspace));
    for (const resolve::Answer& answer : answers.found) {
        const unsigned number = std::max(answer.symbol.line, 1u);
        const std::string_view source = sources.Line(answer.path, number);
        Json description = SymbolJson(answer.symbol);
        description["how"] = resolve::NameOf(answer.how);
        description["reason"] = answer.reason;
        lines.found.push_back({AbsolutePath(workspace, answer.path), number, NameColumn(source, answer.symbol.name),
                               std::string(source), std::move(description)});
    }
    return lines;
}

PlaceLines LinesOf(const resolve::Uses& uses, const symbols::Workspace& workspace)
{
    PlaceLines lines{{}, uses.more, ""};
    SourceLines sources(ReaderFor(workspace));
    for (const resolve::Use& use : uses.found) {
        const std::string_view source = sources.Line(use.path, use.line);
        lines.found.push_back({AbsolutePath(workspace, use.path), use.line, use.column, std::string(source),
                               Json{{"name", IdentifierAt(source, use.column)}, {"role", NameOf(use.role)}}});
    }
    return lines;
}

PlaceLines ReferencesOf(const std::string& name, symbols::Workspace& workspace, symbols::Limits limits)
{
    const symbols::SnapshotPointer snapshot = workspace.Current();
    const WorkspaceSources sources(workspace);
    return LinesOf(resolve::Resolver(*snapshot, sources, workspace.Parser()).ReferencesOf(name, limits), workspace);
}

Json JsonOf(const PlaceLine& line)
{
    Json json{{"path", line.path}, {"line", line.line}, {"column", line.column}};
    json.update(line.describe);
    json["text"] = line.source;
    return json;
}

} // namespace wren
