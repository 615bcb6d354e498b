#include "vetch/support/BNotifier.h"

#include <algorithm>

BNotifier::~BNotifier()
{
    if (diedMeanwhile)
        *diedMeanwhile = true;
    for (const Watch& watch : watches)
        if (watch.receiver)
            std::erase(watch.receiver->watched, this);
}

// Defined here, so that a receiver does not include notifiers.
vetch::NoticeReceiver::~NoticeReceiver()
{
    for (BNotifier* notifier : watched)
        notifier->Forget(this);
}

void BNotifier::SendNotices(uint32 what, const BMessage* message)
{
    bool died = false;
    bool* const outer = diedMeanwhile;
    diedMeanwhile = &died;
    ++sending;
    const size_t count = watches.size();
    for (size_t i = 0; i < count; ++i) {
        const Watch watch = watches[i];
        if (!watch.receiver || watch.what != what)
            continue;
        watch.receiver->NoticeReceived(what, message);
        if (died) {
            if (outer)
                *outer = true;
            return;
        }
    }
    --sending;
    diedMeanwhile = outer;
    RemoveLeavers();
}

void BNotifier::StartWatchingBy(vetch::NoticeReceiver* receiver, uint32 what)
{
    if (!receiver)
        return;
    const auto same = [&](const Watch& watch) { return watch.receiver == receiver && watch.what == what; };
    if (std::any_of(watches.begin(), watches.end(), same))
        return;
    if (!Watches(receiver))
        receiver->watched.push_back(this);
    watches.push_back({receiver, what});
}

void BNotifier::StopWatchingBy(vetch::NoticeReceiver* receiver, uint32 what)
{
    if (!receiver || !Watches(receiver))
        return;
    for (Watch& watch : watches)
        if (watch.receiver == receiver && watch.what == what)
            watch.receiver = nullptr;
    if (!Watches(receiver))
        std::erase(receiver->watched, this);
    RemoveLeavers();
}

bool BNotifier::Watches(const vetch::NoticeReceiver* receiver) const
{
    return std::any_of(watches.begin(), watches.end(), [&](const Watch& watch) { return watch.receiver == receiver; });
}

void BNotifier::Forget(vetch::NoticeReceiver* receiver)
{
    for (Watch& watch : watches)
        if (watch.receiver == receiver)
            watch.receiver = nullptr;
    RemoveLeavers();
}

void BNotifier::RemoveLeavers()
{
    // SendNotices() calls under way hold indices into the list.
    if (sending == 0)
        std::erase_if(watches, [](const Watch& watch) { return !watch.receiver; });
}
