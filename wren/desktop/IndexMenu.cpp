#include "wren/desktop/IndexMenu.h"

#include "base/UserDirectories.h"
#include "wren/core/SystemTags.h"
#include "wren/desktop/SymbolActions.h"
#include "wren/desktop/display/ShownText.h"

#include <QAction>

#include <filesystem>
#include <system_error>
#include <utility>

namespace wren {

namespace {

namespace fs = std::filesystem;

bool IsThere(const fs::path& path)
{
    std::error_code unknown;
    return fs::exists(fs::symlink_status(path, unknown));
}

} // namespace

TextTags TagsServing(const std::string& path)
{
    TextTags tags;
    std::error_code unknown;
    const fs::path start = path.empty() ? fs::current_path(unknown) : fs::path(path).parent_path();
    for (fs::path directory = start; tags.project.empty(); directory = directory.parent_path()) {
        if (IsThere(directory / "tags"))
            tags.project = directory / "tags";
        if (!directory.has_relative_path())
            break;
    }
    if (const std::string system = SystemTagsFile(base::Home()); !system.empty() && IsThere(system))
        tags.system = system;
    return tags;
}

IndexMenu::IndexMenu(SymbolActions& symbols, std::function<std::string()> current, QAction* refresh, QAction* stop)
    : symbols(symbols), current(std::move(current)), refresh(refresh), stop(stop)
{
    setAccessibleName(tr("The index of names"));
    connect(this, &QMenu::aboutToShow, this, &IndexMenu::Fill);
}

void IndexMenu::Fill()
{
    clear();
    AddLine(State());
    addAction(refresh);
    addAction(stop);
    addSeparator();
    const TextTags tags = TagsServing(current());
    if (tags.project.empty() && tags.system.empty())
        return AddLine(tr("No tags files serve this text"));
    AddLine(tr("Tags files that serve this text:"));
    for (const std::string& file : {tags.project, tags.system})
        if (!file.empty())
            AddLine("    " + ShownLabel(file));
}

QString IndexMenu::State() const
{
    const SymbolEngine& engine = symbols.Engine();
    if (!engine.Activity().empty())
        return ShownLabel(engine.Activity());
    if (!engine.Problem().empty())
        return tr("Names are not understood: %1").arg(ShownLabel(engine.Problem()));
    return engine.IsStopped() ? tr("Indexing was stopped") : tr("The index is current");
}

void IndexMenu::AddLine(const QString& text)
{
    addAction(text)->setEnabled(false);
}

} // namespace wren
