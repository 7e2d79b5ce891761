#include "sources/TerminalInput.h"

#include <termios.h>
#include <unistd.h>

namespace {

// Bytes are held back, dropped, changed or taken for signals.
bool changesBytes(const termios& line)
{
    constexpr tcflag_t local = ICANON | ISIG;
    constexpr tcflag_t input = ISTRIP | INLCR | IGNCR | ICRNL | IXON | PARMRK;
    return (line.c_lflag & local) != 0 || (line.c_iflag & input) != 0;
}

}    // namespace

std::string terminalHint(int descriptor)
{
    // Only the terminal from which the program was started tells who has it.
    if (::tcgetpgrp(descriptor) >= 0) {
        return "reading from this terminal; Ctrl-D at the start of a line ends the input";
    }
    termios line = {};
    if (::tcgetattr(descriptor, &line) != 0 || !changesBytes(line)) {
        return {};
    }
    const char* const name = ::ttyname(descriptor);
    const std::string device = name != nullptr ? name : "DEVICE";
    return device +
           " is not in raw mode, in which alone all bytes arrive as they were sent: name it "
           "serial:" +
           device + "?baud=RATE, or stty -F " + device + " raw -echo";
}
