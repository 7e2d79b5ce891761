// The manual page, written from the declarations of the commands.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

// In the man macros of roff.
std::string manualPage(const CLI::App& program, const std::string& version);
