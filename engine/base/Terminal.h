// What people read, on a terminal or in a log.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The text with everything escaped as \xNN, byte by byte, that could steer a terminal or hide in
// it: control characters (line ends and tabs too), characters that are invisible or turn the
// direction of writing, and bytes that are no valid UTF-8. Everything else stays as it is.
std::string printable(std::string_view utf8);

// The columns of the terminal that a descriptor is; 0 where that is unknown.
std::size_t columnsOf(int descriptor);

// A line to standard error, begun with the program's name, in which everything is printable.
void tell(std::string_view text);
// A text of several lines as it is, but printable.
void tellLines(std::string_view text);
