// A looper that keeps a log of its life and does what a test says.
#pragma once

#include "vetch/app/BLooper.h"

#include "vetch/app/Loop.h"

#include <algorithm>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

// Lines from any thread, in the order in which they were written. It outlives what writes to it.
class Log {
public:
    void Add(const std::string& line)
    {
        std::lock_guard guard(mutex);
        lines.push_back(line);
    }
    std::vector<std::string> Lines() const
    {
        std::lock_guard guard(mutex);
        return lines;
    }
    size_t Count(const std::string& line) const
    {
        std::lock_guard guard(mutex);
        return std::count(lines.begin(), lines.end(), line);
    }

private:
    mutable std::mutex mutex;
    std::vector<std::string> lines;
};

// Logs "<name> <code>" for each message, "<name> accepted" and "<name> destroyed" (with "elsewhere" when that happens
// off the document thread), and runs what was set for a code before it ran.
class TestLooper : public BLooper {
public:
    TestLooper(std::string name, Log& log, vetch::Service service = vetch::Service::OwnThread)
        : BLooper(service), name(std::move(name)), log(log)
    {
    }
    ~TestLooper() override { log.Add(name + (vetch::OnDocumentThread() ? " destroyed" : " destroyed elsewhere")); }

    void On(uint32 what, std::function<void(BMessage&)> action) { actions[what] = std::move(action); }
    bool agreesToQuit = true;

    bool QuitRequested() override { return agreesToQuit; }
    void MessageReceived(BMessage* message) override
    {
        if (message->what == B_QUIT_REQUESTED) {
            BLooper::MessageReceived(message);
            return;
        }
        log.Add(name + " " + std::to_string(message->what));
        if (const auto action = actions.find(message->what); action != actions.end())
            action->second(*message);
    }

protected:
    void QuitAccepted() override { log.Add(name + " accepted"); }

private:
    std::string name;
    Log& log;
    std::map<uint32, std::function<void(BMessage&)>> actions;
};
