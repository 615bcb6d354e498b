#include "wren/desktop/FilesActions.h"

#include "wren/core/Host.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/Icons.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/PlaceActions.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/files/FilesPanel.h"
#include "wren/desktop/symbols/ProjectRoot.h"
#include "wren/desktop/symbols/RowText.h"
#include "wren/desktop/symbols/SymbolEngine.h"

#include <utility>

namespace wren {

namespace {

constexpr size_t kMostFound = 500; // files; nobody reads more

} // namespace

FilesActions::FilesActions(const Parts& parts)
    : parts(parts), tree(std::make_shared<std::unique_ptr<ProjectTree>>()),
      files(std::make_shared<std::vector<std::string>>())
{
}

FilesPanel& FilesActions::Panel()
{
    if (panel != nullptr)
        return *panel;
    panel = new FilesPanel({IconNamed("folder"), IconNamed("text-x-generic")}, &parts.window);
    isNew = !parts.window.AddPanel(Qt::LeftDockWidgetArea, panel);
    panel->hide();
    connect(panel, &FilesPanel::Wanted, this, [this](const std::string& directory) {
        missing.insert(directory);
        AskDirectories();
    });
    connect(panel, &FilesPanel::LettersTyped, this, &FilesActions::AskFound);
    connect(panel, &FilesPanel::AllSwitched, this, [this] {
        files = std::make_shared<std::vector<std::string>>();
        Refresh();
    });
    connect(panel, &FilesPanel::Chosen, this, &FilesActions::Open);
    connect(panel, &FilesPanel::Left, &parts.window.Tabs(), &EditorTabs::FocusCurrent);
    connect(panel, &FilesPanel::visibilityChanged, this, [this] {
        emit PanelShown(panel->isVisible());
        Follow();
    });
    return *panel;
}

bool FilesActions::IsShown() const
{
    return panel != nullptr && panel->isVisible();
}

std::string FilesActions::CurrentPath() const
{
    const Document* document = parts.host.Current();
    return document == nullptr ? "" : document->Path();
}

void FilesActions::Show(bool shown)
{
    Panel().setVisible(shown);
    if (!shown)
        return parts.window.Tabs().FocusCurrent();
    if (std::exchange(isNew, false))
        parts.window.ShareHeight(panel);
    Panel().raise();
    Panel().setFocus();
}

// A text without a file is in no project: what was shown stays.
void FilesActions::Follow()
{
    const std::string path = CurrentPath();
    if (IsShown() && !parts.folder.empty() && (root.empty() || path != followed)) {
        followed = path;
        return Heard(path, parts.folder);
    }
    if (!IsShown() || path == followed || (path.empty() && !root.empty()))
        return;
    followed = path;
    isFollowing = true;
    const auto ask = [this, path](const Question& question) {
        const std::string found = ProjectOf(path, question.projects);
        question.tell([this, path, found] { Heard(path, found); });
    };
    parts.engine.Ask(SymbolEngine::Topic::Directories, ask);
}

void FilesActions::Heard(const std::string& path, const std::string& projectRoot)
{
    isFollowing = false;
    if (projectRoot != root) {
        root = projectRoot;
        missing.clear();
        forgets = true;
        Panel().SetRoot(root);
    }
    if (path.starts_with(root + "/"))
        Panel().Reveal(path.substr(root.size() + 1));
    AskDirectories();
}

void FilesActions::Refresh()
{
    if (!IsShown() || root.empty())
        return;
    for (std::string& directory : Panel().Whole().ReadDirectories())
        missing.insert(std::move(directory));
    forgets = true;
    AskDirectories();
    if (!Panel().Letters().empty())
        AskFound();
}

// A later question cancels an earlier one; so each asks for all that is missing, when the root is sure.
void FilesActions::AskDirectories()
{
    if (root.empty() || missing.empty() || isFollowing)
        return;
    const auto ask = [this, at = root, wanted = missing, all = Panel().ShowsAll(), kept = tree,
                      forgets = forgets](const Question& question) {
        if (*kept == nullptr || (*kept)->Root() != at)
            *kept = std::make_unique<ProjectTree>(at);
        if (forgets)
            (*kept)->Forget();
        for (const std::string& directory : wanted) {
            if (question.cancel.IsCancelled())
                return;
            base::Result<std::vector<TreeEntry>> listed = (*kept)->List(directory, all);
            question.tell([this, at, directory, listed = std::move(listed)]() mutable {
                if (at != root)
                    return;
                missing.erase(directory);
                this->forgets = false;
                Panel().SetEntries(directory, listed ? std::move(*listed) : std::vector<TreeEntry>());
            });
        }
    };
    parts.engine.Ask(SymbolEngine::Topic::Directories, ask);
}

// All files are looked for at the first letter.
void FilesActions::AskFound()
{
    const std::string letters = Panel().Letters();
    if (letters.empty() || root.empty()) {
        files = std::make_shared<std::vector<std::string>>();
        return parts.engine.Forget(SymbolEngine::Topic::FoundFiles);
    }
    const auto ask = [this, at = root, letters, all = Panel().ShowsAll(), kept = files](const Question& question) {
        if (kept->empty()) {
            base::Result<std::vector<std::string>> below = FilesBelow(at, all, question.cancel);
            if (!below)
                return question.tell([this, problem = below.Failure().Message()] { Panel().Tell(Shown(problem)); });
            *kept = std::move(*below);
        }
        std::vector<std::string> found = FilesWith(letters, *kept, kMostFound, question.cancel);
        question.tell([this, found = std::move(found)] { Panel().ShowFound(found, found.size() == kMostFound); });
    };
    parts.engine.Ask(SymbolEngine::Topic::FoundFiles, ask);
}

void FilesActions::Open(const std::string& file)
{
    parts.places.OpenMatch(root + "/" + file, 0);
    parts.window.Tabs().FocusCurrent();
}

} // namespace wren
