// The operations that differ between the editor's faces, called by the core.
#pragma once

#include "vetch/support/Geometry.h"
#include "vetch/support/Types.h"

#include <memory>
#include <string>

namespace wren {

class Document;
class TextStore;

// The mouse position in text view coordinates, and a bit for each button that is down.
struct MouseState {
    BPoint where;
    uint32 buttons = 0;
};

// Implemented by each face. Outlives the host. Document thread.
class Face {
public:
    virtual ~Face() = default;

    // An empty store for the text of a document that is being opened; PlainText unless the face shows the document.
    virtual std::unique_ptr<TextStore> MakeText(long document);

    virtual BRect DocumentWindowFrame() const = 0;
    virtual BRect TextBounds(const Document& document) const = 0;  // of the text view, in its own coordinates
    virtual BRect ButtonFrame(const Document& document) const = 0; // of the plug-in's button, in window coordinates

    // The left end of the baseline of the character at 'offset', on the screen.
    virtual BPoint PointAt(const Document& document, long offset) const = 0;
    virtual long OffsetAt(const Document& document, BPoint where) const = 0; // 'where' in text view coordinates

    virtual MouseState Mouse() const = 0;
    virtual bool InputPending() const = 0; // more keys are waiting: the plug-in then skips work

    // Opens a match of a lookup. Lines count from 1; 0 when the match has no line.
    virtual void OpenMatch(const std::string& path, long line) = 0;

    // Reports a problem that lost nothing.
    virtual void Warn(const std::string& text) = 0;
};

} // namespace wren
