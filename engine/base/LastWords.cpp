#include "base/LastWords.h"

#include "base/Descriptor.h"
#include "base/Terminal.h"
#include "base/Unfinished.h"

#include <exception>
#include <new>
#include <string>

#include <unistd.h>

namespace lastWords {

namespace {

[[noreturn]] void end(ExitStatus status)
{
    unfinished::removeAll();
    ::_exit(static_cast<int>(status));
}

[[noreturn]] void endByException()
{
    end(std::current_exception() != nullptr ? tellException() : ExitStatus::internalError);
}

// Without needing any.
ExitStatus tellNoMemory()
{
    const bool told = writeAll(STDERR_FILENO, "rtcm2: there is not enough memory\n");
    static_cast<void>(told);    // there is nobody else to tell
    return ExitStatus::outOfMemory;
}

}    // namespace

void install()
{
    std::set_terminate(endByException);
}

ExitStatus tellException()
{
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return tellNoMemory();
    } catch (const std::exception& error) {
        tell(std::string("mistake in the program: ") + error.what());
    } catch (...) {
        tell("mistake in the program");
    }
    return ExitStatus::internalError;
}

void endWithoutMemory()
{
    end(tellNoMemory());
}

}    // namespace lastWords
