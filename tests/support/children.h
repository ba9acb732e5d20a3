// Child processes of a test.

#pragma once

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <string>
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

// Returns how many expectations of the running test have failed.
inline int countFailures()
{
    const testing::TestResult& result = *testing::UnitTest::GetInstance()->current_test_info()->result();
    int failures = 0;
    for (int i = 0; i < result.total_part_count(); ++i)
        failures += result.GetTestPartResult(i).failed();
    return failures;
}

// Runs `work`, which calls the simulated unit of the file `unit`, in a child process that has not called it
// before. The test fails if an expectation of the child fails, which the child prints, or if the child takes
// more than a minute.
inline void runInChild(const std::string& unit, const std::function<void()>& work)
{
    std::fflush(nullptr);
    const int failuresBefore = countFailures();
    const pid_t child = startChild(
        [&]
        {
            alarm(60);
            setenv("QVAUX_UNIT", unit.c_str(), 1);
            work();
            std::fflush(nullptr);
            _exit(countFailures() > failuresBefore ? 1 : 0);
        });
    int status = -1;
    waitpid(child, &status, 0);
    if (WIFSIGNALED(status))
        ADD_FAILURE() << "signal " << WTERMSIG(status) << " ended the child process";
    else
        EXPECT_EQ(WEXITSTATUS(status), 0) << "an expectation of the child process failed";
}
