#include "wren/desktop/editor/CodeView.h"

#include <algorithm>

namespace wren {

// The document's way to the text of its view.
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

std::unique_ptr<TextStore> CodeView::MakeStore()
{
    return std::make_unique<Store>(self);
}

long CodeView::Store::Length() const
{
    return Alive() ? Alive()->Length() : 0;
}

char CodeView::Store::CharAt(long offset) const
{
    return Alive() ? Alive()->CharAt(offset) : '\0';
}

void CodeView::Store::GetText(char* buffer, long offset, long length) const
{
    const long start = std::clamp(offset, 0L, Length());
    const long end = length > Length() - offset ? Length() : offset + length;
    if (start < end)
        Alive()->Copy(buffer + (start - offset), start, end);
}

std::string CodeView::Store::Text() const
{
    return Alive() ? Alive()->All() : "";
}

long CodeView::Store::LineAt(long offset) const
{
    return Alive() ? (*view)->lines.LineAt(offset) : 0;
}

long CodeView::Store::LineStart(long line) const
{
    return Alive() ? (*view)->lines.LineStart(line) : 0;
}

long CodeView::Store::LineEnd(long line) const
{
    return Alive() ? (*view)->lines.LineEnd(line) : 0;
}

Selection CodeView::Store::Selected() const
{
    return Alive() ? Alive()->Selected() : Selection();
}

void CodeView::Store::Select(long start, long end)
{
    if (Alive())
        (*view)->ByStore([&] {
            folds::Reveal(*Alive(), std::clamp(end, 0L, Length()));
            Alive()->Select(start, end);
        });
}

void CodeView::Store::SetText(std::string_view text)
{
    if (Alive())
        (*view)->SetBytes(text);
}

void CodeView::Store::BeginUndo(Selection before, const std::string& name)
{
    if (Alive())
        (*view)->groups.Begin(before, name);
}

void CodeView::Store::CloseUndo()
{
    if (Alive())
        (*view)->groups.Close();
}

void CodeView::Store::Insert(long offset, std::string_view inserted)
{
    offset = std::clamp(offset, 0L, Length());
    if (Alive() && !inserted.empty())
        (*view)->ByStore([&] { (*view)->groups.Replace(offset, offset, inserted); });
}

void CodeView::Store::Delete(long offset, long length)
{
    const long start = std::clamp(offset, 0L, Length());
    const long end = length > Length() - offset ? Length() : std::clamp(offset + length, 0L, Length());
    if (Alive() && start < end)
        (*view)->ByStore([&] { (*view)->groups.Replace(start, end, ""); });
}

std::optional<std::string> CodeView::Store::Undo()
{
    std::optional<std::string> name;
    if (Alive())
        (*view)->ByStore([&] {
            name = (*view)->groups.Undo();
            (*view)->FollowEnds();
        });
    return name;
}

} // namespace wren
