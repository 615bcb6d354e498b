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

constexpr long kMostLines = 1L << 40; // of a text; more is a damaged file

json JsonOf(const SessionState::OpenFile& file)
{
    return {{"path", JsonOfBytes(file.path)}, {"caret", file.caret},         {"firstLine", file.firstLine},
            {"worksheet", file.worksheet},    {"bookmarks", file.bookmarks}, {"encoding", LabelOf(file.encoding)}};
}

std::vector<long> BookmarksOf(const json& stored)
{
    std::vector<long> lines = stored.value("bookmarks", std::vector<long>());
    lines.resize(std::min(lines.size(), SessionState::kMostBookmarks));
    return lines;
}

SessionState::OpenFile FileOf(const json& stored)
{
    return {.path = BytesOfJson(stored.at("path")),
            .caret = std::max(0L, stored.value("caret", 0L)),
            .firstLine = std::max(0L, stored.value("firstLine", 0L)),
            .worksheet = stored.value("worksheet", false),
            .bookmarks = BookmarksOf(stored),
            .encoding = EncodingLabelled(stored.value("encoding", ""))};
}

json JsonOf(const SessionState::MarkedFile& file)
{
    json lines = json::array();
    json signs = json::array();
    for (const KeptBookmark& bookmark : file.bookmarks) {
        lines.push_back(bookmark.line);
        signs.push_back(bookmark.sign);
    }
    return {{"path", JsonOfBytes(file.path)}, {"lines", lines}, {"signs", signs}};
}

SessionState::MarkedFile MarkedFileOf(const json& stored)
{
    SessionState::MarkedFile file{BytesOfJson(stored.at("path")), {}};
    const auto lines = stored.value("lines", std::vector<long>());
    const auto signs = stored.value("signs", std::vector<std::string>());
    for (size_t i = 0; i < std::min({lines.size(), signs.size(), SessionState::kMostBookmarks}); ++i)
        if (lines[i] >= 0 && lines[i] <= kMostLines)
            file.bookmarks.push_back({lines[i], signs[i]});
    return file;
}

json JsonOf(const SessionState& state)
{
    json stored = {{"files", json::array()},     {"current", state.current}, {"recentFiles", json::array()},
                   {"geometry", state.geometry}, {"layout", state.layout},   {"panels", state.panels}};
    for (const SessionState::OpenFile& file : state.files)
        stored["files"].push_back(JsonOf(file));
    for (const std::string& path : state.recentFiles)
        stored["recentFiles"].push_back(JsonOfBytes(path));
    stored["marked"] = json::array();
    for (const SessionState::MarkedFile& file : state.marked)
        stored["marked"].push_back(JsonOf(file));
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
    for (const json& file : stored.value("marked", json::array()))
        if (state.marked.size() < SessionState::kMostMarked)
            state.marked.push_back(MarkedFileOf(file));
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

bool SessionState::SetBookmarks(const std::string& path, const std::vector<KeptBookmark>& bookmarks)
{
    if (BookmarksOf(path) == bookmarks)
        return false;
    std::erase_if(marked, [&](const MarkedFile& file) { return file.path == path; });
    if (!bookmarks.empty())
        marked.insert(marked.begin(), {path, bookmarks});
    if (marked.size() > kMostMarked)
        marked.resize(kMostMarked);
    return true;
}

std::vector<KeptBookmark> SessionState::BookmarksOf(const std::string& path) const
{
    const auto found = std::ranges::find(marked, path, &MarkedFile::path);
    return found == marked.end() ? std::vector<KeptBookmark>() : found->bookmarks;
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
