// Ctrl-C asks for a clean end.
#pragma once

namespace interrupt {

// From now on SIGINT and SIGTERM only leave a note, a second one ends the program at once; SIGPIPE
// is ignored, so that a closed pipe shows as a failed write.
void install();

bool requested();

}    // namespace interrupt
