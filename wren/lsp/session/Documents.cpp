#include "wren/lsp/session/Documents.h"

#include "wren/lsp/protocol/Uri.h"

#include <algorithm>
#include <utility>

namespace wren::lsp {

namespace {

TextPointer Changed(const Text& before, const TextChange& change, Encoding encoding)
{
    if (!change.range)
        return std::make_shared<const Text>(change.text);
    const auto [start, end] =
        std::minmax({before.OffsetOf(change.range->start, encoding), before.OffsetOf(change.range->end, encoding)});
    return std::make_shared<const Text>(before, start, end, change.text);
}

} // namespace

std::optional<tagging::Language> LanguageOf(std::string_view languageId)
{
    constexpr std::pair<std::string_view, tagging::Language> kLanguages[] = {
        {"c", tagging::Language::C},
        {"cpp", tagging::Language::Cplusplus},
        {"objective-c", tagging::Language::ObjectiveC},
        {"objective-cpp", tagging::Language::ObjectiveCplusplus},
    };
    for (const auto& [id, language] : kLanguages)
        if (id == languageId)
            return language;
    return std::nullopt;
}

OpenText AsOpenText(const DocumentPointer& document)
{
    const std::optional<tagging::Language> language = LanguageOf(document->languageId);
    if (!language)
        return {};
    return {{document->text, &document->text->Content()}, language}; // the content lives as long as the text
}

const Document* OpenAt(const DocumentMap& documents, const std::string& path)
{
    const auto found = documents.find(path);
    return found == documents.end() ? nullptr : found->second.get();
}

std::string UriOf(const DocumentMap& documents, const std::string& path)
{
    const Document* const open = OpenAt(documents, path);
    return open != nullptr ? open->uri : UriOfPath(path);
}

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
    for (const TextChange& change : changes)
        changed->text = Changed(*changed->text, change, encoding);
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
