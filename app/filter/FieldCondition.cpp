#include "filter/FieldCondition.h"

#include "base/Characters.h"
#include "filter/Lexer.h"
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

struct NumberTest {
    Comparison comparison;
    Number number;

    bool operator()(const FieldModel& field, const void* record, unsigned index) const
    {
        if (field.isReal()) {
            return satisfies(comparison, number.orderOf(RTCM2_reader_real(&field.reader, record)));
        }
        return holdsFor(field, RTCM2_reader_integer(&field.reader, record, index));
    }
    bool holdsFor(const FieldModel& field, std::int64_t value) const
    {
        return satisfies(comparison, field.row->type == RTCM2_TYPE_SIGNED
                                         ? number.orderOf(value)
                                         : number.orderOf(static_cast<std::uint64_t>(value)));
    }
};

// The values whose texts are meant.
struct CodeTest {
    std::vector<std::int64_t> values;
    bool wanted;    // whether the field's value is to be one of them

    bool operator()(const FieldModel& field, const void* record, unsigned index) const
    {
        return holdsFor(field, RTCM2_reader_integer(&field.reader, record, index));
    }
    bool holdsFor(const FieldModel&, std::int64_t value) const
    {
        return (std::find(values.begin(), values.end(), value) != values.end()) == wanted;
    }
};

// Makes a test of single values one of all values of a field.
template <class Test>
struct AnyValue {
    Test test;

    bool operator()(const FieldModel& field, const void* record) const
    {
        const unsigned count = field.count(record);
        for (unsigned i = 0; i < count; ++i) {
            if (test(field, record, i)) {
                return true;
            }
        }
        return false;
    }
};

struct Presence {
    bool operator()(const FieldModel& field, const void* record) const
    {
        return field.isPresent(record);
    }
};

struct TextTest {
    Comparison comparison;
    QString text;

    bool operator()(const FieldModel& field, const void* record) const
    {
        if (!field.isPresent(record)) {
            return false;
        }
        const std::string_view characters = upToFirstNul(field.characters(record));
        const auto value =
            QString::fromLatin1(characters.data(), static_cast<int>(characters.size()));
        return comparison == Comparison::contains
                   ? value.contains(text, Qt::CaseInsensitive)
                   : (value == text) == (comparison == Comparison::equal);
    }
};

// Holds when the test does for any record that has the field.
template <class Test>
class FieldCondition : public Condition {
public:
    FieldCondition(const FieldPath& fieldPath, Test fieldTest)
        : path(fieldPath), test(std::move(fieldTest))
    {
    }

    bool holds(const void* record) const override
    {
        return path.anyRecord(record,
                              [this](const void* holder) { return test(path.last(), holder); });
    }

private:
    FieldPath path;
    Test test;
};

template <class Test>
ConditionPtr conditionOn(const FieldPath& path, Test test)
{
    return std::make_unique<FieldCondition<Test>>(path, std::move(test));
}

// A condition on single values. The field that identifies the kind has the same value in all its
// messages.
template <class Test>
ConditionPtr valueCondition(const KindModel& kind, const FieldPath& path, Test test)
{
    if (path.part == nullptr && path.field->row->offset == offsetof(RTCM2_header_s, Message_Type)) {
        return always(test.holdsFor(*path.field, kind.typeNumber));
    }
    return conditionOn(path, AnyValue<Test>{std::move(test)});
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

std::variant<ConditionPtr, Problem> codeComparison(const KindModel& kind, const FieldPath& path,
                                                   const SyntaxNode& syntax)
{
    const FieldModel& field = path.last();
    if (!field.hasTexts()) {
        return Problem{syntax.value.place, "the values of '" + field.name + "' have no texts",
                       "expected a number; a comparison of two fields is not possible"};
    }
    if (!isForTexts(syntax.comparison)) {
        return Problem{syntax.comparisonPlace, "texts have no order",
                       "expected ==, != or ~ before a text, or a number behind this"};
    }
    const QString meant = QString::fromStdString(syntax.value.text);
    CodeTest test{{}, syntax.comparison != Comparison::notEqual};
    for (const RTCM2_text_s& coded : codedTexts(field)) {
        if (isMeant(QString::fromUtf8(coded.text), meant, syntax.comparison)) {
            test.values.push_back(coded.value);
        }
    }
    if (test.values.empty()) {
        return Problem{syntax.value.place,
                       "'" + syntax.value.text + "' is no text of '" + field.name + "'",
                       listOfTexts(field)};
    }
    return valueCondition(kind, path, std::move(test));
}

std::variant<ConditionPtr, Problem> textComparison(const FieldPath& path, const SyntaxNode& syntax)
{
    if (syntax.number) {
        return Problem{syntax.value.place, "'" + path.last().name + "' is a text, not a number",
                       "expected a text in quotes: " + quoted(syntax.value.text)};
    }
    if (!isForTexts(syntax.comparison)) {
        return Problem{syntax.comparisonPlace, "texts have no order", "expected ==, != or ~"};
    }
    return conditionOn(path,
                       TextTest{syntax.comparison, QString::fromStdString(syntax.value.text)});
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

ConditionPtr presenceOf(const FieldPath& path)
{
    return conditionOn(path, Presence{});
}

std::variant<ConditionPtr, Problem> comparisonOf(const KindModel& kind, const FieldPath& path,
                                                 const SyntaxNode& syntax)
{
    const FieldModel& field = path.last();
    if (field.element != nullptr) {
        return Problem{syntax.comparisonPlace, "'" + field.name + "' has no value of its own",
                       "expected a dot and one of its parts: " + partsOf(field)};
    }
    if (field.isText()) {
        return textComparison(path, syntax);
    }
    if (!syntax.number) {
        return codeComparison(kind, path, syntax);
    }
    if (syntax.comparison == Comparison::contains) {
        return Problem{syntax.comparisonPlace, "only texts contain something",
                       "expected ==, !=, <, <=, > or >= before a number"};
    }
    return valueCondition(kind, path, NumberTest{syntax.comparison, *syntax.number});
}

}    // namespace where
