#include "wren/desktop/state/SessionState.h"

#include "base/Hash.h"
#include "wren/core/Documents.h"
#include "wren/core/TextFile.h"
#include "wren/core/UserDirectories.h"
#include "wren/desktop/state/JsonBytes.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>

namespace wren {

namespace {

using nlohmann::json;

json JsonOf(const SessionState::OpenFile& file)
{
    return {{"path", JsonOfBytes(file.path)},
            {"caret", file.caret},
            {"firstLine", file.firstLine},
            {"worksheet", file.worksheet},
            {"bookmarks", file.bookmarks}};
}

std::vector<long> BookmarksOf(const json& stored)
{
    std::vector<long> lines = stored.value("bookmarks", std::vector<long>());
    lines.resize(std::min(lines.size(), SessionState::kMostBookmarks));
    return lines;
}

SessionState::OpenFile FileOf(const json& stored)
{
    return {BytesOfJson(stored.at("path")), std::max(0L, stored.value("caret", 0L)),
            std::max(0L, stored.value("firstLine", 0L)), stored.value("worksheet", false), BookmarksOf(stored)};
}

json JsonOf(const SessionState& state)
{
    json stored = {{"files", json::array()},     {"current", state.current}, {"recentFiles", json::array()},
                   {"geometry", state.geometry}, {"layout", state.layout},   {"panels", state.panels}};
    for (const SessionState::OpenFile& file : state.files)
        stored["files"].push_back(JsonOf(file));
    for (const std::string& path : state.recentFiles)
        stored["recentFiles"].push_back(JsonOfBytes(path));
    return stored;
}

SessionState StateOf(const json& stored)
{
    SessionState state;
    for (const json& file : stored.value("files", json::array()))
        state.files.push_back(FileOf(file));
    for (const json& path : stored.value("recentFiles", json::array()))
        if (state.recentFiles.size() < SessionState::kMostRecent)
            state.recentFiles.push_back(BytesOfJson(path));
    const int current = stored.value("current", -1);
    state.current = current >= 0 && current < static_cast<int>(state.files.size()) ? current : -1;
    state.geometry = stored.value("geometry", "");
    state.layout = stored.value("layout", "");
    state.panels = stored.value("panels", state.panels);
    return state;
}

} // namespace

void SessionState::Opened(const std::string& path)
{
    std::erase(recentFiles, path);
    recentFiles.insert(recentFiles.begin(), path);
    if (recentFiles.size() > kMostRecent)
        recentFiles.resize(kMostRecent);
}

std::string SessionFile(const std::string& folder)
{
    if (StateDirectory().empty())
        return "";
    return StateDirectory() + "/session" + (folder.empty() ? "" : "-" + base::Fnv1aDigits(folder)) + ".json";
}

std::string FormOf(const SessionState& state)
{
    return JsonOf(state).dump(1, ' ', false, json::error_handler_t::replace) + "\n";
}

SessionState LoadSession(const std::string& folder)
{
    std::string ignored;
    const std::optional<std::string> text = ReadWholeFile(SessionFile(folder), &ignored);
    if (!text)
        return {};
    try {
        return StateOf(json::parse(*text));
    } catch (const json::exception&) {
        return {};
    }
}

bool SaveSession(const SessionState& state, std::string* error, const std::string& folder)
{
    if (StateDirectory().empty()) {
        *error = "there is no home directory: the session has no place";
        return false;
    }
    return MakeUserDirectory(StateDirectory(), error) && WriteWholeFile(SessionFile(folder), FormOf(state), error);
}

} // namespace wren
