#include "symbols/Workspace.h"

#include "symbols/IncludedFiles.h"
#include "symbols/TagsReader.h"
#include "symbols/store/Combination.h"
#include "symbols/update/ReadSmallFile.h"
#include "tagging/ctags/Scratch.h"

#include <cstdlib>
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

std::string RealPath(const std::string& path)
{
    char* found = ::realpath(path.c_str(), nullptr);
    std::string real = found != nullptr ? found : path;
    std::free(found);
    return real;
}

bool HasFile(std::string_view path)
{
    return path.starts_with('/');
}

// As an index of it has it.
std::string RootOf(const WorkspaceOptions& options)
{
    std::string root = options.root;
    while (root.size() > 1 && root.ends_with('/'))
        root.pop_back();
    return root;
}

// Nullopt when the path is not below the root, or there is none.
std::optional<std::string> Below(std::string_view path, const std::string& root)
{
    const std::string start = root == "/" ? root : root + "/";
    if (root.empty() || !path.starts_with(start))
        return std::nullopt;
    return std::string(path.substr(start.size()));
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
        : root(RootOf(options)), realRoot(root.empty() ? "" : RealPath(root)), scratch("/tmp"),
          parser(ForTexts(options.tagging, root, scratch.Directory())),
          included(root, options.withSystem, ForTexts(options.tagging, root, scratch.Directory()))
    {
        if (options.withProject && !root.empty())
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

    const std::string root;
    std::optional<Index> project;
    std::optional<Index> system;
    const std::string realRoot;
    const tagging::Scratch scratch;
    tagging::TextParser parser;
    IncludedFiles included;

    std::mutex readingTags; // guards the next two
    std::vector<std::string> tagsFiles;
    StampsOfFiles tagsStamps;

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
            if (HasFile(opened.absolute))
                combination->Put(opened.text);
        contents->combined = nullptr;
    }
    if (contents->combined == nullptr)
        contents->combined = combination->Current();
    return contents->combined;
}

SnapshotPointer Workspace::CurrentFor(const std::string& path) const
{
    if (!HasFile(path)) {
        const std::lock_guard lock(contents->mutex);
        const auto text = contents->open.find(path);
        if (text != contents->open.end() && !HasFile(text->second.absolute))
            return Combined(nullptr, nullptr, "/", {text->second.text});
    }
    return Current();
}

// A link, or a path through one, is known by the path of its file.
std::string Workspace::PathInIndex(std::string_view absolute) const
{
    if (!HasFile(absolute))
        return std::string(absolute);
    const std::optional<std::string> path = Below(absolute, contents->root);
    const SnapshotPointer project = contents->ProjectNow();
    if (path && (project == nullptr || project->FindFile(*path)))
        return *path;
    const std::optional<std::string> real = Below(RealPath(std::string(absolute)), contents->realRoot);
    if (real && (!path || (project != nullptr && project->FindFile(*real))))
        return *real;
    return path ? *path : std::string(absolute);
}

std::string Workspace::AbsolutePath(const File& file) const
{
    if (HasFile(file.path))
        return std::string(file.path);
    {
        const std::lock_guard lock(contents->mutex);
        const auto text = contents->open.find(std::string(file.path));
        if (text != contents->open.end() && !HasFile(text->second.absolute))
            return text->second.absolute;
    }
    std::string path = contents->root == "/" ? contents->root : contents->root + "/";
    return path.append(file.path);
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
    if (contents->root.empty() && !HasFile(path))
        return std::nullopt;
    return ReadSmallFile(AbsolutePath(file), Links::Follow, kMostOfFile);
}

// Of two texts for one path at a time, the one that came last counts, whichever is parsed first.
base::Result<void> Workspace::SetOpenText(const std::string& path, std::string text,
                                          std::optional<tagging::Language> language)
{
    unsigned long version;
    {
        const std::lock_guard lock(contents->mutex);
        version = ++contents->versions;
    }
    base::Result<std::unique_ptr<tagging::ParsedSource>> parsed =
        contents->parser.Parse(path, text, tagging::TextParser::Locals::No, language);
    std::string place = PathInIndex(path);
    {
        const std::lock_guard lock(contents->mutex);
        place = contents->places.try_emplace(path, place).first->second;
    }
    const tagging::ParsedSource nothing;
    std::shared_ptr<const OpenText> open =
        std::make_shared<OpenText>(place, std::move(text), parsed ? **parsed : nothing);
    const std::lock_guard lock(contents->mutex);
    contents->places.try_emplace(path, place); // it may have been closed meanwhile
    Contents::Opened& opened = contents->open[place];
    if (opened.version < version) {
        opened = {std::move(open), version, path};
        if (contents->combination && HasFile(path))
            contents->combination->Put(opened.text);
    }
    contents->combined = nullptr;
    return parsed ? base::Result<void>() : parsed.Failure();
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
    const bool isInRoot = Below(path, contents->root).has_value();
    if (!HasFile(path) || (isInRoot && project != nullptr && (system != nullptr || !contents->system)))
        return false;
    const auto known = [&](const std::string& file) -> std::optional<std::vector<std::string>> {
        if (file == path)
            if (const std::shared_ptr<const OpenText> text = contents->OpenTextAt(path))
                return IncludesIn(*Combined(nullptr, nullptr, "/", {text}), text->Path());
        std::optional<std::vector<std::string>> includes;
        if (project != nullptr)
            includes = IncludesIn(*project, Below(file, contents->root).value_or(file));
        return includes || system == nullptr ? includes : IncludesIn(*system, file.substr(1));
    };
    return contents->included.Load(path, known, cancel);
}

Workspace::TagsProblems Workspace::SetTagsFiles(std::vector<std::string> paths, const base::CancelToken& cancel)
{
    const std::lock_guard reading(contents->readingTags);
    TagsRead read = ReadTagsFiles(paths, contents->root, cancel);
    contents->tagsFiles = std::move(paths);
    contents->tagsStamps = std::move(read.stamps);
    if (cancel.IsCancelled())
        contents->tagsStamps.clear(); // the next refresh reads them
    const std::lock_guard lock(contents->mutex);
    contents->tags = std::move(read.snapshot);
    return std::move(read.problems);
}

Workspace::TagsProblems Workspace::RefreshTagsFiles(const base::CancelToken& cancel)
{
    std::vector<std::string> paths;
    {
        const std::lock_guard reading(contents->readingTags);
        if (StampsOf(contents->tagsFiles) == contents->tagsStamps)
            return {};
        paths = contents->tagsFiles;
    }
    return SetTagsFiles(std::move(paths), cancel);
}

} // namespace symbols
