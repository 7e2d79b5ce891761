// Names as people write them.
#pragma once

#include <string>
#include <string_view>

// A display name as one word: runs of characters that are no letters or digits become one "_", none
// of them at either end.
std::string identifierOf(std::string_view displayName);

// Whether two texts are the same but for the case of ASCII letters.
bool sameLetters(std::string_view a, std::string_view b);

// Whether two names are the same but for the case of ASCII letters, or their identifiers are.
bool sameName(std::string_view a, std::string_view b);
