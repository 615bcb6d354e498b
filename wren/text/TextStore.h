// Stores the text of a document, its selection and its undo history.
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

// The core edits and reads a document through this. A face that shows the document provides its own store: its text
// component owns the text, and no second copy has to be kept in step.
//
// Offsets and lengths are bytes; values outside the text are clamped to it. Document thread.
class TextStore {
public:
    virtual ~TextStore() = default;

    virtual long Length() const = 0;
    virtual char CharAt(long offset) const = 0; // '\0' outside the text. Scanners call it for every character
    virtual void GetText(char* buffer, long offset, long length) const = 0; // keeps buffer bytes outside the text
    virtual std::string Text() const = 0;                                   // a copy of all of it

    virtual long LineAt(long offset) const = 0;
    virtual long LineStart(long line) const = 0; // the length when there is no such line
    virtual long LineEnd(long line) const = 0;   // before its "\n"

    virtual Selection Selected() const = 0;
    virtual void Select(long start, long end) = 0;

    virtual void SetText(std::string_view text) = 0; // selection at 0, undo history cleared

    // Edits until CloseUndo(), or until the next BeginUndo(), are undone as one; the selection is then 'before' again.
    // An edit outside a group is undone alone.
    virtual void BeginUndo(Selection before, const std::string& name) = 0;
    virtual void CloseUndo() = 0;
    virtual void Insert(long offset, std::string_view inserted) = 0; // a caret at 'offset' stays there
    virtual void Delete(long offset, long length) = 0;

    // Undoes the last edit; returns its name, or nullopt when there is nothing to undo.
    virtual std::optional<std::string> Undo() = 0;
};

} // namespace wren
