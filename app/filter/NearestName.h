// What may have been meant by a name that nothing has.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// The candidates that are most like the name, the nearest first, at most three; none of them twice.
// Candidates that have nothing in common with the name are not among them.
std::vector<std::string> nearestNames(std::string_view name,
                                      const std::vector<std::string>& candidates);

// "did you mean A, B or C?"; empty when there is none.
std::string suggestion(const std::vector<std::string>& names);
