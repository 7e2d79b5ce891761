#include "sources/SerialLink.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>

namespace {

constexpr std::pair<int, speed_t> speeds[] = {
    {50, B50},           {75, B75},           {110, B110},         {134, B134},
    {150, B150},         {200, B200},         {300, B300},         {600, B600},
    {1200, B1200},       {1800, B1800},       {2400, B2400},       {4800, B4800},
    {9600, B9600},       {19200, B19200},     {38400, B38400},     {57600, B57600},
    {115200, B115200},   {230400, B230400},   {460800, B460800},   {500000, B500000},
    {576000, B576000},   {921600, B921600},   {1000000, B1000000}, {1500000, B1500000},
    {2000000, B2000000}, {3000000, B3000000}, {4000000, B4000000}};

// B0 where there is none.
speed_t speedOf(double baud)
{
    for (const auto& [number, speed] : speeds) {
        if (number == baud) {
            return speed;
        }
    }
    return B0;
}

void require(const InputUrl& url, const char* parameter, bool isGood, const std::string& expected)
{
    if (!isGood) {
        throw UrlError{"input serial:...: " + std::string(parameter) + "=" + url.text(parameter) +
                       " is wrong; expected " + expected};
    }
}

std::string allSpeeds()
{
    std::string text;
    for (const auto& [number, speed] : speeds) {
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
    require(url, "parity", parity == "none" || parity == "even" || parity == "odd",
            "none, even or odd");
    require(url, "bits", bits == static_cast<int>(bits), "5, 6, 7 or 8");
    require(url, "stop", stop == static_cast<int>(stop), "1 or 2");
    require(url, "baud", !url.parameters.contains("baud") || speedOf(url.number("baud", 0)) != B0,
            "one of " + allSpeeds());
}

bool SerialLink::fail()
{
    problemText = std::strerror(errno);
    return false;
}

bool SerialLink::open(const Wait& /*wait*/, const Tell& /*tell*/)
{
    device.close();
    device =
        OwnedDescriptor(::open(url.path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!device.isOpen()) {
        return fail();
    }
    if (::isatty(device.get()) != 1) {
        problemText = "it is no serial line";
        return false;
    }
    problemText.clear();
    return setUp();
}

// Nobody else may take bytes away meanwhile.
bool SerialLink::setUp()
{
    termios line = {};
    if (::tcgetattr(device.get(), &line) != 0) {
        return fail();
    }
    change(line);
    if (::tcsetattr(device.get(), TCSANOW, &line) != 0 || ::ioctl(device.get(), TIOCEXCL) != 0) {
        return fail();
    }
    if (!isSet()) {
        problemText = "it cannot be set to what the parameters say";
        return false;
    }
    return true;
}

void SerialLink::change(termios& line) const
{
    constexpr tcflag_t sizes[] = {CS5, CS6, CS7, CS8};
    const std::string parity = url.text("parity", "none");
    ::cfmakeraw(&line);
    line.c_iflag &= ~static_cast<tcflag_t>(IXOFF | IXANY | INPCK);
    line.c_cflag &= ~static_cast<tcflag_t>(CSIZE | CSTOPB | PARENB | PARODD | CRTSCTS);
    line.c_cflag |= CREAD | CLOCAL | sizes[static_cast<int>(url.number("bits", 8)) - 5];
    line.c_cflag |= url.number("stop", 1) == 2 ? CSTOPB : 0U;
    line.c_cflag |= parity == "none" ? 0U : PARENB | (parity == "odd" ? PARODD : 0U);
    line.c_cc[VMIN] = 1;
    line.c_cc[VTIME] = 0;
    if (const speed_t speed = speedOf(url.number("baud", 0)); speed != B0) {
        ::cfsetispeed(&line, speed);
        ::cfsetospeed(&line, speed);
    }
}

// The system calls it a success where it could do a part only.
bool SerialLink::isSet() const
{
    termios line = {};
    const speed_t speed = speedOf(url.number("baud", 0));
    return ::tcgetattr(device.get(), &line) == 0 && (line.c_lflag & ICANON) == 0 &&
           (speed == B0 || ::cfgetospeed(&line) == speed);
}

std::span<const std::uint8_t> SerialLink::receive(const Wait& wait, const Tell& /*tell*/)
{
    problemText.clear();
    while (wait.forDescriptor(device.get(), POLLIN, Wait::Clock::time_point::max()) ==
           Wait::End::ready) {
        const ssize_t count = ::read(device.get(), buffer.data(), buffer.size());
        if (count > 0) {
            return std::span(buffer).first(static_cast<std::size_t>(count));
        }
        if (count == 0) {
            problemText = "the device is gone";
            return {};
        }
        if (errno != EAGAIN && errno != EINTR) {
            fail();
            return {};
        }
    }
    return {};
}
