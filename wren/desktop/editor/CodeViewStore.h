// The document's way to the text of its view.
#pragma once

#include "wren/desktop/editor/CodeView.h"

namespace wren {

class CodeView::Store final : public TextStore {
public:
    explicit Store(std::shared_ptr<CodeView*> view) : view(std::move(view)) {}

    long Length() const override;
    char CharAt(long offset) const override;
    void GetText(char* buffer, long offset, long length) const override;
    std::string Text() const override;
    long LineAt(long offset) const override;
    long LineStart(long line) const override;
    long LineEnd(long line) const override;
    Selection Selected() const override;
    void Select(long start, long end) override;
    void SetText(std::string_view text) override;
    void BeginUndo(Selection before, const std::string& name) override;
    void CloseUndo() override;
    void Insert(long offset, std::string_view inserted) override;
    void Delete(long offset, long length) override;
    std::optional<std::string> Undo() override;

private:
    const ViewText* Alive() const { return *view == nullptr ? nullptr : &(*view)->text; }

    const std::shared_ptr<CodeView*> view; // null inside once the view is gone
};

} // namespace wren
