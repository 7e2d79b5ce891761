#include "viewer/document/Spool.h"

#include "base/Unfinished.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

namespace {

std::string pattern()
{
    std::error_code none;    // then the usual one
    const std::filesystem::path folder = std::filesystem::temp_directory_path(none);
    return (none ? std::filesystem::path("/tmp") : folder) / "rtcm2-view-XXXXXX";
}

}    // namespace

Spool::Spool() : name(pattern()), descriptor(::mkostemp(name.data(), O_CLOEXEC))
{
    if (descriptor < 0) {
        fail();
    } else {
        unfinished::add(name.c_str());
    }
}

Spool::~Spool()
{
    if (descriptor >= 0) {
        ::close(descriptor);
        ::unlink(name.c_str());
        unfinished::strikeOff(name.c_str());
    }
}

bool Spool::write(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty() && problemText.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            fail();
        }
    }
    return problemText.empty();
}

void Spool::fail()
{
    problemText = "cannot keep what comes in " + name + ": " + std::strerror(errno) +
                  "; TMPDIR can name a folder with more room";
}
