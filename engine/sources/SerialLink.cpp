#include "sources/SerialLink.h"

#include "sources/Operation.h"

#include <asio/buffer.hpp>

#include <algorithm>
#include <iterator>

#include <sys/ioctl.h>
#include <termios.h>

namespace {

constexpr unsigned speeds[] = {50,     75,      110,     134,     150,     200,    300,
                               600,    1200,    1800,    2400,    4800,    9600,   19200,
                               38400,  57600,   115200,  230400,  460800,  500000, 576000,
                               921600, 1000000, 1500000, 2000000, 3000000, 4000000};

// What Asio has no option for. A byte that is damaged or has the wrong parity is a byte all the
// same: without it, those behind it would not be where they belong.
struct AllBytes {
    unsigned speed;    // 0 leaves it as it is

    void store(termios& line, asio::error_code&) const
    {
        line.c_iflag &= ~static_cast<tcflag_t>(IGNPAR | INPCK | IXANY);
        if (speed != 0) {
            ::cfsetspeed(&line, speed);    // which takes the number as it is
        }
    }

    // The system calls it a success where it could do a part only.
    void load(const termios& line, asio::error_code& error) const
    {
        termios wanted = line;
        store(wanted, error);
        if ((line.c_lflag & ICANON) != 0 || ::cfgetospeed(&line) != ::cfgetospeed(&wanted)) {
            error = asio::error::operation_not_supported;
        }
    }
};

std::string allSpeeds()
{
    std::string text;
    for (const unsigned number : speeds) {
        text += (text.empty() ? "" : ", ") + std::to_string(number);
    }
    return text;
}

}    // namespace

SerialLink::SerialLink(const InputUrl& inputUrl) : url(inputUrl)
{
    const std::string parity = url.text("parity", "none");
    const double bits = url.number("bits", 8);
    const double stop = url.number("stop", 1);
    url.require("parity", parity == "none" || parity == "even" || parity == "odd",
                "none, even or odd");
    url.require("bits", bits == static_cast<int>(bits), "5, 6, 7 or 8");
    url.require("stop", stop == static_cast<int>(stop), "1 or 2");
    const double baud = url.number("baud", speeds[0]);
    url.require("baud", std::find(std::begin(speeds), std::end(speeds), baud) != std::end(speeds),
                "one of " + allSpeeds());
}

bool SerialLink::open(const Wait& /*wait*/, const Tell& /*tell*/)
{
    asio::error_code error;
    line.close(error);
    line.open(url.path, error);
    if (!error) {
        error = setUp();
    }
    problemText = error.value() == ENOTTY ? "it is no serial line"
                  : error == asio::error::operation_not_supported
                      ? "it cannot be set to what the parameters say"
                      : error.message();
    return !error;
}

// Raw it is from the beginning. Nobody else may take bytes away meanwhile.
asio::error_code SerialLink::setUp()
{
    using Base = asio::serial_port_base;
    const std::string parity = url.text("parity");
    AllBytes allBytes{static_cast<unsigned>(url.number("baud", 0))};
    asio::error_code error;
    const auto set = [&](const auto& option) {
        if (!error) {
            line.set_option(option, error);
        }
    };
    set(Base::character_size(static_cast<unsigned>(url.number("bits", 8))));
    set(Base::stop_bits(url.number("stop", 1) == 2 ? Base::stop_bits::two : Base::stop_bits::one));
    set(Base::parity(parity == "even"  ? Base::parity::even
                     : parity == "odd" ? Base::parity::odd
                                       : Base::parity::none));
    set(Base::flow_control(Base::flow_control::none));
    set(allBytes);
    if (!error) {
        line.get_option(allBytes, error);
    }
    if (!error && ::ioctl(line.native_handle(), TIOCEXCL) != 0) {
        error = {errno, asio::system_category()};
    }
    return error;
}

std::span<const std::uint8_t> SerialLink::receive(const Wait& wait, const Tell& /*tell*/)
{
    const auto begin = [&](auto done) { line.async_read_some(asio::buffer(buffer), done); };
    const IoResult result = finish(context, line, wait, 0, begin);
    problemText = result.error == asio::error::eof ? "the device is gone" : result.problem();
    return std::span(buffer).first(result.bytes);
}
