#include "base/NewFile.h"

#include "base/Unfinished.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr int mostLinks = 40;

fs::path inItsDirectory(const fs::path& path, std::error_code& error)
{
    const fs::path directory = path.has_parent_path() ? path.parent_path() : ".";
    return fs::canonical(directory, error) / path.filename();
}

// Where links lead, whether there is a file or not. What a process has open has links too, but no
// other file can take the place of these.
fs::path followed(const std::string& name, std::error_code& error)
{
    std::error_code none;    // no link
    fs::path path = inItsDirectory(name, error);
    for (int links = 0; !error && fs::is_symlink(path, none); ++links) {
        if (links == mostLinks || path.native().starts_with("/proc/")) {
            error = std::make_error_code(std::errc::operation_not_permitted);
        } else {
            path = inItsDirectory(path.parent_path() / fs::read_symlink(path, none), error);
        }
    }
    return path;
}

}    // namespace

int NewFile::create(const std::string& wanted, mode_t mode)
{
    std::error_code error;
    const fs::path target = followed(wanted, error);
    errno = error.value();
    int descriptor = -1;
    static std::atomic<unsigned> number = 0;    // of many files, none is tried for twice
    while (descriptor < 0 && (errno == 0 || errno == EEXIST)) {
        name = target.parent_path() /
               (".rtcm2-" + std::to_string(::getpid()) + '-' + std::to_string(number++));
        descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    }
    if (descriptor < 0) {
        name.clear();
        return -1;
    }
    place = target;
    unfinished::add(name.c_str());
    return descriptor;
}

bool NewFile::takePlace()
{
    if (std::rename(name.c_str(), place.c_str()) != 0) {
        const int reason = errno;
        discard();
        errno = reason;
        return false;
    }
    forget();
    return true;
}

void NewFile::discard()
{
    if (exists()) {
        ::unlink(name.c_str());
        forget();
    }
}

void NewFile::forget()
{
    unfinished::strikeOff(name.c_str());
    name.clear();
}
