// What a check found, for programs.
#pragma once

#include "check/InputCheck.h"
#include "commands/JsonWriter.h"

// An object. `age`: seconds since the last message, of an input that is waited for.
void writeJson(JsonWriter& json, const InputCheck& check, std::optional<double> age);
