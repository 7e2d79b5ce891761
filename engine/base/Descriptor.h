// File descriptors as the system gives them.
#pragma once

#include <string_view>

// Opens something for every standard descriptor that is closed, or the next file that is opened
// would take its number and get what is meant for people. As before, standard input cannot be read
// then and standard output cannot be written; what goes to standard error is lost.
void occupyStandardDescriptors();

// Writes everything, however long the reader takes. False, with errno, when that fails.
[[nodiscard]] bool writeAll(int descriptor, std::string_view bytes);
