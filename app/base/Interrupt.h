// Ctrl-C asks for a clean end.
#pragma once

namespace interrupt {

// From now on SIGINT, SIGTERM and, unless it is ignored, SIGHUP only leave a note. A second one of
// them ends the program at once, even where it waits for a reader or writer, and removes what is
// unfinished. SIGPIPE and SIGXFSZ are ignored, so that a closed pipe and a file that may not grow
// show as failed writes.
void install();

bool requested();

// Of the signal that asked first; 0 when none did.
int number();

}    // namespace interrupt
