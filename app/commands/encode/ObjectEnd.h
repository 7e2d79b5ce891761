// Where a JSON object ends.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Looks at strings and brackets only, in one piece of text after the other, from the object's first
// bracket on.
class ObjectEnd {
public:
    explicit ObjectEnd(std::size_t depth) : deepest(depth) {}

    // Takes characters up to the object's end, if it is there, or to the first one that cannot
    // stand there. Returns how many were taken.
    std::size_t take(std::string_view characters);

    // Whether the object's last bracket was taken.
    bool isReached() const { return reached; }
    // Why the next character could not be taken; null if it could.
    const char* problem() const { return problemText; }

private:
    std::size_t takeString(std::string_view characters);
    bool takeOutside(char character);

    std::size_t deepest;
    std::string closing;    // the brackets that are still to come, the next one last
    bool inString = false;
    bool escaped = false;
    bool reached = false;
    const char* problemText = nullptr;
};
