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

[[noreturn]] void end()
{
    ExitStatus status = ExitStatus::internalError;
    if (std::current_exception() != nullptr) {
        status = tellException();
    }
    unfinished::removeAll();
    ::_exit(static_cast<int>(status));
}

}    // namespace

void install()
{
    std::set_terminate(end);
}

ExitStatus tellException()
{
    try {
        throw;
    } catch (const std::bad_alloc&) {
        // Without needing any.
        const bool told = writeAll(STDERR_FILENO, "rtcm2: there is not enough memory\n");
        static_cast<void>(told);
        return ExitStatus::outOfMemory;
    } catch (const std::exception& error) {
        tell(std::string("mistake in the program: ") + error.what());
    } catch (...) {
        tell("mistake in the program");
    }
    return ExitStatus::internalError;
}

}    // namespace lastWords
