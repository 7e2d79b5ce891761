// What a check found, for people.
#pragma once

#include "check/InputCheck.h"

// "OK", "WARNING", "CRITICAL"; "UNKNOWN" where there are no messages.
const char* verdictText(Severity severity, std::uint64_t messages);
const char* nameOf(Severity severity);

// "OK: station 417, 105 messages in 2:55.8, none lost"
std::string verdictLine(const InputCheck& check);

// "warning: message 57, byte 2041, 50:12.6: ..."
std::string lineOf(const Finding& problem);

// `age`: seconds since the last message, of an input that is waited for.
std::string checkText(const InputCheck& check, std::optional<double> age);
