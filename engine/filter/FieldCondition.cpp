#include "filter/FieldCondition.h"

#include "base/Characters.h"
#include "filter/Comparing.h"
#include "filter/ExpressionError.h"
#include "filter/QuantityCondition.h"
#include "format/FieldText.h"

#include <QString>

#include <algorithm>
#include <cstddef>

namespace where {

namespace {

bool isAmong(const std::vector<std::int64_t>& values, std::int64_t value)
{
    return std::find(values.begin(), values.end(), value) != values.end();
}

// Holds when the test does for the field and a record.
template <class Test>
Condition ofField(const FieldModel& field, Test test)
{
    return {.test = [&field, test = std::move(test)](const Subject& subject) {
        return test(field, subject.record);
    }};
}

// Holds when the test does for any value of an integer field.
template <class Test>
Condition anyValue(const FieldModel& integers, Test test)
{
    return ofField(integers, [test = std::move(test)](const FieldModel& field, const void* record) {
        const unsigned count = field.count(record);
        for (unsigned i = 0; i < count; ++i) {
            if (test(RTCM2_reader_integer(&field.reader, record, i))) {
                return true;
            }
        }
        return false;
    });
}

// The field that identifies the kind has the same value in all its messages.
template <class Test>
Condition integerCondition(const KindModel& kind, const FieldModel& field, Test test)
{
    const bool isKind = field.row->meaning == RTCM2_MEANS_TYPE && !field.isQuantity();
    return isKind ? Condition{.constant = test(kind.typeNumber)} : anyValue(field, std::move(test));
}

bool isMeant(const QString& candidate, const QString& text, Comparison comparison)
{
    return comparison == Comparison::contains ? candidate.contains(text, Qt::CaseInsensitive)
                                              : candidate.compare(text, Qt::CaseInsensitive) == 0;
}

std::string listOfTexts(const FieldModel& field)
{
    std::string list = "its texts are";
    for (const RTCM2_text_s& coded : codedTexts(field)) {
        list += "\n    " + quoted(coded.text);
    }
    return list;
}

Condition codeCondition(const KindModel& kind, const FieldModel& field, const SyntaxNode& syntax)
{
    const Comparison comparison = syntax.sign.comparison;
    if (!field.hasTexts()) {
        throw Problem{syntax.value.place, "the values of '" + field.name + "' have no texts",
                      "expected a number; a comparison of two fields is not possible"};
    }
    requireSignForTexts(syntax);
    const QString meant = QString::fromStdString(syntax.value.text);
    std::vector<std::int64_t> values;
    for (const RTCM2_text_s& coded : codedTexts(field)) {
        if (isMeant(QString::fromUtf8(coded.text), meant, comparison)) {
            values.push_back(coded.value);
        }
    }
    if (values.empty()) {
        throw Problem{syntax.value.place,
                      "'" + syntax.value.text + "' is no text of '" + field.name + "'",
                      listOfTexts(field)};
    }
    const bool wanted = comparison != Comparison::notEqual;
    return integerCondition(kind, field, [values, wanted](std::int64_t value) {
        return isAmong(values, value) == wanted;
    });
}

Condition numberCondition(const KindModel& kind, const FieldModel& field, const SyntaxNode& syntax)
{
    const Comparison comparison = syntax.sign.comparison;
    const Number number = *syntax.value.number;
    requireSignForNumbers(syntax);
    if (field.isReal()) {
        return ofField(field, [comparison, number](const FieldModel& real, const void* record) {
            return real.isPresent(record) &&
                   satisfies(comparison, number.orderOf(RTCM2_reader_real(&real.reader, record)));
        });
    }
    if (field.row->type == RTCM2_TYPE_SIGNED) {
        return integerCondition(kind, field, [comparison, number](std::int64_t value) {
            return satisfies(comparison, number.orderOf(value));
        });
    }
    return integerCondition(kind, field, [comparison, number](std::int64_t value) {
        return satisfies(comparison, number.orderOf(static_cast<std::uint64_t>(value)));
    });
}

Condition textCondition(const FieldModel& field, const SyntaxNode& syntax)
{
    const Comparison comparison = syntax.sign.comparison;
    if (syntax.value.number) {
        throw Problem{syntax.value.place, "'" + field.name + "' is a text, not a number",
                      "expected a text in quotes: " + quoted(syntax.value.text)};
    }
    requireSignForTexts(syntax);
    const QString meant = QString::fromStdString(syntax.value.text);
    return ofField(field, [comparison, meant](const FieldModel& text, const void* record) {
        if (!text.isPresent(record)) {
            return false;
        }
        const std::string_view characters = upToFirstNul(text.characters(record));
        const auto value =
            QString::fromLatin1(characters.data(), static_cast<int>(characters.size()));
        return comparison == Comparison::contains
                   ? value.contains(meant, Qt::CaseInsensitive)
                   : (value == meant) == (comparison == Comparison::equal);
    });
}

std::string partsOf(const FieldModel& field)
{
    std::string parts;
    for (const FieldModel& part : field.element->fields) {
        parts += (parts.empty() ? "" : ", ") + quotedIfNeeded(part.name);
    }
    return parts;
}

}    // namespace

Condition fieldCondition(const KindModel& kind, const FieldModel& field, const SyntaxNode& syntax)
{
    if (field.isQuantity()) {
        return quantityCondition(field, syntax);
    }
    if (syntax.kind == SyntaxNode::Kind::presence) {
        return ofField(field, std::mem_fn(&FieldModel::isPresent));
    }
    if (field.element != nullptr) {
        throw Problem{syntax.sign.place, "'" + field.name + "' has no value of its own",
                      "expected a dot and one of its parts: " + partsOf(field)};
    }
    if (field.isText()) {
        return textCondition(field, syntax);
    }
    return syntax.value.number ? numberCondition(kind, field, syntax)
                               : codeCondition(kind, field, syntax);
}

Condition elementCondition(const FieldModel& array, Condition ofElement)
{
    if (ofElement.constant == false) {
        return ofElement;
    }
    return {.test = [&array, ofElement = std::move(ofElement)](const Subject& subject) {
        return subject.element != nullptr ? ofElement.holds({.record = subject.element})
                                          : array.anyElement(subject.record, [&](const void* each) {
                                                return ofElement.holds({.record = each});
                                            });
    }};
}

Condition valueAmong(const FieldModel& field, const std::vector<std::int64_t>& values)
{
    return anyValue(field, [values](std::int64_t value) { return isAmong(values, value); });
}

}    // namespace where
