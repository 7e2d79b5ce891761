#include "base/Characters.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <QString>

namespace {

char* putUtf8(char* out, unsigned char code)
{
    if (code < 0x80) {
        *out++ = static_cast<char>(code);
    } else {
        *out++ = static_cast<char>(0xC0 | code >> 6);
        *out++ = static_cast<char>(0x80 | (code & 0x3F));
    }
    return out;
}

// The letter after the backslash of a control character; 'u' where it has no letter of its own.
char escapeLetter(unsigned char code)
{
    switch (code) {
    case '\b':
        return 'b';
    case '\f':
        return 'f';
    case '\n':
        return 'n';
    case '\r':
        return 'r';
    case '\t':
        return 't';
    default:
        return code < 0x20 ? 'u' : static_cast<char>(code);
    }
}

char* putEscape(char* out, unsigned char code)
{
    *out++ = '\\';
    *out++ = escapeLetter(code);
    if (out[-1] == 'u') {
        *out++ = '0';
        *out++ = '0';
        *out++ = static_cast<char>('0' + (code >> 4));
        *out++ = "0123456789ABCDEF"[code & 15];
    }
    return out;
}

}    // namespace

std::string_view upToFirstNul(std::string_view characters)
{
    return characters.substr(0, characters.find('\0'));
}

void appendUtf8(std::string& text, std::string_view characters)
{
    const std::size_t before = text.size();
    text.resize(before + 2 * characters.size());
    char* out = text.data() + before;
    for (const char character : characters) {
        out = putUtf8(out, static_cast<unsigned char>(character));
    }
    text.resize(static_cast<std::size_t>(out - text.data()));
}

std::string withoutNuls(std::string_view characters)
{
    std::string text;
    for (std::size_t nul = characters.find('\0'); nul != std::string_view::npos;
         nul = characters.find('\0')) {
        appendUtf8(text, characters.substr(0, nul));
        text += "\xE2\x90\x80";
        characters.remove_prefix(nul + 1);
    }
    appendUtf8(text, characters);
    return text;
}

char* putJson(char* out, std::string_view characters)
{
    for (const char character : characters) {
        const auto code = static_cast<unsigned char>(character);
        out =
            code < 0x20 || code == '"' || code == '\\' ? putEscape(out, code) : putUtf8(out, code);
    }
    return out;
}

std::string validUtf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size())).toStdString();
}

std::string jsonString(std::string_view utf8)
{
    const std::string valid = validUtf8(utf8);
    rapidjson::StringBuffer quoted;
    rapidjson::Writer<rapidjson::StringBuffer>(quoted).String(
        valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
    return {quoted.GetString(), quoted.GetSize()};
}
