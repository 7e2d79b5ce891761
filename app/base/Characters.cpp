#include "base/Characters.h"

#include "FieldInfo.h"

void readCharacters(const FieldInfo& field, const Message& message, std::string& characters)
{
    const unsigned count = field.getCount(&message);
    characters.resize(count);
    for (unsigned i = 0; i < count; ++i) {
        characters[i] = field.getValueUnchecked(&message, i).toCharacter();
    }
}

std::string_view withoutTerminator(std::string_view characters)
{
    if (!characters.empty() && characters.back() == '\0') {
        characters.remove_suffix(1);
    }
    return characters;
}

std::string_view upToFirstNul(std::string_view characters)
{
    return characters.substr(0, characters.find('\0'));
}

void appendUtf8(std::string& text, std::string_view characters)
{
    for (const char character : characters) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x80) {
            text += character;
        } else {
            text += static_cast<char>(0xC0 | code >> 6);
            text += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
}
