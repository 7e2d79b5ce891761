#include "base/Terminal.h"

#include "base/Descriptor.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include <sys/ioctl.h>
#include <unistd.h>

namespace {

bool isPlain(char byte)
{
    return byte >= 0x20 && byte < 0x7F;
}

// Of more than one byte in UTF-8.
bool isSteering(std::uint32_t code)
{
    return code < 0xA0 ||                           // second half of the control characters
           code == 0xAD || code == 0x61C ||         // soft hyphen, Arabic letter mark
           code == 0x180E ||                        // Mongolian vowel separator
           (code >= 0x200B && code <= 0x200F) ||    // of no width, marks of direction
           (code >= 0x2028 && code <= 0x202E) ||    // line ends, embeddings of direction
           (code >= 0x2060 && code <= 0x206F) ||    // of no width, isolates of direction
           code == 0xFEFF ||                        // of no width: byte order mark
           (code >= 0xFFF9 && code <= 0xFFFB) ||    // annotations
           (code >= 0xE0000 && code <= 0xE007F);    // tags
}

std::size_t lengthOf(unsigned char lead)
{
    return lead < 0xC2 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 1;
}

// Bytes of the character of more than one that the text begins with; 0 when it begins with none
// that may be shown.
std::size_t shownBytes(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lengthOf(lead);
    if (length == 1 || text.size() < length) {
        return 0;
    }
    std::uint32_t code = lead & (0x7FU >> length);
    for (const char next : text.substr(1, length - 1)) {
        const auto byte = static_cast<unsigned char>(next);
        if ((byte & 0xC0) != 0x80) {
            return 0;
        }
        code = code << 6 | (byte & 0x3FU);
    }
    constexpr std::uint32_t smallest[] = {0x80, 0x800, 0x10000};
    const bool isCharacter =
        code >= smallest[length - 2] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    return isCharacter && !isSteering(code) ? length : 0;
}

void appendEscape(std::string& text, char byte)
{
    constexpr char digits[] = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    text += "\\x";
    text += digits[value >> 4];
    text += digits[value & 0xF];
}

}    // namespace

std::string printable(std::string_view utf8)
{
    if (std::all_of(utf8.begin(), utf8.end(), isPlain)) {
        return std::string(utf8);
    }
    std::string text;
    while (!utf8.empty()) {
        const std::size_t shown = isPlain(utf8.front()) ? 1 : shownBytes(utf8);
        if (shown == 0) {
            appendEscape(text, utf8.front());
        }
        text += utf8.substr(0, shown);
        utf8.remove_prefix(std::max<std::size_t>(shown, 1));
    }
    return text;
}

std::size_t columnsOf(int descriptor)
{
    winsize window = {};
    return ::ioctl(descriptor, TIOCGWINSZ, &window) == 0 ? window.ws_col : 0;
}

void tell(std::string_view text)
{
    tellLines("rtcm2: " + printable(text));
}

void tellLines(std::string_view text)
{
    std::string lines;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        lines += printable(line) + '\n';
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    const bool told = writeAll(STDERR_FILENO, lines);
    static_cast<void>(told);    // there is nobody else to tell
}
