// Any callable as a function object for an FThread.
#pragma once

#include "vetch/support/FThread.h"

#include <functional>

class CallFunction : public FunctionObject {
public:
    explicit CallFunction(std::function<void()> function) : function(std::move(function)) {}
    void operator()() const override { function(); }
    size_t Size() const override { return sizeof(*this); }

private:
    std::function<void()> function;
};

inline void RunOnThread(std::function<void()> function)
{
    new FThread(new CallFunction(std::move(function)));
}
