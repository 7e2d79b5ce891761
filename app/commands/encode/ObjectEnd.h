// Where a JSON object ends.
#pragma once

#include <cstddef>
#include <string>

// Looks at strings and brackets only, a character after the other, from the object's first bracket
// on.
class ObjectEnd {
public:
    explicit ObjectEnd(std::size_t depth) : deepest(depth) {}

    // False when the object cannot go on like this; problem() then says why.
    bool take(char character)
    {
        if (inString) {
            return takeInString(character);
        }
        switch (character) {
        case '"':
            inString = true;
            return true;
        case '{':
            return open('}');
        case '[':
            return open(']');
        case '}':
        case ']':
            return close(character);
        default:
            return true;
        }
    }

    // Whether the last bracket was that of the object.
    bool isReached() const { return closing.empty(); }
    const char* problem() const { return problemText; }

private:
    bool fail(const char* reason)
    {
        problemText = reason;
        return false;
    }
    // A line end is a control character, too, so no string goes on in another line.
    bool takeInString(char character)
    {
        if (static_cast<unsigned char>(character) < 0x20) {
            return fail("a control character in a string, which has to be written as \\u and its "
                        "number");
        }
        inString = escaped || character != '"';
        escaped = !escaped && character == '\\';
        return true;
    }
    bool open(char closingBracket)
    {
        if (closing.size() == deepest) {
            return fail("nested too deeply");
        }
        closing.push_back(closingBracket);
        return true;
    }
    bool close(char character)
    {
        if (closing.back() != character) {
            return fail("another bracket than the one that was opened");
        }
        closing.pop_back();
        return true;
    }

    std::size_t deepest;
    std::string closing;    // the brackets that are still to come, the next one last
    bool inString = false;
    bool escaped = false;
    const char* problemText = nullptr;
};
