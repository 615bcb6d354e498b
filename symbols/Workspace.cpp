#include "symbols/Workspace.h"

#include "symbols/IncludedFiles.h"
#include "symbols/RootPaths.h"
#include "symbols/TagsReader.h"
#include "symbols/store/Combination.h"
#include "symbols/update/ReadSmallFile.h"
#include "tagging/ctags/Scratch.h"

#include <map>
#include <mutex>
#include <utility>
#include <vector>

namespace symbols {

namespace {

constexpr size_t kMostOfFile = size_t(256) << 20; // bytes; what is larger is not written by people

IndexOptions ProjectOptions(const WorkspaceOptions& options)
{
    return {options.root, IndexOptions::Content::Project, options.cache, options.tagging, {}};
}

IndexOptions SystemOptions(const WorkspaceOptions& options)
{
    return {"/", IndexOptions::Content::SystemHeaders, options.cache, options.tagging, {}};
}

// Nullopt when the snapshot does not have the file.
std::optional<std::vector<std::string>> IncludesIn(const Snapshot& snapshot, const std::string& path)
{
    const std::optional<FileNumber> file = snapshot.FindFile(path);
    if (!file)
        return std::nullopt;
    std::vector<std::string> names;
    for (const Include& include : snapshot.IncludesOf(*file))
        names.emplace_back(include.name);
    return names;
}

} // namespace

struct Workspace::Contents {
    explicit Contents(const WorkspaceOptions& options)
        : paths(options.root), scratch("/tmp"), parser(ForTexts(options.tagging, paths.Root(), scratch.Directory())),
          included(paths.Root(), options.withSystem, ForTexts(options.tagging, paths.Root(), scratch.Directory()))
    {
        if (options.withProject && !paths.Root().empty())
            project.emplace(ProjectOptions(options));
        if (options.withSystem)
            system.emplace(SystemOptions(options));
    }

    static tagging::Settings ForTexts(tagging::Settings settings, const std::string& root,
                                      const std::string& temporaries)
    {
        settings.ctags.prototypes = true;
        settings.ctags.directory = root == "/" ? "" : root;
        settings.ctags.temporaries = temporaries;
        return settings;
    }

    SnapshotPointer ProjectNow() const { return project ? project->Current() : nullptr; }
    SnapshotPointer SystemNow() const { return system ? system->Current() : nullptr; }
    std::shared_ptr<const OpenText> OpenTextAt(const std::string& absolute) const
    {
        const std::lock_guard lock(mutex);
        const auto place = places.find(absolute);
        const auto opened = place == places.end() ? open.end() : open.find(place->second);
        return opened == open.end() ? nullptr : opened->second.text;
    }

    TagsProblems Take(TagsRead read)
    {
        const std::lock_guard lock(mutex);
        tags = std::move(read.snapshot);
        return std::move(read.problems);
    }

    const RootPaths paths;
    std::optional<Index> project;
    std::optional<Index> system;
    const tagging::Scratch scratch;
    tagging::TextParser parser;
    IncludedFiles included;

    std::mutex readingTags; // guards the next one
    TagsFiles tagsFiles;

    void Open(const std::string& path, const std::string& placeNow, unsigned long version, std::string text,
              const tagging::ParsedSource& parsed);
    unsigned long NextVersion()
    {
        const std::lock_guard lock(mutex);
        return ++versions;
    }

