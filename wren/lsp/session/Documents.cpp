#include "wren/lsp/session/Documents.h"

#include "wren/lsp/protocol/Uri.h"

#include <algorithm>
#include <utility>

namespace wren::lsp {

namespace {

void Apply(std::string& content, const TextChange& change, Encoding encoding)
{
    if (!change.range) {
        content = change.text;
        return;
    }
    const Text before(content);
    const auto [start, end] =
        std::minmax({before.OffsetOf(change.range->start, encoding), before.OffsetOf(change.range->end, encoding)});
    content.replace(start, end - start, change.text);
}

} // namespace

std::string PathOfDocument(std::string_view uri)
{
    return PathOfUri(uri).value_or(std::string(uri));
}

void Documents::Put(DocumentPointer document)
{
    auto changed = std::make_shared<DocumentMap>(*all);
    (*changed)[document->path] = std::move(document);
    all = std::move(changed);
}

DocumentPointer Documents::Open(Document document, std::string& problem)
{
    document.path = PathOfDocument(document.uri);
    if (all->contains(document.path))
        problem = document.uri + " was already open; its new text counts";
    auto opened = std::make_shared<const Document>(std::move(document));
    Put(opened);
    return opened;
}

DocumentPointer Documents::Change(const std::string& uri, long version, const std::vector<TextChange>& changes,
                                  Encoding encoding, std::string& problem)
{
    const auto found = all->find(PathOfDocument(uri));
    if (found == all->end()) {
        problem = uri + " is not open; its change is dropped";
        return nullptr;
    }
    auto changed = std::make_shared<Document>(*found->second);
    if (version < changed->version)
        problem =
            uri + " went from version " + std::to_string(changed->version) + " back to " + std::to_string(version);
    changed->version = version;
    std::string content = changed->text->Content();
    for (const TextChange& change : changes)
        Apply(content, change, encoding);
    changed->text = std::make_shared<const Text>(std::move(content));
    Put(changed);
    return changed;
}

DocumentPointer Documents::Close(const std::string& uri, std::string& problem)
{
    const auto found = all->find(PathOfDocument(uri));
    if (found == all->end()) {
        problem = uri + " is not open; its closing is dropped";
        return nullptr;
    }
    DocumentPointer closed = found->second;
    auto changed = std::make_shared<DocumentMap>(*all);
    changed->erase(closed->path);
    all = std::move(changed);
    return closed;
}

} // namespace wren::lsp
