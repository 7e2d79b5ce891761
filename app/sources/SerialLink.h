// A serial line, set so that all bytes arrive as they were sent: serial:/dev/ttyUSB0?baud=38400
#pragma once

#include "base/OwnedDescriptor.h"
#include "sources/InputUrl.h"
#include "sources/Link.h"

#include <array>

struct termios;

class SerialLink : public Link {
public:
    // Throws UrlError where the parameters name what no line can be set to.
    explicit SerialLink(const InputUrl& inputUrl);

    bool open(const Wait& wait, const Tell& tell) override;
    std::span<const std::uint8_t> receive(const Wait& wait, const Tell& tell) override;

private:
    bool fail();
    bool setUp();
    bool isSet() const;
    void change(termios& line) const;

    InputUrl url;
    OwnedDescriptor device;
    std::array<std::uint8_t, 4096> buffer{};
};
