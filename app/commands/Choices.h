// What may stand after an option, as far as its declaration tells.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

// The values that an option admits; empty when it admits any.
std::vector<std::string> choicesOf(const CLI::Option& option);

// Whether the option takes a value.
bool takesValue(const CLI::Option& option);

// Whether the option's value is a file.
bool takesFile(const CLI::Option& option);

// What people are told of its value: the choices, or what it is.
std::string valueOf(const CLI::Option& option);

// What people are told of it, with its default.
std::string aboutOption(const CLI::Option& option);

// The options of a command that can be written as such: no positional arguments.
std::vector<const CLI::Option*> namedOptionsOf(const CLI::App& command);

// The others.
std::vector<const CLI::Option*> positionalsOf(const CLI::App& command);

// The commands of a program that people are meant to use.
std::vector<const CLI::App*> commandsOf(const CLI::App& program);

// "-o" and "--output" of an option, as far as it has them.
std::vector<std::string> namesOf(const CLI::Option& option);

// The parts with the separator between them.
std::string joined(const std::vector<std::string>& parts, const char* separator);
