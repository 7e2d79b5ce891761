// What may have been meant by a name that nothing has.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// The candidates that are spelt most like the name, or, when there are none, those that contain it;
// at most three, none of them twice.
std::vector<std::string> nearestNames(std::string_view name,
                                      const std::vector<std::string>& candidates);

// "did you mean A, B or C?"; empty when there is none.
std::string suggestion(const std::vector<std::string>& names);
