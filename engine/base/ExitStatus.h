// How the program ends. Documented in the help text, the man page and the README.
#pragma once

enum class ExitStatus : int {
    success = 0,
    nothingFound = 1,        // the inputs hold no message, or none that is chosen
    different = 1,           // compare: the inputs differ, as diff and cmp say it
    usage = 2,               // wrong option, argument or expression
    unreadable = 3,          // an input cannot be read
    unwritable = 4,          // the output cannot be written
    stoppedAtTrouble = 5,    // --on-error stop, and there was something to stop at
    refused = 6,             // something in the input could not be encoded
    outOfMemory = 7,
    internalError = 8,    // a mistake in the program itself
    interrupted = 130,    // ended by Ctrl-C; 128 and the number of the signal, if it was another
};
