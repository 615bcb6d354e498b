// Rebuilds stale tags files: the tag set knows which are stale, this folder how to make them.

#include "generate/CreateTags.h"
#include "generate/TagTemplates.h"
#include "tags/Tags.h"
#include "vetch/storage/BEntry.h"
#include "vetch/support/ShellCommand.h"

namespace {

vetch::ShellRequest BecauseOf(const TagFile& tags)
{
    return {tags.Path().Path(), tags.NewerSource()};
}

} // namespace

void Tags::UpdateIfNeeded(PluginInterface* host)
{
    BEntry directory(local.Path().Path(), true);
    directory.GetParent(&directory);
    if (local.OutOfDate())
        gTagsActions.createIn(host, directory, kGenerateLocalCtags, nullptr, BecauseOf(local));
    // The system's command lines name only absolute paths, so the local directory works for them too.
    if (system.OutOfDate())
        gTagsActions.createIn(host, directory, kGenerateSystemCtags, SecondSystemTemplate(host), BecauseOf(system));
}
