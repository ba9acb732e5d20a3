// Suppresses the signals that a failed write raises.

#pragma once

#include <csignal>

namespace simulator
{

// Writing beyond the file size limit raises SIGXFSZ, and writing to a pipe without a reader raises SIGPIPE.
// Both terminate the process by default. While an object of this class exists, neither is delivered to the
// calling thread, and the write just fails. The signal actions of the process do not change. Preserves errno.
class BlockedSignals
{
public:
    BlockedSignals();
    ~BlockedSignals();
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

private:
    sigset_t consumed; // the signals to discard: those that were not pending before
    sigset_t callersMask;
};

} // namespace simulator
