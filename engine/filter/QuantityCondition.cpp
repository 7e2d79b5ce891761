#include "filter/QuantityCondition.h"

#include "filter/Comparing.h"
#include "filter/ExpressionError.h"
#include "format/FieldText.h"

#include <algorithm>
#include <charconv>

namespace where {

namespace {

// Nothing where the field is absent or says that there is none.
std::optional<RTCM2_decimal_s> valueOf(const FieldModel& quantity, const void* record)
{
    RTCM2_decimal_s value;
    const bool hasValue =
        quantity.isPresent(record) &&
        RTCM2_reader_quantity(&*quantity.quantity, record, &value) == RTCM2_ACCESS_DONE;
    return hasValue ? std::optional(value) : std::nullopt;
}

// The number with the point moved for each number of decimals that values may have.
std::vector<Number> numbersFor(const RTCM2_quantity_s& quantity, const std::string& text)
{
    std::vector<Number> numbers;
    for (std::uint32_t i = 0; i < quantity.factor_count; ++i) {
        while (numbers.size() <= quantity.factors[i].decimals) {
            numbers.push_back(*Number::parse(text, static_cast<unsigned>(numbers.size())));
        }
    }
    return numbers;
}

Condition scaledCondition(const FieldModel& quantity, const SyntaxNode& syntax)
{
    if (!syntax.value.number) {
        throw Problem{syntax.value.place, "the values of '" + quantity.name + "' are numbers",
                      "expected a number; a comparison of two fields is not possible"};
    }
    requireSignForNumbers(syntax);
    return {.test = [&quantity, comparison = syntax.sign.comparison,
                     numbers = numbersFor(*quantity.row->quantity, syntax.value.text)](
                        const Subject& subject) {
        const std::optional<RTCM2_decimal_s> value = valueOf(quantity, subject.record);
        return value && satisfies(comparison, numbers[value->decimals].orderOf(value->digits));
    }};
}

std::string inLowerCase(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return result;
}

std::string nameOf(const FieldModel& satellites, const RTCM2_system_s* system, std::int64_t number)
{
    const RTCM2_decimal_s value{number, 0};
    char name[RTCM2_QUANTITY_ROOM];
    return {name, RTCM2_quantity_text(satellites.row->quantity, system, &value, name)};
}

// Whether a satellite of any system, or of an unknown one, has the name.
bool isSatellite(const FieldModel& satellites, const std::string& lowerCase)
{
    std::int64_t number = 0;
    const std::size_t digits = std::min(lowerCase.find_first_of("0123456789"), lowerCase.size());
    std::from_chars(lowerCase.data() + digits, lowerCase.data() + lowerCase.size(), number);
    bool found = nameOf(satellites, nullptr, number) == lowerCase;
    for (std::int32_t i = 0; i < RTCM2_system_count(); ++i) {
        found |= inLowerCase(nameOf(satellites, RTCM2_system(i), number)) == lowerCase;
    }
    return found;
}

Condition satelliteCondition(const FieldModel& satellites, const SyntaxNode& syntax)
{
    requireSignForTexts(syntax);
    const Comparison comparison = syntax.sign.comparison;
    const std::string meant = inLowerCase(syntax.value.text);
    if (syntax.value.number ||
        (comparison != Comparison::contains && !isSatellite(satellites, meant))) {
        throw Problem{syntax.value.place, "'" + syntax.value.text + "' is no name of a satellite",
                      "expected one like " + nameOf(satellites, RTCM2_system(0), 5)};
    }
    return {.test = [&satellites, comparison, meant](const Subject& subject) {
        const void* const record = subject.record;
        char room[RTCM2_QUANTITY_ROOM];
        const char* const end =
            satellites.isPresent(record) ? putQuantity(room, satellites, record) : room;
        const std::string name = inLowerCase({room, static_cast<std::size_t>(end - room)});
        return !name.empty() && (comparison == Comparison::contains
                                     ? name.find(meant) != name.npos
                                     : (name == meant) == (comparison == Comparison::equal));
    }};
}

}    // namespace

Condition quantityCondition(const FieldModel& quantity, const SyntaxNode& syntax)
{
    if (syntax.kind == SyntaxNode::Kind::presence) {
        return {.test = [&quantity](const Subject& subject) {
            return valueOf(quantity, subject.record).has_value();
        }};
    }
    return quantity.isScaled() ? scaledCondition(quantity, syntax)
                               : satelliteCondition(quantity, syntax);
}

}    // namespace where
