#include "wren/lsp/features/SwitchSourceHeader.h"

#include "wren/lsp/session/Subject.h"
#include "wren/symbols/OtherHalf.h"

#include <optional>

namespace wren::lsp {

void from_json(const Json& json, TextDocumentIdentifier& params)
{
    params.uri = Member<std::string>(json, "uri");
}

Json SwitchSourceHeader(const TextDocumentIdentifier& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    if (!subject.IsSource())
        return Json();
    const auto exists = [&subject](const std::string& path) { return subject.TextOf(path) != nullptr; };
    const std::optional<std::string> other = OtherHalfOf({subject.Path(), subject.Snapshot(), context.cancel, exists});
    return other ? Json(subject.UriOf(*other)) : Json();
}

} // namespace wren::lsp
