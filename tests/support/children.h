// Child processes of a test.

#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

// Starts a process that calls `work` and exits with status 0. Returns its process ID.
inline int startChild(const std::function<void()>& work)
{
    const pid_t child = fork();
    if (child != 0)
        return child;
    work();
    _exit(0);
}

// Waits for the processes to exit. Each must exit with status 0.
inline void waitForAll(const std::vector<int>& children)
{
    for (const int child : children)
    {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
}
