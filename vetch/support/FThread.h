// Work handed to a thread of its own.
#pragma once

#include <cstddef>
#include <memory>

// Something that can be called once a thread is there for it.
class FunctionObject {
public:
    virtual ~FunctionObject() = default;
    virtual void operator()() const = 0;
    virtual size_t Size() const = 0; // of the concrete object, in bytes
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

// Runs a function object once on its own thread, then destroys the object and itself: make it with new and forget it.
//
// It works in the background: where there are more threads than cores it gives way to those that a user waits for. The
// thread is joinable inside: vetch::JoinThreads() waits for all that were started. An exception that escapes the
// function object ends the thread and is reported with vetch::Complain().
class FThread {
public:
    // Takes the function over and starts at once. When the system has no thread to give, that is reported once
    // (vetch::StartThread) and std::system_error is thrown; the function is destroyed and has not run. The arguments of
    // Run() are the caller's then, as they are after std::bad_alloc.
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

// Waits until every FThread started so far, and those they start, has ended. Call with no lock held, and from no
// FThread.
void JoinThreads();

// True when no FThread is running. Any thread.
bool ThreadsAreIdle();

// Called, on the threads concerned, whenever an FThread begins or has ended. It must be quick and not call back. Null
// for nobody; the former one may still be called once by a thread that is just ending.
void SetThreadsWatcher(void (*watcher)());

} // namespace vetch
