// The documents that are open, each with its window.
#pragma once

#include "wren/core/Document.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class BWindow;

namespace wren {

class Face;

// Owns documents and windows. A document's identifier is 1, 2, ... and is never used again, so that a message for a
// document that was closed meanwhile finds none. Document thread; be_app exists.
class Documents {
public:
    explicit Documents(Face& face); // borrowed
    ~Documents();                   // closes all

    Document* Current() const { return Find(current); } // null when none is
    Document* Find(long id) const;                      // null when it is not open
    Document* FindByPath(const std::string& path) const;
    Document* FindWorksheet() const;
    BWindow* WindowOf(long id) const;   // null when it is not open
    std::vector<Document*> All() const; // in the order in which they were opened

    // Makes it, its text in a store of the face's, and leaves the current one.
    Document& Open(const std::string& path, std::string_view text, bool worksheet);
    // Null for none. Its window becomes the active one, while the user is at the editor at all.
    void SetCurrent(const Document* document);
    void SetUserPresent(bool present); // at first, yes
    void FollowFrame();                // the windows are where the face says that documents are
    // Closed documents are found no more. They and their windows are destroyed at once, or by DestroyClosed() once the
    // plug-in call is over that may still be using them.
    void Close(long id);
    void CloseAll();
    void DestroyClosed();

private:
    struct OpenDocument {
        std::unique_ptr<Document> document;
        BWindow* window; // quit when closed
    };
    const OpenDocument* FindOpen(long id) const;
    void ActivateCurrent(bool active);

    Face& face;
    std::vector<OpenDocument> open;
    std::vector<OpenDocument> closed; // not destroyed yet
    long lastId = 0;
    long current = 0; // 0: none
    bool userPresent = true;
};

// The file's bytes; nothing, with the reason in '*error', when it cannot be read, is no plain file, or has no end in
// reach.
std::optional<std::string> ReadWholeFile(const std::string& path, std::string* error);

} // namespace wren
