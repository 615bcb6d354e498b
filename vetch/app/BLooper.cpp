#include "vetch/app/BLooper.h"

#include "vetch/app/Dispatch.h"
#include "vetch/app/Library.h"
#include "vetch/app/LooperState.h"
#include "vetch/app/Reaper.h"
#include "vetch/app/Registry.h"
#include "vetch/app/ThreadNumber.h"
#include "vetch/support/HeldLocks.h"

#include <cassert>

// Functions for any thread keep the state alive while they work: the looper may be destroyed meanwhile.

BLooper::BLooper(vetch::Service service) : state(std::make_shared<vetch::LooperState>(service))
{
    vetch::RegisterLooper(this, state);
    vetch::SetLooperOf(Token(), state->token);
    vetch::HandOverWhenMakerEnds();
}

BLooper::~BLooper()
{
    state->Close();
    vetch::UnregisterLooper(state->token);
}

thread_id BLooper::Run()
{
    const auto kept = state;
    const void* const forbidden = kept->ForbiddenLibrary();
    if (forbidden && kept->BelongsToCaller() && forbidden == vetch::LibraryOfClass(this))
        AcceptQuit();
    const auto dispatch = [this, token = kept->token](vetch::Envelope& envelope) {
        vetch::Dispatch(*this, token, envelope);
    };
    const thread_id thread = kept->Run(dispatch);
    if (thread < 0)
        kept->LeaveToReaper();
    return thread;
}

void BLooper::QuitUnrun()
{
    const auto kept = state;
    AcceptQuit();
    kept->LeaveToReaper();
}

void BLooper::Quit()
{
    assert(!vetch::OnDocumentThread() || vetch::HeldLocks() == 0);
    const auto kept = state;
    AcceptQuit();
    if (vetch::OnDocumentThread())
        vetch::Reaper::Destroy(this);
    else
        kept->LeaveToReaper();
}

void BLooper::AcceptQuit()
{
    const auto kept = state;
    if (!kept->AcceptQuit())
        return;
    QuitAccepted();
    kept->Announced();
}

void BLooper::QuitAccepted() {}

bool BLooper::QuitRequested()
{
    return true;
}

void BLooper::DispatchMessage(BMessage* message, BHandler* handler)
{
    handler->MessageReceived(message);
}

void BLooper::MessageReceived(BMessage* message)
{
    if (message->what != B_QUIT_REQUESTED)
        BHandler::MessageReceived(message);
    else if (QuitRequested())
        Quit();
}

BLooper* BLooper::Looper() const
{
    return const_cast<BLooper*>(this);
}

bool BLooper::Lock()
{
    const auto kept = state;
    return kept->Lock();
}

void BLooper::Unlock()
{
    const auto kept = state;
    kept->Unlock();
}

bool BLooper::IsLocked() const
{
    return state->IsLocked();
}

status_t BLooper::PostMessage(uint32 what)
{
    const BMessage message(what);
    return PostMessage(&message);
}

status_t BLooper::PostMessage(const BMessage* message)
{
    return PostMessage(message, nullptr);
}

status_t BLooper::PostMessage(const BMessage* message, BHandler* handler, BHandler*)
{
    const auto kept = state;
    return message ? kept->Post(*message, handler ? handler->Token() : Token()) : B_ERROR;
}

// Defined here, so that a handler does not include loopers.
void BHandler::SetLooper(BLooper* looper)
{
    vetch::SetLooperOf(token, looper ? looper->LooperToken() : 0);
}

vetch::LooperToken BLooper::LooperToken() const
{
    return state->token;
}

bool BLooper::HasRun() const
{
    return state->HasRun();
}

vetch::Service BLooper::ServedBy() const
{
    return state->service;
}
