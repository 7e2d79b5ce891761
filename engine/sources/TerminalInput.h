// Terminals and serial lines as inputs.
#pragma once

#include <string>

// What somebody should know who gives this terminal as an input, by its open descriptor: that the
// program waits for what is typed, or that a serial line would change bytes, and what helps. Empty
// when there is nothing to say.
std::string terminalHint(int descriptor);
