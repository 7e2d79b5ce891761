// The bytes of a file or of standard input.
#pragma once

#include "sources/Source.h"

#include <vector>

// Whether the file of this name, "-" being standard input, is a pipe, a terminal or another device.
bool comesSlowly(const std::string& name);

class FileSource : public Source {
public:
    // "-" is standard input. A file that is followed has no end: there its reader waits for what is
    // written to it.
    explicit FileSource(const std::string& name, bool isFollowed = false);
    ~FileSource() override;

    std::span<const std::uint8_t> read() override;
    void seek(std::uint64_t place, std::uint64_t end) override;

private:
    void open(const std::string& name);
    bool waitForBytes() const;
    bool waitAtEnd();
    void fail();

    int descriptor = -1;
    bool followed;
    bool isFile = false;
    std::uint64_t position = 0;    // in a file that is followed
    std::vector<std::uint8_t> buffer;
};
