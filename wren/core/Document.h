// A text being edited.
#pragma once

#include "vetch/storage/EntryRef.h"
#include "wren/core/LineIndex.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wren {

struct Selection {
    long start = 0;
    long end = 0; // start for a caret

    bool operator==(const Selection&) const = default;
};

// Offsets and lengths are bytes; whatever lies outside the text is clamped to it. Document thread.
class Document {
public:
    // 'path' may be empty: a document without a file.
    Document(long id, const std::string& path, std::string text, bool worksheet);

    long Id() const { return id; }
    const EntryRef& Ref() const { return ref; } // empty without a file
    std::string Path() const { return ref.Path(); }
    bool IsWorksheet() const { return worksheet; }

    const std::string& Text() const { return text; }
    long Length() const { return static_cast<long>(text.size()); }

    // '\0' outside the text. Scanners call it for every character.
    char CharAt(long offset) const { return offset >= 0 && offset < Length() ? text[offset] : '\0'; }

    // buffer[i] becomes the byte at offset + i; bytes outside the text are left alone.
    void GetText(char* buffer, long offset, long length) const;

    long LineAt(long offset) const;
    long LineStart(long line) const;
    long LineEnd(long line) const; // before its "\n"
    const LineIndex& Lines() const { return lines; }

    Selection Selected() const { return selection; }
    void Select(long start, long end);

    void SetText(std::string newText); // selection at 0, nothing left to undo

    // Edits made until CloseUndo(), or until the next BeginUndo(), are undone as one, and the selection is then
    // 'before' again. An edit made with nothing open is undone alone, under the name kEdit.
    void BeginUndo(Selection before, const std::string& name);
    void CloseUndo();
    void Insert(long offset, std::string_view inserted); // a caret at 'offset' stays
    void Delete(long offset, long length);

    // Takes back the last undoable edit; its name, or nothing when there is none.
    std::optional<std::string> Undo();

    static constexpr const char* kEdit = "Edit";

private:
    struct Edit {
        long offset;
        std::string removed;
        std::string inserted;
    };
    struct Group {
        std::string name;
        Selection before;
        std::vector<Edit> edits;
    };

    long Clamp(long offset) const;
    void Replace(long offset, long length, std::string_view inserted);
    void Remember(Edit edit);

    const long id;
    const EntryRef ref;
    const bool worksheet;
    std::string text;
    Selection selection;
    mutable LineIndex lines;
    std::vector<Group> history;
    bool groupOpen = false; // the last group of the history still takes edits
};

} // namespace wren
