#include "wren/desktop/Welcome.h"

#include "wren/core/Host.h"
#include "wren/core/UserDirectories.h"
#include "wren/desktop/DocumentActions.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/editor/CodeView.h"

#include <QStatusBar>

#include <algorithm>
#include <utility>

namespace wren {

namespace {

constexpr size_t kMostRecent = 6;

} // namespace

Welcome::Welcome(Parts given) : parts(std::move(given)), help([this] { return Content(); }) {}

Welcome::~Welcome()
{
    delete tour;
}

void Welcome::Update()
{
    const Document* document = parts.host.Current();
    const bool isEmpty =
        document != nullptr && document->Path().empty() && !document->IsWorksheet() && document->Length() == 0;
    help.Update(parts.window.Tabs().CurrentView(), isEmpty);
}

EmptyHelp::Content Welcome::Content()
{
    const std::vector<std::string> recent = parts.recentFiles();
    EmptyHelp::Content content;
    content.title = recent.empty() ? tr("Welcome to Wren") : tr("Wren");
    content.sentence = parts.understandsNames
                           ? tr("Open a file of a source tree: its names are understood at once, without a build.")
                           : tr("Open a file, or type.");
    const QString open = tr("Open\u2026");
    content.choices.push_back({tr("Open a file"), parts.keysOf(open), [this] { parts.documents.OpenChosen(); }});
    for (size_t file = 0; file < std::min(recent.size(), kMostRecent); ++file) {
        const QString path = QString::fromStdString(recent[file]);
        content.choices.push_back({path.section('/', -1), path.section('/', 0, -2),
                                   [this, path = recent[file]] { parts.documents.Open(path); }});
    }
    if (parts.understandsNames)
        content.choices.push_back({tr("Take the tour"), tr("two minutes"), [this] { StartTour(); }});
    const QString preferences = tr("Preferences\u2026");
    content.choices.push_back({tr("Preferences and keys"), parts.keysOf(preferences), parts.openPreferences});
    return content;
}

void Welcome::StartTour()
{
    const std::string directory = StateDirectory() + "/tour";
    if (tour == nullptr)
        tour = new Tour(parts.window.Tabs(), directory,
                        [this](const std::string& path, long offset) { return OpenAt(path, offset); });
    std::string error;
    if (!tour->Start(&error))
        parts.window.statusBar()->showMessage(QString::fromStdString(error));
}

bool Welcome::OpenAt(const std::string& path, long offset)
{
    if (!parts.documents.Open(path))
        return false;
    CodeView& view = *parts.window.Tabs().CurrentView();
    view.GoTo(offset);
    view.setFocus();
    return true;
}

} // namespace wren
