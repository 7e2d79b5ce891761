#include "base/Output.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

Output::Output() : file(stdout) {}

Output::~Output()
{
    if (file != nullptr && file != stdout) {
        std::fclose(file);
    }
}

bool Output::open(const std::string& path)
{
    name = path;
    file = std::fopen(path.c_str(), "wb");
    check(file != nullptr);
    return !failed();
}

void Output::write(std::string_view text)
{
    if (!failed()) {
        check(std::fwrite(text.data(), 1, text.size(), file) == text.size());
    }
}

void Output::flush()
{
    if (!failed()) {
        check(std::fflush(file) == 0);
    }
}

bool Output::close()
{
    flush();
    if (file != nullptr && file != stdout) {
        const bool closed = std::fclose(file) == 0;
        file = nullptr;
        if (!failed()) {
            check(closed);
        }
    }
    return !failed();
}

bool Output::readerIsGone() const
{
    return error == EPIPE;
}

std::string Output::problem() const
{
    return "cannot write " + name + ": " + std::strerror(error);
}

bool Output::wantsColour() const
{
    return file != nullptr && ::isatty(::fileno(file)) == 1 && std::getenv("NO_COLOR") == nullptr;
}

void Output::check(bool succeeded)
{
    if (!succeeded) {
        error = errno != 0 ? errno : EIO;
    }
}
