// The bytes of a file or of standard input.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

// Whether the bytes of the input of this name, "-" being standard input, come from outside in their
// own time: from a pipe, a terminal or another device. Then they do not come a second time.
bool isLiveInput(const std::string& name);

class InputFile {
public:
    // "-" is standard input. Whether it could be opened is seen by the first read. A file that is
    // followed has no end: there its reader waits for what is written to it.
    explicit InputFile(std::string name, bool isFollowed = false);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // The next bytes, as soon as there are any; empty at the end, after a failure and when the
    // program is asked to end. Valid until the next call.
    std::span<const std::uint8_t> read();

    // Called a few times a second while a live input is waited for.
    void setIdle(std::function<void()> function) { idle = std::move(function); }

    // What went wrong, for people; empty when nothing did.
    const std::string& problem() const { return problemText; }

    // Name for messages.
    const std::string& name() const { return displayName; }

    // Whether bytes may arrive slowly (isLiveInput, or it is followed), so that results should be
    // shown at once.
    bool isLive() const { return live; }

    // Whether somebody types the bytes on a terminal.
    bool isTyped() const { return typed; }

    // What people should know before they wait for its bytes (TerminalInput.h); empty when nothing.
    const std::string& hint() const { return hintText; }

    // Bytes in the file; 0 when that is not known.
    std::uint64_t size() const { return fileSize; }

private:
    void open(const std::string& name);
    bool waitForBytes() const;
    bool waitAtEnd();
    void fail();

    std::string displayName;
    std::string problemText;
    std::string hintText;
    int descriptor = -1;
    bool live = false;
    bool followed;
    std::uint64_t position = 0;    // in a file that is followed
    std::function<void()> idle = [] {};
    bool typed = false;
    std::uint64_t fileSize = 0;
    std::vector<std::uint8_t> buffer;
};
