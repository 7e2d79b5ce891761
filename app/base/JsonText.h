// JSON text that is written from keys prepared beforehand. The JSON library escapes strings and
// words floating-point numbers; everything else comes often and is simple.
#pragma once

#include <rapidjson/stringbuffer.h>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

// The name of a member, quoted, with the comma before and the colon behind it.
class JsonKey {
public:
    explicit JsonKey(std::string_view name);

private:
    friend class JsonText;
    // Most keys fit into one block, which can be copied without looking at the length.
    static constexpr std::size_t block = 32;

    std::string text;    // padded to a block
    std::size_t size;
};

// Every member and every element begins with a comma. The first one of an object or array is
// replaced by the bracket when that ends:
//
//     const std::size_t begin = text.begin();
//     for (...) { text.key(...); text.number(...); }
//     text.end(begin, '{', '}');
class JsonText {
public:
    JsonText() : buffer(2 * bytesAtOnce) {}

    std::size_t begin() const { return used; }
    void end(std::size_t begin, char open, char close)
    {
        if (used == begin) {
            put(open);
        } else {
            buffer[begin] = open;
        }
        put(close);
    }

    void key(const JsonKey& key)
    {
        char* target = room(key.text.size());
        if (key.text.size() == JsonKey::block) {
            std::memcpy(target, key.text.data(), JsonKey::block);
        } else {
            std::memcpy(target, key.text.data(), key.text.size());
        }
        used += key.size;
    }
    void comma() { put(','); }

    template <class Integer>
    void number(Integer value)
    {
        char* target = room(maxDigits);
        if (value >= 0 && value < 10) {
            *target = static_cast<char>('0' + value);
            ++used;
        } else {
            const char* stop = std::to_chars(target, target + maxDigits, value).ptr;
            used += static_cast<std::size_t>(stop - target);
        }
    }
    // What is no number in JSON becomes null.
    void real(double value);
    void null() { append("null"); }
    // Escapes what needs it; `utf8` must be valid.
    void string(std::string_view utf8);

    // As it is.
    void put(char character)
    {
        *room(1) = character;
        ++used;
    }
    void append(std::string_view text)
    {
        std::memcpy(room(text.size()), text.data(), text.size());
        used += text.size();
    }

    // Enough has come together to be written out.
    bool isLong() const { return used >= bytesAtOnce; }
    std::string_view view() const { return {buffer.data(), used}; }
    void clear() { used = 0; }

private:
    static constexpr std::size_t bytesAtOnce = 1 << 16;
    static constexpr std::size_t maxDigits = 20;    // and the sign

    char* room(std::size_t bytes)
    {
        if (buffer.size() - used < bytes) {
            buffer.resize(2 * buffer.size() + bytes);
        }
        return buffer.data() + used;
    }

    std::vector<char> buffer;
    std::size_t used = 0;
    rapidjson::StringBuffer scratch;
};
