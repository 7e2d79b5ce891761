// Shell completion, written from the declarations of the commands.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

std::string bashCompletion(const CLI::App& program);
std::string zshCompletion(const CLI::App& program);
