// The texts that the client has opened.
#pragma once

#include "tagging/ParsedSource.h"
#include "wren/lsp/session/Text.h"
#include "wren/projects/Project.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace wren::lsp {

struct Document {
    std::string uri;  // as the client wrote it
    std::string path; // absolute; the URI itself for schemes without files, such as "untitled:"
    std::string languageId;
    long version = 0;
    TextPointer text;
};

using DocumentPointer = std::shared_ptr<const Document>;
using DocumentMap = std::map<std::string, DocumentPointer, std::less<>>; // by path
// What was open at a moment: a request sees the changes before it, and none after it.
using DocumentsPointer = std::shared_ptr<const DocumentMap>;

struct TextChange {
    std::optional<Range> range; // absent: the whole text
    std::string text;
};

// Nullopt for a language that is not understood.
std::optional<tagging::Language> LanguageOf(std::string_view languageId);

// For its project; one of a language that is not understood counts as closed.
OpenText AsOpenText(const DocumentPointer& document);

const Document* OpenAt(const DocumentMap& documents, const std::string& path); // null when none is open there
// Of an open document, as the client wrote it.
std::string UriOf(const DocumentMap& documents, const std::string& path);

// The path of a document by its URI, in whatever way that is encoded.
std::string PathOfDocument(std::string_view uri);

// Used by one thread; what All() returns, by any.
class Documents {
public:
    // Each returns the document's new state; null, with the reason in 'problem', when there is none. A problem may also
    // come with a state: what was asked for is done as well as possible.
    DocumentPointer Open(Document document, std::string& problem);
    DocumentPointer Change(const std::string& uri, long version, const std::vector<TextChange>& changes,
                           Encoding encoding, std::string& problem);
    DocumentPointer Close(const std::string& uri, std::string& problem); // the last state

    DocumentsPointer All() const { return all; }

private:
    void Put(DocumentPointer document);

    DocumentsPointer all = std::make_shared<const DocumentMap>();
};

} // namespace wren::lsp
