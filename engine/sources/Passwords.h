// Passwords in the names of inputs are taken out of the arguments before anything else is done with
// these, so that no list of processes and no text shows them.
#pragma once

#include <optional>
#include <string>

// Removes them from the arguments in place.
void takePasswords(int argc, char** argv);

// The name of an input without its password, which is remembered.
std::string takePassword(const std::string& name);

// That of an input, whose name has none any more, as it was written.
std::optional<std::string> takenPassword(const std::string& name);
