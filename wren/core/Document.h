// A text being edited, and the file that it belongs to.
#pragma once

#include "vetch/storage/EntryRef.h"
#include "wren/text/TextEncoding.h"
#include "wren/text/TextStore.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace wren {

// Reads and edits its text through its store. Document thread.
class Document {
public:
    // 'path' may be empty: a document without a file.
    Document(long id, const std::string& path, std::unique_ptr<TextStore> text, bool worksheet);
    Document(Document&&) = default;
    ~Document();

    long Id() const { return id; }
    const EntryRef& Ref() const { return ref; } // empty without a file
    std::string Path() const { return ref.Path(); }
    void SetPath(const std::string& path) { ref = EntryRef(path.c_str()); } // it was saved under that name
    bool IsWorksheet() const { return worksheet; }

    // Of its file, for a face that asks: the text itself is UTF-8, or bytes.
    const TextEncoding& Encoding() const { return encoding; }
    void SetEncoding(const TextEncoding& now) { encoding = now; }

    TextStore& Store() { return *store; }
    const TextStore& Store() const { return *store; }

    std::string Text() const { return store->Text(); } // a copy
    std::string Text(long start, long end) const;      // a copy of [start, end), which is within the text
    long Length() const { return store->Length(); }
    char CharAt(long offset) const { return store->CharAt(offset); }
    void GetText(char* buffer, long offset, long length) const { store->GetText(buffer, offset, length); }
    long LineAt(long offset) const { return store->LineAt(offset); }
    long LineStart(long line) const { return store->LineStart(line); }
    long LineEnd(long line) const { return store->LineEnd(line); }
    Selection Selected() const { return store->Selected(); }

    void Select(long start, long end) { store->Select(start, end); }
    void SetText(std::string_view text) { store->SetText(text); }
    void BeginUndo(Selection before, const std::string& name) { store->BeginUndo(before, name); }
    void CloseUndo() { store->CloseUndo(); }
    void Insert(long offset, std::string_view inserted) { store->Insert(offset, inserted); }
    void Delete(long offset, long length) { store->Delete(offset, length); }
    std::optional<std::string> Undo() { return store->Undo(); }

private:
    const long id;
    EntryRef ref;
    const bool worksheet;
    TextEncoding encoding;
    std::unique_ptr<TextStore> store; // never null
};

} // namespace wren
