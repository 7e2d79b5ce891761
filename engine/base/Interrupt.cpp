#include "base/Interrupt.h"

#include "base/Unfinished.h"

#include <atomic>
#include <chrono>
#include <csignal>

namespace {

using Clock = std::chrono::steady_clock;

std::atomic<int> noted{0};    // number of the first signal
std::atomic<Clock::rep> notedAt{0};
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<Clock::rep>::is_always_lock_free,
              "a signal handler sets them");

// Some send a signal to a program and at once to its group: both are one.
bool isTheFirstOnce(int number)
{
    constexpr Clock::duration moment = std::chrono::milliseconds(200);
    const auto age = Clock::now().time_since_epoch() - Clock::duration(notedAt);
    return number == noted && age < moment;
}

void note(int number)
{
    int none = 0;
    if (noted.compare_exchange_strong(none, number)) {
        notedAt = Clock::now().time_since_epoch().count();
        return;
    }
    if (isTheFirstOnce(number)) {
        return;
    }
    unfinished::removeAll();
    std::signal(number, SIG_DFL);
    std::raise(number);    // ends the program as soon as this function is left
}

sigset_t signalsOfUsers()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signals, signal);
    }
    return signals;
}

bool isIgnored(int number)
{
    struct sigaction action = {};
    return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}    // namespace

namespace interrupt {

void install()
{
    // Without SA_RESTART: whoever waits for a pipe to be opened shall be woken up. One after the
    // other: a second signal does not come before the first one is noted.
    struct sigaction action = {};
    action.sa_handler = note;
    action.sa_mask = signalsOfUsers();
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    if (!isIgnored(SIGHUP)) {    // by nohup
        sigaction(SIGHUP, &action, nullptr);
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void leaveToFirstThread()
{
    const sigset_t signals = signalsOfUsers();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

bool requested()
{
    return noted != 0;
}

int number()
{
    return noted;
}

}    // namespace interrupt
