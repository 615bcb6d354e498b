// What a process leaves that is killed in the middle of its work.
#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

// Has a process of its own do something, and killed after it.
template <class Action>
void DoAndBeKilled(const Action& action)
{
    const pid_t child = ::fork();
    if (child == 0) {
        action([] { ::kill(::getpid(), SIGKILL); });
        ::_exit(0);
    }
    int status;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
}
