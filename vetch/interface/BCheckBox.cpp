#include "vetch/interface/BCheckBox.h"

#include "vetch/interface/InterfaceFile.h"

BCheckBox::BCheckBox() : BControl(vetch::ViewDescription::Kind::CheckBox) {}

void BCheckBox::SetValue(bool on)
{
    value = on;
    if (Window() != nullptr)
        vetch::CurrentDisplay()->Apply(vetch::CheckChanged{Token(), value != 0});
}

void BCheckBox::SetValueGetter(BCheckBoxValueGetter* newGetter)
{
    getter.reset(newGetter);
    Refresh();
}

void BCheckBox::SetValueApplicator(BCheckBoxValueApplicator* newApplicator)
{
    applicator.reset(newApplicator);
}

void BCheckBox::MessageReceived(BMessage* message)
{
    int32 on = 0;
    if (message->what != vetch::kChecked || message->FindInt32("on", &on) != B_OK)
        return BControl::MessageReceived(message);
    SetValue(on != 0);
    if (applicator != nullptr)
        applicator->Invoke(this);
    Invoke();
}

void BCheckBox::NoticeReceived(uint32, const BMessage*)
{
    Refresh();
}

void BCheckBox::AttachedToWindow()
{
    BControl::AttachedToWindow();
    SetValue(value);
}

bool BCheckBox::SetUpFromNib(const vetch::NibControl& control)
{
    if (!BControl::SetUpFromNib(control))
        return false;
    if (getter == nullptr)
        SetValue(control.on);
    return true;
}

void BCheckBox::Refresh()
{
    if (getter != nullptr)
        SetValue(getter->Value());
}