    mutable std::mutex mutex; // for the rest
    struct Opened {
        std::shared_ptr<const OpenText> text;
        unsigned long version = 0;
        std::string absolute; // as the editor names it
    };
    std::map<std::string, Opened> open;        // by the path in the index
    std::map<std::string, std::string> places; // of open texts: absolute path, path in the index
    unsigned long versions = 0;
    SnapshotPointer tags;
    mutable std::optional<Combination> combination; // of the last state; has all open texts with a file
    mutable SnapshotPointer combined;               // null when texts were opened or closed since
};

Workspace::Workspace(WorkspaceOptions options) : contents(std::make_unique<Contents>(options)) {}

Workspace::~Workspace() = default;

Index* Workspace::Project()
{
    return contents->project ? &*contents->project : nullptr;
}

Index* Workspace::System()
{
    return contents->system ? &*contents->system : nullptr;
}

tagging::TextParser& Workspace::Parser()
{
    return contents->parser;
}

SnapshotPointer Workspace::Current() const
{
    Layers layers;
    layers.project = contents->ProjectNow();
    layers.system = contents->SystemNow();
    layers.read = contents->included.Files();
    layers.readOfSystem = contents->included.FilesOfSystem();
    const std::lock_guard lock(contents->mutex);
    layers.tags = contents->tags;
    std::optional<Combination>& combination = contents->combination;
    if (!combination || combination->Below() != layers) {
        combination.emplace(std::move(layers));
        for (const auto& [path, opened] : contents->open)
            if (IsPathOfFile(opened.absolute))
                combination->Put(opened.text);
        contents->combined = nullptr;
    }
    if (contents->combined == nullptr)
        contents->combined = combination->Current();
    return contents->combined;
}

SnapshotPointer Workspace::CurrentFor(const std::string& path) const
{
    if (!IsPathOfFile(path)) {
        const std::lock_guard lock(contents->mutex);
        const auto text = contents->open.find(path);
        if (text != contents->open.end() && !IsPathOfFile(text->second.absolute))
            return Combined(nullptr, nullptr, "/", {text->second.text});
    }
    return Current();
}

std::string Workspace::PathInIndex(std::string_view absolute) const
{
    if (!IsPathOfFile(absolute))
        return std::string(absolute);
    return contents->paths.InIndex(absolute, contents->ProjectNow().get());
}

std::string Workspace::AbsolutePath(const File& file) const
{
    if (!IsPathOfFile(file.path)) {
        const std::lock_guard lock(contents->mutex);
        const auto text = contents->open.find(std::string(file.path));
        if (text != contents->open.end() && !IsPathOfFile(text->second.absolute))
            return text->second.absolute;
    }
    return contents->paths.Absolute(file.path);
}

std::optional<std::string> Workspace::Read(const std::string& path) const
{
    {
        const std::lock_guard lock(contents->mutex);
        if (const auto text = contents->open.find(path); text != contents->open.end())
            return text->second.text->Text();
    }
    File file;
    file.path = path;
    if (contents->paths.Root().empty() && !IsPathOfFile(path))
        return std::nullopt;
    return ReadSmallFile(AbsolutePath(file), Links::Follow, kMostOfFile);
}

// Of two texts for one path at a time, the one that came last counts, whichever is parsed first.
void Workspace::Contents::Open(const std::string& path, const std::string& placeNow, unsigned long version,
                               std::string text, const tagging::ParsedSource& parsed)
{
    std::string place;
    {
        const std::lock_guard lock(mutex);
        place = places.try_emplace(path, placeNow).first->second;
    }
    std::shared_ptr<const OpenText> made = std::make_shared<OpenText>(place, std::move(text), parsed);
    const std::lock_guard lock(mutex);
    places.try_emplace(path, place); // it may have been closed meanwhile
    Opened& opened = open[place];
    if (opened.version < version) {
        opened = {std::move(made), version, path};
        if (combination && IsPathOfFile(path))
            combination->Put(opened.text);
    }
    combined = nullptr;
}

base::Result<void> Workspace::SetOpenText(const std::string& path, std::string text,
                                          std::optional<tagging::Language> language)
{
    const unsigned long version = contents->NextVersion();
    base::Result<std::unique_ptr<tagging::ParsedSource>> parsed =
        contents->parser.Parse(path, text, tagging::TextParser::Locals::No, language);
    const tagging::ParsedSource nothing;
    contents->Open(path, PathInIndex(path), version, std::move(text), parsed ? **parsed : nothing);
    return parsed ? base::Result<void>() : parsed.Failure();
}

void Workspace::SetOpenText(const std::string& path, std::string text, const tagging::ParsedSource& parsed)
{
    contents->Open(path, PathInIndex(path), contents->NextVersion(), std::move(text), parsed);
}

void Workspace::CloseText(const std::string& path)
{
    const std::lock_guard lock(contents->mutex);
    const auto place = contents->places.find(path);
    if (place == contents->places.end())
        return;
    contents->open.erase(place->second);
    if (contents->combination)
        contents->combination->Remove(place->second);
    contents->places.erase(place);
    contents->combined = nullptr;
}

bool Workspace::LoadIncluded(const std::string& path, const base::CancelToken& cancel)
{
    const SnapshotPointer project = contents->ProjectNow();
    const SnapshotPointer system = contents->SystemNow();
    const bool isInRoot = contents->paths.Below(path).has_value();
    if (!IsPathOfFile(path) || (isInRoot && project != nullptr && (system != nullptr || !contents->system)))
        return false;
    const auto known = [&](const std::string& file) -> std::optional<std::vector<std::string>> {
        if (file == path)
            if (const std::shared_ptr<const OpenText> text = contents->OpenTextAt(path))
                return IncludesIn(*Combined(nullptr, nullptr, "/", {text}), text->Path());
        std::optional<std::vector<std::string>> includes;
        if (project != nullptr)
            includes = IncludesIn(*project, contents->paths.Below(file).value_or(file));
        return includes || system == nullptr ? includes : IncludesIn(*system, file.substr(1));
    };
    return contents->included.Load(path, known, cancel);
}

Workspace::TagsProblems Workspace::SetTagsFiles(std::vector<std::string> paths, const base::CancelToken& cancel)
{
    const std::lock_guard reading(contents->readingTags);
    return contents->Take(contents->tagsFiles.Set(std::move(paths), contents->paths.Root(), cancel));
}

Workspace::TagsProblems Workspace::RefreshTagsFiles(const base::CancelToken& cancel)
{
    const std::lock_guard reading(contents->readingTags);
    std::optional<TagsRead> read = contents->tagsFiles.ReadIfChanged(contents->paths.Root(), cancel);
    return read ? contents->Take(*std::move(read)) : TagsProblems();
}

} // namespace symbols
