#include "base/Descriptor.h"

#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

void occupyStandardDescriptors()
{
    constexpr int useless[] = {O_WRONLY, O_RDONLY, O_WRONLY};
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        // The lowest free number is taken, and those below are occupied already.
        if (::fcntl(descriptor, F_GETFD) < 0 && ::open("/dev/null", useless[descriptor]) < 0) {
            ::_exit(1);
        }
    }
}

bool writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {    // somebody made it so for all who write to it
            pollfd waited = {.fd = descriptor, .events = POLLOUT, .revents = 0};
            ::poll(&waited, 1, -1);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}
