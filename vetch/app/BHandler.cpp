#include "vetch/app/BHandler.h"

#include "vetch/app/BMessage.h"
#include "vetch/app/Registry.h"

BHandler::BHandler() : token(vetch::RegisterHandler(this)) {}

BHandler::~BHandler()
{
    vetch::UnregisterHandler(token);
}

void BHandler::MessageReceived(BMessage*) {}

BLooper* BHandler::Looper() const
{
    return vetch::FindLooper(vetch::LooperOf(token));
}

void BHandler::AddFilter(BMessageFilter* filter)
{
    if (filter)
        filters.emplace_back(filter);
}

void BHandler::NoticeReceived(uint32 what, const BMessage* message)
{
    BMessage copy = message ? *message : BMessage();
    copy.what = what;
    MessageReceived(&copy);
}
