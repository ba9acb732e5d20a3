#include "simulator/store/blocked_signals.h"

#include <cerrno>
#include <ctime>
#include <initializer_list>

namespace simulator
{

BlockedSignals::BlockedSignals()
{
    sigset_t pending;
    sigemptyset(&pending);
    sigemptyset(&consumed);
    sigaddset(&consumed, SIGXFSZ);
    sigaddset(&consumed, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &consumed, &callersMask);
    sigpending(&pending);
    for (const int number : {SIGXFSZ, SIGPIPE})
        if (sigismember(&pending, number) == 1)
            sigdelset(&consumed, number);
}

BlockedSignals::~BlockedSignals()
{
    const int error = errno;
    const timespec noWait{};
    while (sigtimedwait(&consumed, nullptr, &noWait) > 0 || errno == EINTR)
        ;
    pthread_sigmask(SIG_SETMASK, &callersMask, nullptr);
    errno = error;
}

} // namespace simulator
