#include "vetch/interface/BButton.h"

BButton::BButton() : BControl(vetch::ViewDescription::Kind::Button) {}

void BButton::MessageReceived(BMessage* message)
{
    if (message->what == vetch::kPressed)
        Invoke();
    else
        BControl::MessageReceived(message);
}
