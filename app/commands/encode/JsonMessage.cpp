#include "commands/encode/JsonMessage.h"

#include "framing/Frame.h"

#include <optional>
#include <string_view>

namespace {

using rapidjson::Value;

std::string_view textOf(const Value& value)
{
    return {value.GetString(), value.GetStringLength()};
}

// A key's value; null when the key is missing.
const Value* find(const Value& object, const char* key)
{
    const auto found = object.FindMember(key);
    return found != object.MemberEnd() ? &found->value : nullptr;
}

const char* typeName(const Value& value)
{
    switch (value.GetType()) {
    case rapidjson::kNullType:
        return "null";
    case rapidjson::kFalseType:
        return "false";
    case rapidjson::kTrueType:
        return "true";
    case rapidjson::kObjectType:
        return "an object";
    case rapidjson::kArrayType:
        return "an array";
    case rapidjson::kStringType:
        return "a text";
    case rapidjson::kNumberType:
        break;
    }
    return value.IsInt64() || value.IsUint64() ? "an integer" : "a number that is no integer";
}

std::string isNot(const Value& value, const char* expected)
{
    return std::string("is ") + typeName(value) + ", not " + expected;
}

std::optional<Integer> integerOf(const Value& value)
{
    if (value.IsUint64()) {
        return Integer{value.GetUint64()};
    }
    if (value.IsInt64()) {
        return Integer{static_cast<std::uint64_t>(value.GetInt64()), true};
    }
    return {};
}

// The characters of a text, a byte each; nothing when one has none. The text is valid UTF-8.
std::optional<std::size_t> readLatin1(std::string_view utf8, std::string& characters)
{
    characters.clear();
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80) {
            characters += utf8[i];
        } else if (lead < 0xC4) {
            const auto next = static_cast<unsigned char>(utf8[++i]);
            characters += static_cast<char>((lead & 0x03) << 6 | (next & 0x3F));
        } else {
            return characters.size();
        }
    }
    return {};
}

std::optional<unsigned> hexDigit(char digit)
{
    const auto position =
        std::string_view("0123456789abcdef")
            .find(digit >= 'A' && digit <= 'F' ? static_cast<char>(digit + 32) : digit);
    return position != std::string_view::npos
               ? std::optional<unsigned>(static_cast<unsigned>(position))
               : std::nullopt;
}

bool readHex(std::string_view digits, std::vector<std::uint8_t>& bytes)
{
    bytes.clear();
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        const auto high = hexDigit(digits[i]);
        const auto low = hexDigit(digits[i + 1]);
        if (!high || !low) {
            return false;
        }
        bytes.push_back(static_cast<std::uint8_t>(*high << 4 | *low));
    }
    return digits.size() % 2 == 0;
}

}    // namespace

std::span<const std::uint8_t> JsonMessage::encode(const Value& object)
{
    ownProblem.clear();
    packed = {};
    if (const Value* fields = find(object, "fields")) {
        encodeFields(object, *fields);
    } else {
        takeHex(object);
    }
    return packed;
}

std::string JsonMessage::problem() const
{
    return !ownProblem.empty() ? ownProblem : encoder->kindName() + ": " + encoder->problem();
}

void JsonMessage::encodeFields(const Value& object, const Value& fields)
{
    const Value* kind = find(object, "kind");
    if (kind == nullptr || !kind->IsString()) {
        ownProblem = kind == nullptr ? "kind: is missing" : "kind: " + isNot(*kind, "a text");
        return;
    }
    if (!encoder->begin(textOf(*kind))) {
        ownProblem = "kind: there is no message kind \"" + std::string(textOf(*kind)) + "\"";
        return;
    }
    if (!fields.IsObject()) {
        encoder->fail("fields: " + isNot(fields, "an object"));
        return;
    }
    setMembers(fields);
    const Value* fill = find(object, "fill");
    if (fill != nullptr &&
        (!fill->IsString() || textOf(*fill).find_first_not_of("01") != std::string_view::npos)) {
        encoder->fail(fill->IsString() ? "fill: has other characters than 0 and 1"
                                       : "fill: " + isNot(*fill, "a text"));
    }
    if (!encoder->failed()) {
        packed = encoder->finish(fill != nullptr ? std::optional(textOf(*fill)) : std::nullopt);
    }
}

void JsonMessage::takeHex(const Value& object)
{
    const Value* hex = find(object, "hex");
    if (hex == nullptr) {
        ownProblem = "fields: is missing";
    } else if (!hex->IsString()) {
        ownProblem = "hex: " + isNot(*hex, "a text");
    } else if (!readHex(textOf(*hex), hexBytes)) {
        ownProblem = "hex: is no row of bytes of two hexadecimal digits each";
    } else if (!framing::isWholeMessage(hexBytes)) {
        ownProblem = "hex: is no message with the preamble and the words that its header announces";
    } else {
        packed = hexBytes;
    }
}

void JsonMessage::setMembers(const Value& fields)
{
    for (auto field = fields.MemberBegin(); field != fields.MemberEnd() && !encoder->failed();
         ++field) {
        if (const auto member = encoder->member(textOf(field->name))) {
            setMember(*member, field->value);
        } else {
            encoder->failUnknown(textOf(field->name));
        }
    }
}

void JsonMessage::setMember(Member member, const Value& value)
{
    switch (member.shape) {
    case MessageEncoder::Shape::integer:
        return setInteger(member, value);
    case MessageEncoder::Shape::real:
        return setReal(member, value);
    case MessageEncoder::Shape::text:
        return setText(member, value);
    case MessageEncoder::Shape::bytes:
        return setBytes(member, value);
    case MessageEncoder::Shape::elements:
        return setElements(member, value);
    }
}

void JsonMessage::setInteger(Member member, const Value& value)
{
    if (const auto integer = integerOf(value)) {
        encoder->set(member, *integer);
    } else {
        encoder->fail(member, isNot(value, "an integer"));
    }
}

void JsonMessage::setReal(Member member, const Value& value)
{
    if (value.IsNumber()) {
        encoder->set(member, value.GetDouble());
    } else {
        encoder->fail(member, isNot(value, "a number"));
    }
}

void JsonMessage::setText(Member member, const Value& value)
{
    if (!value.IsString()) {
        encoder->fail(member, isNot(value, "a text"));
    } else if (const auto misfit = readLatin1(textOf(value), characters)) {
        encoder->fail(member, "character " + std::to_string(*misfit + 1) + " is above U+00FF");
    } else {
        encoder->setText(member, characters);
    }
}

void JsonMessage::setBytes(Member member, const Value& value)
{
    if (!value.IsArray()) {
        encoder->fail(member, isNot(value, "an array of integers"));
        return;
    }
    encoder->beginBytes(member);
    for (const Value& element : value.GetArray()) {
        if (const auto integer = integerOf(element)) {
            encoder->addByte(member, *integer);
        } else {
            encoder->fail(member, "an element " + isNot(element, "an integer"));
        }
    }
}

void JsonMessage::setElements(Member member, const Value& value)
{
    if (!value.IsArray()) {
        encoder->fail(member, isNot(value, "an array of objects"));
        return;
    }
    encoder->beginElements(member);
    for (const Value& element : value.GetArray()) {
        if (encoder->failed()) {
            return;
        }
        if (!element.IsObject()) {
            encoder->fail(member, "an element " + isNot(element, "an object"));
            return;
        }
        encoder->beginElement(member);
        setMembers(element);
        encoder->endElement();
    }
}
