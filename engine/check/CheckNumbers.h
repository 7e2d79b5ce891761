// Numbers in the texts of a check.
#pragma once

#include <string>

// Seconds as "50:12.6", with hours before that if there are any.
std::string minutesText(double seconds);
