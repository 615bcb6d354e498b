#include "vetch/interface/BTextControl.h"

#include "vetch/interface/InterfaceFile.h"

#include <algorithm>

BTextControlBase::BTextControlBase() : BControl(vetch::ViewDescription::Kind::Text) {}

BTextControl::BTextControl() = default;

void BTextControl::SetText(const char* newText)
{
    const std::string replacement = newText == nullptr ? "" : newText;
    if (replacement == text)
        return;
    text = replacement;
    if (Window() != nullptr)
        vetch::CurrentDisplay()->Apply(vetch::TextChanged{Token(), text});
    Select(TextLength(), TextLength());
}

void BTextControl::GetSelection(long* start, long* end) const
{
    *start = selectionStart;
    *end = selectionEnd;
}

void BTextControl::Select(long start, long end)
{
    selectionStart = std::clamp(start, 0L, TextLength());
    selectionEnd = std::clamp(end, selectionStart, TextLength());
    TellSelection();
}

void BTextControl::SetValueGetter(BTextControlValueGetter* newGetter)
{
    getter.reset(newGetter);
    Refresh();
}

void BTextControl::SetValueApplicator(BTextControlValueApplicator* newApplicator)
{
    applicator.reset(newApplicator);
}

void BTextControl::MessageReceived(BMessage* message)
{
    if (message->what != vetch::kTextEdited && message->what != vetch::kTextEntered)
        return BTextControlBase::MessageReceived(message);
    TakeEdit(*message);
    if (message->what == vetch::kTextEdited)
        return;
    if (applicator != nullptr)
        applicator->Invoke(this);
    Invoke();
}

void BTextControl::NoticeReceived(uint32, const BMessage*)
{
    Refresh();
}

void BTextControl::AttachedToWindow()
{
    BTextControlBase::AttachedToWindow();
    TellSelection();
}

bool BTextControl::SetUpFromNib(const vetch::NibControl& control)
{
    if (!BTextControlBase::SetUpFromNib(control))
        return false;
    multiLine = control.multiLine;
    if (getter == nullptr)
        SetText(control.text.c_str());
    return true;
}

void BTextControl::Describe(vetch::ViewDescription& description) const
{
    description.text = text;
    description.multiLine = multiLine;
}

void BTextControl::TakeEdit(const BMessage& message)
{
    const char* edited = nullptr;
    if (message.FindString("text", &edited) != B_OK)
        return;
    text = edited;
    vetch::CurrentDisplay()->Apply(vetch::TextChanged{Token(), text});
    int32 start = static_cast<int32>(text.size());
    int32 end = start;
    message.FindInt32("start", &start);
    message.FindInt32("end", &end);
    Select(start, end);
}

void BTextControl::Refresh()
{
    if (getter != nullptr)
        SetText(getter->Value());
}

void BTextControl::TellSelection() const
{
    if (Window() != nullptr)
        vetch::CurrentDisplay()->Apply(vetch::TextSelected{Token(), selectionStart, selectionEnd});
}

long BTextControl::TextLength() const
{
    return static_cast<long>(text.size());
}
