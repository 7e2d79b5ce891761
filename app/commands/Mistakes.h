// What is wrong with the arguments, for people.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

// For arguments that the library could not parse: what it says, and what may have been meant.
std::string mistakeOf(const CLI::App& program, const CLI::ParseError& reason);
