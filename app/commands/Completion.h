// Shell completion, written from the declarations of the commands and from the format.
#pragma once

#include "format/FormatModel.h"

#include <CLI/CLI.hpp>

#include <map>
#include <string>
#include <vector>

// What may stand for a value that the declarations name, "TYPE": its words.
using CompletionWords = std::map<std::string, std::vector<std::string>>;

// Numbers and names of types, fields, and fields with sub-messages.
CompletionWords completionWords(const FormatModel& model);

std::string bashCompletion(const CLI::App& program, const CompletionWords& words);
std::string zshCompletion(const CLI::App& program, const CompletionWords& words);
