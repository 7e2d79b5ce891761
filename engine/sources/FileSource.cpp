#include "sources/FileSource.h"

#include "sources/TerminalInput.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::size_t chunkSize = 1 << 16;
constexpr double pauseAtEnd = 0.5;    // seconds

bool comesSlowly(const struct stat& status)
{
    return S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode) || S_ISCHR(status.st_mode);
}

}    // namespace

bool comesSlowly(const std::string& name)
{
    struct stat status = {};
    const bool known =
        name == "-" ? ::fstat(STDIN_FILENO, &status) == 0 : ::stat(name.c_str(), &status) == 0;
    return known && comesSlowly(status);
}

FileSource::FileSource(const std::string& name, bool isFollowed)
    : Source(name == "-" ? "standard input" : name), followed(isFollowed), buffer(chunkSize)
{
    open(name);
}

FileSource::~FileSource()
{
    if (descriptor > STDIN_FILENO) {
        ::close(descriptor);
    }
}

// Nothing is waited for here, such as the other end of a pipe: that would be no end of the program.
void FileSource::open(const std::string& name)
{
    descriptor = name == "-" ? STDIN_FILENO
                             : ::open(name.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat status = {};
    if (descriptor < 0 || ::fstat(descriptor, &status) != 0) {
        fail();
        return;
    }
    followed = followed && S_ISREG(status.st_mode);
    live = followed || comesSlowly(status);
    typed = live && ::isatty(descriptor) == 1;
    hintText = typed ? terminalHint(descriptor) : std::string();
    isFile = S_ISREG(status.st_mode);
    expectedSize = isFile ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::span<const std::uint8_t> FileSource::read()
{
    while (problemText.empty() && waitForBytes()) {
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count == 0 && followed) {
            if (!waitAtEnd()) {
                return {};
            }
            continue;
        }
        if (count >= 0) {
            position += static_cast<std::uint64_t>(count);
            if (live && count > 0) {
                stampTime();
            }
            return std::span(buffer).first(static_cast<std::size_t>(count));
        }
        if (errno != EINTR && errno != EAGAIN) {
            fail();
        }
    }
    return {};
}

void FileSource::seek(std::uint64_t place, std::uint64_t end)
{
    if (!problemText.empty()) {
        return;
    }
    const std::uint64_t size = expectedSize;
    position = std::min(place, size);
    if (!isFile) {
        Source::seek(place, end);
    } else if (::lseek(descriptor, static_cast<off_t>(position), SEEK_SET) < 0) {
        fail();
    }
    expectedSize = std::clamp(end, position, size) - position;
}

// False when the program is asked to end.
bool FileSource::waitForBytes() const
{
    pollfd waited = {.fd = descriptor, .events = POLLIN, .revents = 0};
    const auto hasSome = [&] {
        return !live || ::poll(&waited, 1, static_cast<int>(Wait::slice.count())) > 0;
    };
    return wait.until(hasSome) == Wait::End::done;
}

// A file can be read at any time, so this sleeps. False when it will not grow any more.
bool FileSource::waitAtEnd()
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0) {
        fail();
        return false;
    }
    if (static_cast<std::uint64_t>(status.st_size) < position) {
        problemText = "cannot follow " + displayName + ": it became shorter";
        return false;
    }
    return wait.pause(pauseAtEnd);
}

void FileSource::fail()
{
    problemText = "cannot read " + displayName + ": " + std::strerror(errno);
}
