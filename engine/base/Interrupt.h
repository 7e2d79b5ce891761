// Ctrl-C asks for a clean end.
#pragma once

namespace interrupt {

// From now on SIGINT, SIGTERM and, unless it is ignored, SIGHUP only leave a note. A second one of
// them ends the program at once, even where it waits for a reader or writer, and removes what is
// unfinished. SIGPIPE and SIGXFSZ are ignored, so that a closed pipe and a file that may not grow
// show as failed writes.
void install();

// For other threads than the first: these signals do not come to the calling thread, so that they
// are seen in their order.
void leaveToFirstThread();

bool requested();

// Of the signal that asked first; 0 when none did.
int number();

}    // namespace interrupt
