#include "base/Interrupt.h"

#include <csignal>

namespace {

volatile std::sig_atomic_t noted = 0;

void note(int)
{
    noted = 1;
}

}    // namespace

namespace interrupt {

void install()
{
    struct sigaction action = {};
    action.sa_handler = note;
    // Whoever waits for input does so in poll(), which a signal always ends; a write that waits for
    // its reader must go on, or part of the output would be lost. After the first signal the
    // default action is in force again.
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

bool requested()
{
    return noted != 0;
}

}    // namespace interrupt
