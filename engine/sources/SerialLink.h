// A serial line, set so that all bytes arrive as they were sent: serial:/dev/ttyUSB0?baud=38400
#pragma once

#include "sources/InputUrl.h"
#include "sources/Link.h"

#include <asio/io_context.hpp>
#include <asio/serial_port.hpp>

#include <array>

class SerialLink : public Link {
public:
    // Throws UrlError where the parameters name what no line can be set to.
    explicit SerialLink(const InputUrl& inputUrl);

    bool open(const Wait& wait, const Tell& tell) override;
    std::span<const std::uint8_t> receive(const Wait& wait, const Tell& tell) override;

private:
    asio::error_code setUp();

    InputUrl url;
    asio::io_context context;
    asio::serial_port line{context};
    std::array<std::uint8_t, 4096> buffer{};
};
