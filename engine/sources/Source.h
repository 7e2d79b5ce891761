// Where the bytes of an input come from.
#pragma once

#include "sources/Wait.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

class Source {
public:
    using Tell = std::function<void(const std::string& line)>;

    virtual ~Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    // The next bytes, as soon as there are any; empty at the end, after a failure and when reading
    // is asked to end. Valid until the next call. Whether the input could be opened is seen
    // by the first read.
    virtual std::span<const std::uint8_t> read() = 0;

    // Goes on with the byte at this place of the input. Those from `end` on are not expected to be
    // read, though they can be. Input that does not lie in a file has a problem then.
    virtual void seek(std::uint64_t place, std::uint64_t end);

    // Called a few times a second while a live input is waited for.
    void setIdle(std::function<void()> function) { wait.setIdle(std::move(function)); }
    // Asked now and then, by whoever reads, whether reading is to end though the program goes on.
    void setStop(std::function<bool()> question) { wait.setStop(std::move(question)); }
    bool isAskedToEnd() const { return wait.isAskedToEnd(); }
    // Hears of what happens to a live input that goes on all the same.
    void setTell(Tell function) { tell = std::move(function); }

    // What went wrong, for people; empty when nothing did.
    const std::string& problem() const { return problemText; }

    // Name for messages, without passwords.
    const std::string& name() const { return displayName; }

    // Whether bytes come in their own time, so that results should be shown at once.
    bool isLive() const { return live; }

    // Whether somebody types the bytes on a terminal.
    bool isTyped() const { return typed; }

    // What people should know before they wait for its bytes; empty when nothing.
    const std::string& hint() const { return hintText; }

    // Bytes that are expected to be read of it; 0 when that is not known.
    std::uint64_t size() const { return expectedSize; }

    // When the bytes that were read last came, in microseconds since 1970; nothing where they lay
    // in a file.
    const std::optional<std::int64_t>& received() const { return receiveTime; }

protected:
    explicit Source(std::string shownName) : displayName(std::move(shownName)) {}

    // Bytes of a live input have just come.
    void stampTime();

    std::string displayName;
    std::string problemText;
    std::string hintText;
    bool live = false;
    bool typed = false;
    std::uint64_t expectedSize = 0;
    Wait wait;
    Tell tell = [](const std::string&) {};

private:
    std::optional<std::int64_t> receiveTime;
};
