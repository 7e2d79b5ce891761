// A file that keeps what comes only once, so that it can be read again. It is gone with the object.
#pragma once

#include <cstdint>
#include <span>
#include <string>

class Spool {
public:
    Spool();
    ~Spool();
    Spool(const Spool&) = delete;
    Spool& operator=(const Spool&) = delete;

    const std::string& path() const { return name; }
    // False when that failed.
    bool write(std::span<const std::uint8_t> bytes);
    // What failed, for people; empty when nothing did.
    const std::string& problem() const { return problemText; }

private:
    void fail();

    std::string name;
    int descriptor;
    std::string problemText;
};
