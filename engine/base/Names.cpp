#include "base/Names.h"

#include <algorithm>
#include <cctype>

namespace {

bool isWordCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0;
}

char lower(char c)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

}    // namespace

std::string identifierOf(std::string_view displayName)
{
    std::string identifier;
    for (const char c : displayName) {
        if (isWordCharacter(c)) {
            identifier += c;
        } else if (!identifier.empty() && identifier.back() != '_') {
            identifier += '_';
        }
    }
    if (!identifier.empty() && identifier.back() == '_') {
        identifier.pop_back();
    }
    return identifier;
}

bool sameLetters(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

bool sameName(std::string_view a, std::string_view b)
{
    return sameLetters(a, b) || sameLetters(identifierOf(a), identifierOf(b));
}
