// What the arguments of the program mean before they are parsed.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

// The arguments, without the program's own name, begun with the command that they name. Without
// one they mean `usual`, and nothing at all means help where standard input is a terminal. Throws
// UsageError for what looks like a command and is none.
std::vector<std::string> withCommand(const CLI::App& program, const std::string& usual,
                                     std::vector<std::string> arguments);
