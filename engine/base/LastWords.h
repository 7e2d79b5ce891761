// Exceptions that end the program.
#pragma once

#include "base/ExitStatus.h"

namespace lastWords {

// From now on an exception that nobody catches, or that may not be thrown where it is thrown, is
// told and ends the program with an exit status instead of a signal. What is unfinished goes.
void install();

// Tells about the exception that is being handled. It is no use to the caller beyond the status.
ExitStatus tellException();

// For those who cannot pass on that there is none: ends the program as an exception would.
[[noreturn]] void endWithoutMemory();

}    // namespace lastWords
