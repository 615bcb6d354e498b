#include "symbols/update/ParserVersion.h"

#include "base/FileIdentity.h"
#include "symbols/update/SourceNames.h"
#include "tagging/ctags/ChildProcess.h"

#include <map>
#include <mutex>
#include <optional>
#include <utility>

namespace symbols {

namespace {

// Raise it when tagging/ finds something else in the same source.
constexpr int kVersionOfTagging = 3;

std::string FirstLineOfVersion(const std::string& program)
{
    const std::string text = tagging::OutputOf({program, "--options=NONE", "--version"});
    return text.substr(0, text.find('\n'));
}

std::string VersionOfCtags(const std::string& program)
{
    static std::mutex mutex;
    static std::map<std::string, std::pair<std::optional<base::FileIdentity>, std::string>> known;
    const std::optional<base::FileIdentity> identity = base::FileIdentity::At(program);
    const std::lock_guard lock(mutex);
    const auto place = known.find(program);
    if (place != known.end() && place->second.first == identity)
        return place->second.second;
    std::string version = FirstLineOfVersion(program);
    known[program] = {identity, version};
    return version;
}

} // namespace

std::string DescribeParsers(const tagging::Settings& settings, bool isSystem)
{
    std::string text = "tagging " + std::to_string(kVersionOfTagging);
    text += "\nctags " + VersionOfCtags(settings.ctags.program);
    text += "\nignored " + settings.ctags.ignored;
    text += "\ntime " + std::to_string(settings.ctags.timeLimit);
    text.append("\nsuffixes").append(SourceSuffixes());
    text += isSystem ? "\nsystem" : "";
    return text;
}

} // namespace symbols
