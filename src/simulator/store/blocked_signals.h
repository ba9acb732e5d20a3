// Keeps the signals of a failed write from the caller.

#pragma once

#include <csignal>

namespace simulator
{

// Writing beyond the limit of file sizes raises SIGXFSZ, and writing to a pipe without a reader SIGPIPE. Both
// end the process by default. While an object of this class exists, the calling thread gets neither of them,
// and the write only fails. The signal actions of the process stay as they are. errno is kept.
class BlockedSignals
{
public:
    BlockedSignals();
    ~BlockedSignals();
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

private:
    sigset_t consumed; // the signals that were not pending before
    sigset_t callersMask;
};

} // namespace simulator
