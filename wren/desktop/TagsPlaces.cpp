#include "wren/desktop/TagsPlaces.h"

#include "symbols/Index.h"
#include "vetch/app/BMessage.h"
#include "vetch/display/Display.h"
#include "vetch/storage/EntryRef.h"
#include "vetch/storage/Home.h"
#include "wren/core/Document.h"
#include "wren/core/Host.h"
#include "wren/core/LocalTags.h"
#include "wren/core/SystemTags.h"
#include "wren/desktop/NoticeBar.h"
#include "wren/desktop/StatusLine.h"
#include "wren/desktop/display/ShownText.h"

#include <QCoreApplication>

#include <filesystem>
#include <optional>
#include <system_error>

namespace wren {

namespace {

namespace fs = std::filesystem;

// The plug-in's words, and its message for a directory that was chosen in its panel.
constexpr const char* kNoTags = "DeclarationLookup";
constexpr const char* kGenerate = "Generate tags";
constexpr uint32 kDirectoryChosen = FourCC("gnlt");

QString Translated(const char* text)
{
    return QCoreApplication::translate("TagsPlaces", text);
}

QString ForPeople(const std::string& path)
{
    return ShownText(WithTilde(path, Home()));
}

bool IsGenerate(const vetch::AlertDescription& alert, long answer)
{
    return alert.title == kNoTags && answer >= 0 && answer < static_cast<long>(alert.buttons.size()) &&
           alert.buttons[answer] == kGenerate;
}

} // namespace

TagsPlaces::TagsPlaces(Host& host, NoticeBar& notices, StatusLine& status)
    : host(host), notices(notices), status(status)
{
}

void TagsPlaces::Show()
{
    const Document* document = host.Current();
    if (document == nullptr)
        return status.ShowTags({}, {});
    std::error_code unknown;
    const std::optional<std::string> tags = FindLocalTags(DirectoryOf(*document));
    if (tags && fs::is_directory(*tags, unknown)) { // or a link to one
        status.ShowTags(Translated("No tags"), Translated("%1 is a directory").arg(ShownText(*tags)));
        TellDirectory(*tags);
    } else if (tags) {
        status.ShowTags(Translated("Tags: %1").arg(ForPeople(*tags)),
                        Translated("%1 serves this text").arg(ShownText(*tags)));
    } else if (fs::exists(SystemTagsFile(Home()), unknown)) {
        status.ShowTags(Translated("Tags: the system's"), Translated("No tags file of a project serves this text"));
    } else {
        status.ShowTags(Translated("No tags"), Translated("No tags file serves this text"));
    }
}

void TagsPlaces::TellDirectory(const std::string& tags)
{
    if (told.insert(tags).second)
        notices.Tell(
            Translated("%1 is a directory and not a tags file. It hides all tags files above it from the texts "
                       "in %2. Rename it to use tags there.")
                .arg(ShownText(tags), ShownText(fs::path(tags).parent_path())),
            "directory " + ShownText(tags));
}

long TagsPlaces::Answer(const vetch::AlertDescription& alert, long answer)
{
    if (!IsGenerate(alert, answer) || host.Current() == nullptr)
        return answer;
    const std::string directory = DirectoryOf(*host.Current());
    const std::optional<std::string> root = symbols::FindRoot(directory);
    if (!root || *root == directory)
        return answer;
    Offer(directory, *root);
    return 0;
}

void TagsPlaces::Offer(const std::string& directory, const std::string& root)
{
    const auto label = [](const std::string& path) {
        return Translated("Make Tags in %1").arg(ForPeople(path).replace('&', "&&"));
    };
    notices.Offer(
        Translated("Tags in %1 would serve only the texts there, and hide the project's tags from them. No "
                   "tags were made yet.")
            .arg(ForPeople(directory)),
        "place of tags",
        {{label(root), [this, root] { Make(root); }}, {label(directory), [this, directory] { Make(directory); }}});
}

void TagsPlaces::Make(const std::string& directory)
{
    BMessage chosen(kDirectoryChosen);
    const EntryRef ref(directory.c_str());
    chosen.AddRef("refs", &ref);
    host.Events().MessageFor(0, chosen);
}

} // namespace wren
