#include "InputFile.h"

#include "Interrupt.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::size_t chunkSize = 1 << 16;

}    // namespace

InputFile::InputFile(std::string name)
    : displayName(name == "-" ? "standard input" : name), buffer(chunkSize)
{
    open(name);
}

InputFile::~InputFile()
{
    if (descriptor > STDIN_FILENO) {
        ::close(descriptor);
    }
}

void InputFile::open(const std::string& name)
{
    descriptor = name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status = {};
    if (descriptor < 0 || ::fstat(descriptor, &status) != 0) {
        fail();
        return;
    }
    live = !S_ISREG(status.st_mode);
    fileSize = live ? 0 : static_cast<std::uint64_t>(status.st_size);
}

std::span<const std::uint8_t> InputFile::read()
{
    while (problemText.empty() && !interrupt::requested()) {
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count >= 0) {
            return std::span(buffer).first(static_cast<std::size_t>(count));
        }
        if (errno != EINTR) {
            fail();
        }
    }
    return {};
}

void InputFile::fail()
{
    problemText = "cannot read " + displayName + ": " + std::strerror(errno);
}
