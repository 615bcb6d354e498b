#include "wren/lsp/session/Folders.h"

#include "base/UserDirectories.h"
#include "wren/lsp/protocol/Uri.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>

namespace wren::lsp {

namespace {

void AddUri(const Json& uri, std::vector<std::string>& folders)
{
    if (!uri.is_string())
        return;
    const std::optional<std::string> path = PathOfUri(uri.get_ref<const std::string&>());
    if (!path)
        return;
    const std::string real = RealFolder(*path);
    if (std::find(folders.begin(), folders.end(), real) == folders.end())
        folders.push_back(real);
}

void AddFolders(const Json& list, std::vector<std::string>& folders)
{
    if (list.is_array())
        for (const Json& folder : list)
            AddUri(folder.is_object() ? folder.value("uri", Json()) : Json(), folders);
}

} // namespace

std::string RealFolder(const std::string& path)
{
    std::error_code unknown;
    const std::filesystem::path real =
        std::filesystem::weakly_canonical(std::filesystem::absolute(path, unknown), unknown);
    std::string text = unknown ? path : real.string();
    while (text.size() > 1 && text.ends_with('/'))
        text.pop_back();
    return text;
}

bool IsTooLarge(const std::string& folder)
{
    const std::string home = base::Home();
    return folder == "/" || (!home.empty() && folder == RealFolder(home));
}

std::vector<std::string> NamedFolders(const Json& params)
{
    std::vector<std::string> folders;
    AddFolders(params.value("workspaceFolders", Json()), folders);
    if (folders.empty())
        AddUri(params.value("rootUri", Json()), folders);
    const Json path = params.value("rootPath", Json());
    if (folders.empty() && path.is_string() && path.get_ref<const std::string&>().starts_with('/'))
        folders.push_back(RealFolder(path));
    return folders;
}

void ChangeFolders(const Json& event, std::vector<std::string>& folders)
{
    std::vector<std::string> removed;
    AddFolders(OptionalMember<Json>(event, "removed").value_or(Json()), removed);
    std::erase_if(folders,
                  [&](const auto& each) { return std::find(removed.begin(), removed.end(), each) != removed.end(); });
    AddFolders(OptionalMember<Json>(event, "added").value_or(Json()), folders);
}

} // namespace wren::lsp
