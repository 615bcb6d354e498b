// The text of a document without a view.
#pragma once

#include "wren/text/LineIndex.h"
#include "wren/text/TextStore.h"

#include <vector>

namespace wren {

class PlainText final : public TextStore {
public:
    long Length() const override { return static_cast<long>(text.size()); }
    char CharAt(long offset) const override { return offset >= 0 && offset < Length() ? text[offset] : '\0'; }
    void GetText(char* buffer, long offset, long length) const override;
    std::string Text() const override { return text; }
    long LineAt(long offset) const override;
    long LineStart(long line) const override;
    long LineEnd(long line) const override;
    Selection Selected() const override { return selection; }
    void Select(long start, long end) override;
    void SetText(std::string_view newText) override;
    void BeginUndo(Selection before, const std::string& name) override;
    void CloseUndo() override;
    void Insert(long offset, std::string_view inserted) override;
    void Delete(long offset, long length) override;
    std::optional<std::string> Undo() override;

    const LineIndex& Lines() const { return lines; }

    static constexpr const char* kEdit = "Edit"; // the name of an edit outside an undo group

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

    std::string text;
    Selection selection;
    mutable LineIndex lines;
    std::vector<Group> history;
    bool groupOpen = false; // the last group in the history still takes edits
};

} // namespace wren
