#include "symbols/update/ParserVersion.h"

#include "base/ChildProcess.h"
#include "base/FileIdentity.h"
#include "symbols/update/SourceNames.h"

#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace symbols {

namespace {

// Raise it when tagging/ finds something else in the same source.
constexpr int kVersionOfTagging = 3;

using Identity = std::optional<base::FileIdentity>;

// What programs have answered. Any thread.
class KnownVersions {
public:
    std::optional<std::string> Find(const std::string& program, const Identity& identity)
    {
        const std::lock_guard lock(mutex);
        const auto place = known.find(program);
        if (place == known.end() || place->second.first != identity)
            return std::nullopt;
        return place->second.second;
    }
    void Keep(const std::string& program, const Identity& identity, const std::string& version)
    {
        const std::lock_guard lock(mutex);
        known[program] = {identity, version};
    }

private:
    std::mutex mutex;
    std::map<std::string, std::pair<Identity, std::string>> known;
};

// Nobody waits for another thread's question: that one may take long, and only its own token ends it.
base::Result<std::string> VersionOfCtags(const tagging::CtagsSettings& ctags, const base::CancelToken& cancel)
{
    static KnownVersions known;
    const Identity identity = base::FileIdentity::At(ctags.program);
    if (std::optional<std::string> version = known.Find(ctags.program, identity))
        return *std::move(version);
    const base::Result<std::string> text =
        base::OutputOf({ctags.program, "--options=NONE", "--version"}, std::chrono::seconds(ctags.timeLimit), cancel);
    if (!text)
        return text.Failure();
    std::string version = text->substr(0, text->find('\n'));
    known.Keep(ctags.program, identity, version);
    return version;
}

} // namespace

base::Result<std::string> DescribeParsers(const tagging::Settings& settings, bool isSystem,
                                          const base::CancelToken& cancel)
{
    const base::Result<std::string> version = VersionOfCtags(settings.ctags, cancel);
    if (!version)
        return version.Failure();
    std::string text = "tagging " + std::to_string(kVersionOfTagging);
    text += "\nctags " + *version;
    text += "\nignored " + settings.ctags.ignored;
    text += "\ntime " + std::to_string(settings.ctags.timeLimit);
    text.append("\nsuffixes").append(SourceSuffixes());
    text += isSystem ? "\nsystem" : "";
    return text;
}

} // namespace symbols
