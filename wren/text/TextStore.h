// What holds the text of a document, its selection and what can be undone.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace wren {

struct Selection {
    long start = 0;
    long end = 0; // start for a caret

    bool operator==(const Selection&) const = default;
};

// The core edits and reads a document through this, and a face brings the one that it shows: its text component then
// owns the text, and there is no second copy to keep the same.
//
// Offsets and lengths are bytes; whatever lies outside the text is clamped to it. Document thread.
class TextStore {
public:
    virtual ~TextStore() = default;

    virtual long Length() const = 0;
    virtual char CharAt(long offset) const = 0; // '\0' outside the text. Scanners call it for every character
    virtual void GetText(char* buffer, long offset, long length) const = 0; // bytes outside the text are left alone
    virtual std::string Text() const = 0;                                   // a copy of all of it

    virtual long LineAt(long offset) const = 0;
    virtual long LineStart(long line) const = 0; // the length when there is no such line
    virtual long LineEnd(long line) const = 0;   // before its "\n"

    virtual Selection Selected() const = 0;
    virtual void Select(long start, long end) = 0;

    virtual void SetText(std::string_view text) = 0; // selection at 0, nothing left to undo

    // Edits made until CloseUndo(), or until the next BeginUndo(), are undone as one, and the selection is then
    // 'before' again. An edit made with nothing open is undone alone.
    virtual void BeginUndo(Selection before, const std::string& name) = 0;
    virtual void CloseUndo() = 0;
    virtual void Insert(long offset, std::string_view inserted) = 0; // a caret at 'offset' stays
    virtual void Delete(long offset, long length) = 0;

    // Takes back the last undoable edit; its name, or nothing when there is none.
    virtual std::optional<std::string> Undo() = 0;
};

} // namespace wren
