#include "vetch/app/Registry.h"

#include "vetch/app/LooperState.h"

#include <map>
#include <mutex>
#include <unordered_map>

namespace vetch {

namespace {

struct RegisteredHandler {
    BHandler* handler = nullptr;
    LooperToken looper = 0;
};

struct Registry {
    std::mutex mutex;
    HandlerToken lastHandler = kNoHandler;
    std::unordered_map<HandlerToken, RegisteredHandler> handlers;
    std::map<LooperToken, RegisteredLooper> loopers;
};

// Never destroyed: a thread may still end while the process does.
Registry& TheRegistry()
{
    static Registry* const registry = new Registry;
    return *registry;
}

RegisteredHandler Find(HandlerToken token)
{
    Registry& registry = TheRegistry();
    std::lock_guard guard(registry.mutex);
    const auto found = registry.handlers.find(token);
    return found == registry.handlers.end() ? RegisteredHandler() : found->second;
}

} // namespace

HandlerToken RegisterHandler(BHandler* handler)
{
    Registry& registry = TheRegistry();
    std::lock_guard guard(registry.mutex);
    const HandlerToken token = ++registry.lastHandler;
    registry.handlers[token] = {handler, 0};
    return token;
}

void UnregisterHandler(HandlerToken handler)
{
    Registry& registry = TheRegistry();
    std::lock_guard guard(registry.mutex);
    registry.handlers.erase(handler);
}

void SetLooperOf(HandlerToken handler, LooperToken looper)
{
    Registry& registry = TheRegistry();
    std::lock_guard guard(registry.mutex);
    if (const auto found = registry.handlers.find(handler); found != registry.handlers.end())
        found->second.looper = looper;
}

LooperToken LooperOf(HandlerToken handler)
{
    return Find(handler).looper;
}

BHandler* FindHandlerOf(HandlerToken handler, LooperToken looper)
{
    const RegisteredHandler found = Find(handler);
    return found.looper == looper ? found.handler : nullptr;
}

BHandler* FindHandler(HandlerToken handler)
{
    return Find(handler).handler;
}

void RegisterLooper(BLooper* looper, const std::shared_ptr<LooperState>& state)
{
    Registry& registry = TheRegistry();
    std::lock_guard guard(registry.mutex);
    registry.loopers[state->token] = {looper, state};
}

void UnregisterLooper(LooperToken looper)
{
    RegisteredLooper kept; // destroyed after the mutex is unlocked, with its state
    Registry& registry = TheRegistry();
    std::lock_guard guard(registry.mutex);
    if (const auto found = registry.loopers.find(looper); found != registry.loopers.end()) {
        kept = std::move(found->second);
        registry.loopers.erase(found);
    }
}

RegisteredLooper FindRegistered(LooperToken looper)
{
    Registry& registry = TheRegistry();
    std::lock_guard guard(registry.mutex);
    const auto found = registry.loopers.find(looper);
    return found == registry.loopers.end() ? RegisteredLooper() : found->second;
}

std::vector<RegisteredLooper> RegisteredLoopers()
{
    std::vector<RegisteredLooper> all;
    Registry& registry = TheRegistry();
    std::lock_guard guard(registry.mutex);
    for (const auto& [token, registered] : registry.loopers)
        all.push_back(registered);
    return all;
}

BLooper* FindLooper(LooperToken token)
{
    return FindRegistered(token).looper;
}

std::vector<LooperToken> Loopers()
{
    std::vector<LooperToken> tokens;
    for (const RegisteredLooper& registered : RegisteredLoopers())
        tokens.push_back(registered.state->token);
    return tokens;
}

status_t PostToHandler(HandlerToken handler, const BMessage& message)
{
    const RegisteredLooper registered = FindRegistered(LooperOf(handler));
    return registered.state ? registered.state->Post(message, handler) : B_ERROR;
}

} // namespace vetch
