#include "commands/encode/ObjectEnd.h"

std::size_t ObjectEnd::take(std::string_view characters)
{
    std::size_t taken = 0;
    while (taken < characters.size() && !reached && problemText == nullptr) {
        if (inString) {
            taken += takeString(characters.substr(taken));
        } else if (takeOutside(characters[taken])) {
            ++taken;
        }
    }
    return taken;
}

// A line end is a control character, too, so no string goes on in the next line.
std::size_t ObjectEnd::takeString(std::string_view characters)
{
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (static_cast<unsigned char>(characters[i]) < 0x20) {
            problemText = "a control character in a string; \\u and its number can stand for it";
            return i;
        }
        if (characters[i] == '"' && !escaped) {
            inString = false;
            return i + 1;
        }
        escaped = characters[i] == '\\' && !escaped;
    }
    return characters.size();
}

bool ObjectEnd::takeOutside(char character)
{
    switch (character) {
    case '"':
        inString = true;
        break;
    case '{':
    case '[':
        if (closing.size() == deepest) {
            problemText = "nested too deeply";
            return false;
        }
        closing.push_back(character == '{' ? '}' : ']');
        break;
    case '}':
    case ']':
        if (closing.back() != character) {
            problemText = "another bracket than the one that was opened";
            return false;
        }
        closing.pop_back();
        reached = closing.empty();
        break;
    default:
        break;
    }
    return true;
}
