#include "wren/desktop/ConfigKeeper.h"

#include "wren/core/Host.h"
#include "wren/desktop/DocumentActions.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/symbols/RowText.h"
#include "wren/text/EditorConfig.h"

#include <utility>

namespace wren {

ConfigKeeper::ConfigKeeper(Parts parts) : parts(std::move(parts))
{
    connect(&this->parts.documents, &DocumentActions::Named, this, &ConfigKeeper::Follow);
}

void ConfigKeeper::Follow(long document, const std::string& path)
{
    CodeView* view = parts.tabs.ViewOf(document);
    if (view == nullptr)
        return;
    const base::Result<EditorConfig> config = parts.isWanted() ? EditorConfigFor(path) : EditorConfig();
    view->SetConfig(config ? *config : EditorConfig());
    if (!config && std::exchange(told, config.Failure().Message()) != config.Failure().Message())
        parts.warn(Shown(told));
}

void ConfigKeeper::FollowAll()
{
    for (const Document* document : parts.host.AllDocuments().All())
        if (!document->Path().empty())
            Follow(document->Id(), document->Path());
}

} // namespace wren
