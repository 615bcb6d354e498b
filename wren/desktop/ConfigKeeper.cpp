#include "wren/desktop/ConfigKeeper.h"

#include "base/FileIdentity.h"
#include "wren/core/Host.h"
#include "wren/desktop/DocumentActions.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/symbols/RowText.h"

#include <utility>

namespace wren {

namespace {

// What an existing file is in is seen in its bytes, unless it would have the same bytes in both.
void FollowEncoding(Document& document, const TextEncoding& wanted)
{
    if (document.Encoding() != TextEncoding() || document.IsWorksheet())
        return;
    const base::Result<std::string> bytes = Encode(document.Text(), wanted);
    if (!base::FileIdentity::At(document.Path()) || (bytes && *bytes == document.Text()))
        document.SetEncoding(wanted);
}

} // namespace

ConfigKeeper::ConfigKeeper(Parts parts) : parts(std::move(parts))
{
    connect(&this->parts.documents, &DocumentActions::Named, this, &ConfigKeeper::Follow);
}

base::Result<EditorConfig> ConfigKeeper::ConfigFor(const std::string& path) const
{
    return parts.isWanted() ? EditorConfigFor(path) : EditorConfig();
}

TextEncoding ConfigKeeper::EncodingFor(const std::string& path) const
{
    const base::Result<EditorConfig> config = ConfigFor(path);
    return config ? config->encoding.value_or(TextEncoding()) : TextEncoding();
}

void ConfigKeeper::Follow(long document, const std::string& path)
{
    CodeView* view = parts.tabs.ViewOf(document);
    if (view == nullptr)
        return;
    const base::Result<EditorConfig> config = ConfigFor(path);
    view->SetConfig(config ? *config : EditorConfig());
    if (config && config->encoding)
        FollowEncoding(*parts.host.AllDocuments().Find(document), *config->encoding);
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
