// How the fields of a kind are written as a JSON object: everything that is the same in all its
// messages is prepared once, above all the keys.
#pragma once

#include "base/Text.h"
#include "format/FieldPath.h"

#include <array>
#include <string>
#include <vector>

// Every member and every element begins with a comma; the first one of an object or an array is
// replaced by the bracket when that ends.
class JsonPlan {
public:
    JsonPlan() = default;
    explicit JsonPlan(const std::vector<ChosenField>& chosen);

    // Appends the object with the values of a record of the kind.
    void appendValues(Text& text, const void* record) const;
    // Appends the object with what they mean.
    void appendTexts(Text& text, const void* record) const;

private:
    enum class Shape : std::uint8_t { number, text, numbers, elements, real, quantity };

    // A member of the object.
    struct Member {
        const FieldModel* field;
        RTCM2_reader_s reader;
        Shape shape;
        std::string key;             // quoted, with the comma before and the colon behind it
        std::size_t elements = 0;    // index in `parts`
        // What coded values mean, as JSON strings.
        std::vector<std::pair<std::int64_t, std::string>> meanings{};

        // Null for a plain number.
        const std::string* meaningOf(std::int64_t value) const;
        char* putKey(char* out) const
        {
            std::memcpy(out, key.data(), key.size());
            return out + key.size();
        }
    };

    // What is needed of the members that are most: one plain number or quantity in every message
    // and a key that fits a block, which is copied without a look at its length.
    struct Quick {
        std::array<char, 32> key;
        std::uint16_t keyLength;
        std::uint16_t offset;
        std::uint8_t stored;
        // Both false: the member is none of these.
        bool isNumber;
        bool isQuantity;
    };

    Member memberFor(const ChosenField& chosen);
    static Quick quickOf(const Member& member);
    char* putValues(char* out, const void* record) const;
    char* putMember(char* out, const Member& member, const void* record) const;
    char* putElements(char* out, const Member& member, const void* record) const;
    std::size_t roomFor(const void* record) const;
    bool hasTexts() const;
    void appendTextsOf(Text& text, const Member& member, const void* record) const;
    void appendElementTexts(Text& text, const Member& member, const void* record) const;
    void appendMeanings(Text& text, const Member& member, const void* record) const;

    std::vector<Member> members;
    std::vector<Quick> quick;       // one for each member
    std::vector<JsonPlan> parts;    // of the elements
    std::size_t room = 2;           // what all values but texts, runs and elements need at most
};
