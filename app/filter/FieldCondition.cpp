#include "filter/FieldCondition.h"

#include "base/Characters.h"
#include "filter/ExpressionError.h"
#include "format/FieldText.h"

#include <QString>

#include <algorithm>
#include <cstddef>

namespace where {

namespace {

bool satisfies(Comparison comparison, std::partial_ordering order)
{
    switch (comparison) {
    case Comparison::equal:
        return std::is_eq(order);
    case Comparison::notEqual:
        return std::is_neq(order);
    case Comparison::less:
        return std::is_lt(order);
    case Comparison::lessOrEqual:
        return std::is_lteq(order);
    case Comparison::greater:
        return std::is_gt(order);
    case Comparison::greaterOrEqual:
        return std::is_gteq(order);
    case Comparison::contains:
        break;
    }
    return false;
}

bool isAmong(const std::vector<std::int64_t>& values, std::int64_t value)
{
    return std::find(values.begin(), values.end(), value) != values.end();
}

// Holds when the test does for any record that has the field.
template <class Test>
Condition anyRecord(const FieldPath& path, Test test)
{
    return {.test = [path, test = std::move(test)](const void* record) {
        return path.anyRecord(record,
                              [&](const void* holder) { return test(path.last(), holder); });
    }};
}

// Holds when the test does for any value of an integer field.
template <class Test>
Condition anyValue(const FieldPath& path, Test test)
{
    return anyRecord(path, [test = std::move(test)](const FieldModel& field, const void* holder) {
        const unsigned count = field.count(holder);
        for (unsigned i = 0; i < count; ++i) {
            if (test(RTCM2_reader_integer(&field.reader, holder, i))) {
                return true;
            }
        }
        return false;
    });
}

// The field that identifies the kind has the same value in all its messages.
template <class Test>
Condition integerCondition(const KindModel& kind, const FieldPath& path, Test test)
{
    const bool isKind =
        path.part == nullptr && path.field->row->offset == offsetof(RTCM2_header_s, Message_Type);
    return isKind ? Condition{.constant = test(kind.typeNumber)} : anyValue(path, std::move(test));
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

bool isForTexts(Comparison comparison)
{
    return comparison == Comparison::equal || comparison == Comparison::notEqual ||
           comparison == Comparison::contains;
}

Condition codeCondition(const KindModel& kind, const FieldPath& path, const SyntaxNode& syntax)
{
    const FieldModel& field = path.last();
    const Comparison comparison = syntax.sign.comparison;
    if (!field.hasTexts()) {
        throw Problem{syntax.value.place, "the values of '" + field.name + "' have no texts",
                      "expected a number; a comparison of two fields is not possible"};
    }
    if (!isForTexts(comparison)) {
        throw Problem{syntax.sign.place, "texts have no order",
                      "expected ==, != or ~ before a text, or a number behind this"};
    }
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
    return integerCondition(kind, path, [values, wanted](std::int64_t value) {
        return isAmong(values, value) == wanted;
    });
}

Condition numberCondition(const KindModel& kind, const FieldPath& path, const SyntaxNode& syntax)
{
    const Comparison comparison = syntax.sign.comparison;
    const Number number = *syntax.value.number;
    if (comparison == Comparison::contains) {
        throw Problem{syntax.sign.place, "only texts contain something",
                      "expected ==, !=, <, <=, > or >= before a number"};
    }
    if (path.last().isReal()) {
        return anyRecord(path, [comparison, number](const FieldModel& field, const void* holder) {
            return field.isPresent(holder) &&
                   satisfies(comparison, number.orderOf(RTCM2_reader_real(&field.reader, holder)));
        });
    }
    if (path.last().row->type == RTCM2_TYPE_SIGNED) {
        return integerCondition(kind, path, [comparison, number](std::int64_t value) {
            return satisfies(comparison, number.orderOf(value));
        });
    }
    return integerCondition(kind, path, [comparison, number](std::int64_t value) {
        return satisfies(comparison, number.orderOf(static_cast<std::uint64_t>(value)));
    });
}

Condition textCondition(const FieldPath& path, const SyntaxNode& syntax)
{
    const Comparison comparison = syntax.sign.comparison;
    if (syntax.value.number) {
        throw Problem{syntax.value.place, "'" + path.last().name + "' is a text, not a number",
                      "expected a text in quotes: " + quoted(syntax.value.text)};
    }
    if (!isForTexts(comparison)) {
        throw Problem{syntax.sign.place, "texts have no order", "expected ==, != or ~"};
    }
    const QString meant = QString::fromStdString(syntax.value.text);
    return anyRecord(path, [comparison, meant](const FieldModel& field, const void* holder) {
        if (!field.isPresent(holder)) {
            return false;
        }
        const std::string_view characters = upToFirstNul(field.characters(holder));
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

Condition fieldCondition(const KindModel& kind, const FieldPath& path, const SyntaxNode& syntax)
{
    const FieldModel& field = path.last();
    if (syntax.kind == SyntaxNode::Kind::presence) {
        return anyRecord(path, std::mem_fn(&FieldModel::isPresent));
    }
    if (field.element != nullptr) {
        throw Problem{syntax.sign.place, "'" + field.name + "' has no value of its own",
                      "expected a dot and one of its parts: " + partsOf(field)};
    }
    if (field.isText()) {
        return textCondition(path, syntax);
    }
    return syntax.value.number ? numberCondition(kind, path, syntax)
                               : codeCondition(kind, path, syntax);
}

Condition valueAmong(const FieldPath& path, const std::vector<std::int64_t>& values)
{
    return anyValue(path, [values](std::int64_t value) { return isAmong(values, value); });
}

}    // namespace where
