// The state that a killed process leaves.
#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

// Runs the action in a child process; the action kills it with the function that it gets.
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
