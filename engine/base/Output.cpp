#include "base/Output.h"

#include "base/Descriptor.h"
#include "base/Terminal.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::size_t bytesAtOnce = 1 << 16;
constexpr mode_t permissions = 0777;
constexpr mode_t permissionsOfNew = 0666;    // less what the user's mask takes

// As far as the system lets the user do so.
void makeLike(int descriptor, const struct stat& old)
{
    const bool sameOwner = ::fchown(descriptor, old.st_uid, old.st_gid) == 0;
    ::fchmod(descriptor, old.st_mode & (sameOwner ? ALLPERMS : permissions));
}

}    // namespace

Output::Output() : descriptor(STDOUT_FILENO), isTerminal(::isatty(STDOUT_FILENO) == 1) {}

Output::~Output()
{
    if (descriptor != STDOUT_FILENO) {
        ::close(descriptor);
    }
}

bool Output::open(const std::string& path)
{
    name = path;
    descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    struct stat old = {};
    if (descriptor < 0 && errno == ENOENT) {
        descriptor = newFile.create(path, permissionsOfNew);
    } else if (descriptor >= 0 && ::fstat(descriptor, &old) == 0 && S_ISREG(old.st_mode)) {
        replace(old);
    }
    check(descriptor >= 0);
    isTerminal = ::isatty(descriptor) == 1;
    return !failed();
}

// A file that may be written in a directory that may not be has to be written itself.
void Output::replace(const struct stat& old)
{
    const int created = newFile.create(name, old.st_mode & permissions);
    if (created >= 0) {
        makeLike(created, old);
        ::close(descriptor);
        descriptor = created;
    } else {
        const bool mayNot = errno == EACCES || errno == EPERM || errno == EROFS;
        check(mayNot && ::ftruncate(descriptor, 0) == 0);
    }
}

void Output::write(std::string_view text)
{
    if (buffer.size() + text.size() > bytesAtOnce) {
        flush();
    }
    if (failed()) {
        return;
    }
    buffer += text;
    if (buffer.size() > bytesAtOnce || (isTerminal && text.find('\n') != std::string::npos)) {
        flush();
    }
}

void Output::flush()
{
    if (!failed() && !buffer.empty()) {
        openAgain();
        if (!failed()) {
            check(writeAll(descriptor, buffer));
        }
        if (rests) {
            closeDescriptor();
        }
    }
    buffer.clear();
}

void Output::rest()
{
    flush();
    closeDescriptor();
    rests = true;
}

void Output::openAgain()
{
    if (rests) {
        const std::string& path = newFile.exists() ? newFile.path() : name;
        descriptor = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NOCTTY);
        check(descriptor >= 0);
    }
}

bool Output::close()
{
    flush();
    closeDescriptor();
    if (failed()) {
        newFile.discard();
    } else if (newFile.exists()) {
        check(newFile.takePlace());
    }
    return !failed();
}

// Some file systems tell only now that something was not written. Standard output is not for the
// program to close, but closing a copy brings that out, too.
void Output::closeDescriptor()
{
    const bool isStandard = descriptor == STDOUT_FILENO;
    const int closed = isStandard ? ::dup(descriptor) : std::exchange(descriptor, -1);
    const bool succeeded = closed < 0 || ::close(closed) == 0;
    if (!failed()) {
        check(succeeded);
    }
}

bool Output::discard()
{
    const bool isNewFile = newFile.exists();
    newFile.discard();
    return isNewFile;
}

bool Output::readerIsGone() const
{
    return error == EPIPE;
}

bool Output::wasInterrupted() const
{
    return error == EINTR;
}

std::string Output::problem() const
{
    return "cannot write " + name + ": " + std::strerror(error);
}

bool Output::wantsColour() const
{
    return isTerminal && std::getenv("NO_COLOR") == nullptr;
}

std::size_t Output::columns() const
{
    return isTerminal ? columnsOf(descriptor) : 0;
}

void Output::check(bool succeeded)
{
    if (!succeeded) {
        error = errno != 0 ? errno : EIO;
    }
}
