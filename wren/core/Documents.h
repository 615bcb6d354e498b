// The open documents, each with its window.
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

// Owns documents and windows. Identifiers are 1, 2, ... and never reused, so that a message for a closed document finds
// none. Document thread; be_app exists.
class Documents {
public:
    explicit Documents(Face& face); // borrowed
    ~Documents();                   // closes all

    Document* Current() const { return Find(current); } // null when there is none
    Document* Find(long id) const;                      // null when it is not open
    Document* FindByPath(const std::string& path) const;
    Document* FindWorksheet() const;
    BWindow* WindowOf(long id) const;   // null when it is not open
    std::vector<Document*> All() const; // in the order of opening

    // Creates a document with a store from the face. Does not change the current one.
    Document& Open(const std::string& path, std::string_view text, bool worksheet);
    // Null for none. While the user is present, the document's window becomes the active one.
    void SetCurrent(const Document* document);
    void SetUserPresent(bool present); // initially true
    void FollowFrame();                // moves the windows to the frame that the face gives
    // Closed documents are no longer found. They and their windows are destroyed at once, or by DestroyClosed() when a
    // plug-in call that may use them is over.
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

// The file's bytes. nullopt, with the reason in '*error', when it cannot be read, is not a plain file, or is too long.
std::optional<std::string> ReadWholeFile(const std::string& path, std::string* error);

} // namespace wren
