// Work on separate threads, in the background.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>

// A call that a thread makes later.
class FunctionObject {
public:
    virtual ~FunctionObject() = default;
    virtual void operator()() const = 0;
    virtual size_t Size() const = 0; // sizeof the concrete object
};

template <class C, class A>
class SingleParamMemberFunctionObject : public FunctionObject {
public:
    SingleParamMemberFunctionObject(void (C::*member)(A), C* object, A argument)
        : member(member), object(object), argument(argument)
    {
    }
    void operator()() const override { (object->*member)(argument); }
    size_t Size() const override { return sizeof(*this); }

private:
    void (C::*member)(A);
    C* object;
    A argument;
};

template <class C, class A, class B>
class TwoParamMemberFunctionObject : public FunctionObject {
public:
    TwoParamMemberFunctionObject(void (C::*member)(A, B), C* object, A first, B second)
        : member(member), object(object), first(first), second(second)
    {
    }
    void operator()() const override { (object->*member)(first, second); }
    size_t Size() const override { return sizeof(*this); }

private:
    void (C::*member)(A, B);
    C* object;
    A first;
    B second;
};

// Runs a function object once on a new thread, then destroys the object and itself. Make it with new and forget it.
//
// It has a lower priority than the thread that started it. Threads are joined by vetch::JoinThreads(). An exception
// that escapes the function object ends the thread and is reported with vetch::Complain().
class FThread {
public:
    // Takes ownership of the function and starts at once. If the system cannot start a thread, reports that once
    // (vetch::StartThread) and throws std::system_error; the function is destroyed without a call. Then, and after
    // std::bad_alloc, the caller still owns the arguments of Run().
    explicit FThread(FunctionObject* function);

    template <class C, class A>
    static void Run(void (C::*member)(A), C* object, A argument)
    {
        new FThread(new SingleParamMemberFunctionObject<C, A>(member, object, argument));
    }
    template <class C, class A, class B>
    static void Run(void (C::*member)(A, B), C* object, A first, B second)
    {
        new FThread(new TwoParamMemberFunctionObject<C, A, B>(member, object, first, second));
    }

private:
    ~FThread();
    void RunOnce();

    std::unique_ptr<FunctionObject> function;
};

namespace vetch {

// Runs 'body' on a thread that nobody joins, at the usual priority: for work that may take longer than a quit can wait.
// False when the system has no thread to give; nothing has run then, and the loss was reported (vetch::StartThread).
// Any thread.
bool StartDetached(const char* loss, std::function<void()> body);

// Whether no FThread and no thread of StartDetached() is running, and nothing that these threads were given is left.
// Any thread.
bool BackgroundIsIdle();

// Waits until BackgroundIsIdle(); false at the limit. Call it with no lock held, and not from one of these threads.
bool WaitForIdleBackground(std::chrono::milliseconds limit);

// Waits for all FThreads started so far, and for those that they start. Call it with no lock held, and not from an
// FThread.
void JoinThreads();

// True when no FThread is running. Any thread.
bool ThreadsAreIdle();

// 'watcher' is called on the thread concerned when an FThread begins or has ended. It must be quick and must not call
// back. Null removes it; a thread that is ending may still call the previous one once.
void SetThreadsWatcher(void (*watcher)());

} // namespace vetch
