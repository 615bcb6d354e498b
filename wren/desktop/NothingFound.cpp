#include "wren/desktop/NothingFound.h"

#include "vetch/storage/Home.h"
#include "wren/core/Documents.h"
#include "wren/core/Host.h"
#include "wren/core/LocalTags.h"
#include "wren/core/PluginEvents.h"
#include "wren/core/SystemTags.h"
#include "wren/desktop/KeyRouter.h"
#include "wren/desktop/NamedLine.h"
#include "wren/desktop/display/QtDisplay.h"
#include "wren/desktop/display/ShownText.h"

#include <QCoreApplication>

#include <algorithm>
#include <filesystem>
#include <optional>

namespace wren {

namespace {

constexpr long kLongestName = 80; // bytes that are shown

QString Tr(const char* text)
{
    return QCoreApplication::translate("NothingFound", text);
}

// Where the plug-in has looked.
QString TagsOf(const Document* document)
{
    const std::optional<std::string> local = FindLocalTags(document == nullptr ? "" : DirectoryOf(*document));
    std::error_code unknown;
    const bool hasSystem = std::filesystem::exists(SystemTagsFile(Home()), unknown);
    if (!local)
        return Tr("the tags of the system");
    const QString file = ShownText(WithTilde(*local, Home()));
    return hasSystem ? Tr("%1 and the tags of the system").arg(file) : file;
}

} // namespace

NothingFound::NothingFound(Host& host, const KeyRouter& router, const QtDisplay& display)
    : host(host), router(router), display(display)
{
}

QString NothingFound::Sentence() const
{
    const QString name = Name().simplified();
    return name.isEmpty() ? "" : Tr("Nothing found for \u201c%1\u201d in %2").arg(name, TagsOf(host.Current()));
}

QString NothingFound::Name() const
{
    const std::optional<KeyRouter::Question> question = router.Asking();
    if (!question)
        return display.TypedText().left(kLongestName);
    const Document* document = host.Current();
    if (document == nullptr)
        return {};
    const Selection selected = document->Selected();
    if (!question->offset && selected.start < selected.end)
        return ShownText(document->Text(selected.start, std::min(selected.end, selected.start + kLongestName)));
    return ShownText(NameAt(*document, question->offset.value_or(selected.end)));
}

} // namespace wren
