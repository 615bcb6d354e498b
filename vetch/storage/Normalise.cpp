#include "vetch/storage/Normalise.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace vetch {
namespace {

std::string Absolute(const std::string& path)
{
    if (path.empty() || path.front() == '/')
        return path;
    std::error_code failure;
    const std::filesystem::path here = std::filesystem::current_path(failure);
    return failure ? "" : here.string() + "/" + path;
}

// True when the path, as nearly all, is normalised already. Names that begin with a dot are checked by the caller.
bool IsPlain(const std::string& path)
{
    if (path.length() < 2 || path.front() != '/' || path.back() == '/')
        return false;
    for (size_t slash = 0; slash != std::string::npos; slash = path.find('/', slash + 1))
        if (path[slash + 1] == '/' || path[slash + 1] == '.')
            return false;
    return true;
}

std::string Joined(const std::vector<std::string>& parts)
{
    std::string path;
    for (const std::string& part : parts)
        path += "/" + part;
    return path.empty() ? "/" : path;
}

} // namespace

std::string NormalisedPath(const std::string& path)
{
    if (IsPlain(path))
        return path;
    const std::string absolute = Absolute(path);
    if (absolute.empty())
        return "";
    std::vector<std::string> parts;
    for (size_t start = 0, end = 0; start < absolute.size(); start = end + 1) {
        end = std::min(absolute.find('/', start), absolute.size());
        const std::string part = absolute.substr(start, end - start);
        if (part == ".." && !parts.empty())
            parts.pop_back();
        else if (!part.empty() && part != "." && part != "..")
            parts.push_back(part);
    }
    return Joined(parts);
}

std::string DirectoryPart(const std::string& normalisedPath)
{
    const size_t slash = normalisedPath.rfind('/');
    if (slash == std::string::npos || normalisedPath == "/")
        return "";
    return slash == 0 ? "/" : normalisedPath.substr(0, slash);
}

std::string LeafPart(const std::string& normalisedPath)
{
    return normalisedPath == "/" ? "/" : normalisedPath.substr(normalisedPath.rfind('/') + 1);
}

} // namespace vetch
