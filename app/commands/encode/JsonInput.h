// The JSON objects of an input, one after another: one a line, in an array, or simply in a row.
#pragma once

#include <rapidjson/document.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

class Source;

// Keeps one object at a time in memory, and of an object that is too long or too deep only what
// shows that it is. After a mistake in an object reading goes on at the first line behind the
// object's first one that begins with a bracket, no further to the right than the object does, so
// that neither what is missing in one object costs another nor parts of it are taken for objects;
// where a whole object has no such line, behind it. As long objects cannot be nested deeply and no
// line begins inside a string, a character is read again a few dozen times at worst.
class JsonInput {
public:
    static constexpr std::size_t longest = 1 << 20;    // bytes of an object
    static constexpr std::size_t deepest = 32;         // brackets around each other in it

    // The file must outlive the reader.
    explicit JsonInput(Source& input) : file(input) {}

    // Goes to the next object or mistake. False at the end of the input.
    [[nodiscard]] bool next();

    // What is wrong instead of an object, with its place; empty when there is an object.
    const std::string& problem() const { return problemText; }
    // The object, until the next call.
    const rapidjson::Value& object() const { return document; }
    // The line in which it begins, from 1.
    std::uint64_t line() const { return beginLine; }
    // Bytes of the input that have been read.
    std::uint64_t bytesRead() const { return dropped + text.size(); }

private:
    // Line and column of a character, both from 1.
    struct Place {
        std::uint64_t line = 1;
        std::uint64_t column = 1;

        void pass(std::string_view characters);
    };
    // Whether what comes next stands in an array. After a mistake nobody knows.
    enum class Array { outside, inside, unknown };

    bool hasMore();
    void goTo(std::size_t target);
    bool findObject();
    bool isPunctuation(char character);
    const char* findEnd();
    void parse();
    void complain(Place where, std::string_view reason);
    void goOn(std::uint64_t column, std::uint64_t end);

    Source& file;
    bool ended = false;
    std::uint64_t dropped = 0;    // bytes of the input before the text
    std::string text;             // what was read and may still be needed
    std::size_t begin = 0;        // from here on it is
    std::size_t at = 0;           // what comes next
    Place place;                  // of `begin`
    Array array = Array::outside;

    rapidjson::MemoryPoolAllocator<> pool;
    rapidjson::Document document{&pool};
    std::string problemText;
    std::uint64_t beginLine = 0;
};
