// A way on which bytes come, that may break and be made anew.
#pragma once

#include "sources/Wait.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>

class Link {
public:
    using Tell = std::function<void(const std::string& line)>;

    virtual ~Link() = default;
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    // Opens it, also for the second time. False when that failed or the program is asked to end.
    virtual bool open(const Wait& wait, const Tell& tell) = 0;

    // The next bytes, as soon as there are any, valid until the next call. None when it is broken
    // or at its end, or when the program is asked to end.
    virtual std::span<const std::uint8_t> receive(const Wait& wait, const Tell& tell) = 0;

    // Why the last call failed, for people; empty when it did not.
    const std::string& problem() const { return problemText; }
    // Whether the other end has sent all that it wanted to and said so.
    bool isAtEnd() const { return atEnd; }

protected:
    Link() = default;

    std::string problemText;
    bool atEnd = false;
};
