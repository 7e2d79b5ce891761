#include "filter/FieldCondition.h"

#include "FieldInfo.h"
#include "Message.h"
#include "MessageInfo.h"
#include "filter/Lexer.h"

#include <algorithm>

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

    bool operator()(const FieldValue& value) const
    {
        switch (value.getKind()) {
        case FieldType::Byte:
        case FieldType::Unsigned:
            return satisfies(comparison, number.orderOf(std::uint64_t{value.toUnsigned()}));
        case FieldType::Signed:
            return satisfies(comparison, number.orderOf(std::int64_t{value.toSigned()}));
        case FieldType::Float64:
            return satisfies(comparison, number.orderOf(value.toDouble()));
        case FieldType::Character:
        case FieldType::SubMessage:
            break;
        }
        return false;
    }
};

// The values whose texts are meant.
struct CodeTest {
    std::vector<FieldValue> values;
    bool wanted;    // whether the field's value is to be one of them

    bool operator()(const FieldValue& value) const
    {
        return (std::find(values.begin(), values.end(), value) != values.end()) == wanted;
    }
};

// Makes a test of single values one of all values of a field.
template <class Test>
struct AnyValue {
    Test test;

    bool operator()(const FieldInfo& field, const Message& message) const
    {
        const unsigned count = field.getCount(&message);
        for (unsigned i = 0; i < count; ++i) {
            if (test(field.getValueUnchecked(&message, i))) {
                return true;
            }
        }
        return false;
    }
};

struct Presence {
    bool operator()(const FieldInfo& field, const Message& message) const
    {
        return field.isPresent(&message);
    }
};

struct TextTest {
    Comparison comparison;
    QString text;

    bool operator()(const FieldInfo& field, const Message& message) const
    {
        if (!field.isPresent(&message)) {
            return false;
        }
        const QString value = field.getValueString(&message);
        return comparison == Comparison::contains
                   ? value.contains(text, Qt::CaseInsensitive)
                   : (value == text) == (comparison == Comparison::equal);
    }
};

// Walks down to the field and holds when the test does for any element.
template <class Test>
class FieldCondition : public Condition {
public:
    FieldCondition(const FieldPath& path, Test fieldTest) : test(std::move(fieldTest))
    {
        for (const FieldModel* field : path) {
            steps.push_back(field->info);
        }
    }

    bool holds(const Message& message) const override { return holdsFrom(0, message); }

private:
    bool holdsFrom(std::size_t step, const Message& message) const
    {
        const FieldInfo& field = *steps[step];
        if (step + 1 == steps.size()) {
            return test(field, message);
        }
        const unsigned count = field.getCount(&message);
        for (unsigned i = 0; i < count; ++i) {
            const Message* element = field.getValueUnchecked(&message, i).toSubMessage();
            if (element != nullptr && holdsFrom(step + 1, *element)) {
                return true;
            }
        }
        return false;
    }

    std::vector<const FieldInfo*> steps;
    Test test;
};

template <class Test>
ConditionPtr conditionOn(const FieldPath& path, Test test)
{
    return std::make_unique<FieldCondition<Test>>(path, std::move(test));
}

// A condition on single values. A field that identifies the kind has the same value in all its
// messages.
template <class Test>
ConditionPtr valueCondition(const KindModel& kind, const FieldPath& path, Test test)
{
    for (const MessageInfo::Discriminant& discriminant : kind.info->getDiscriminantValues()) {
        if (path.size() == 1 && discriminant.first == path.front()->info) {
            return always(test(discriminant.second));
        }
    }
    return conditionOn(path, AnyValue<Test>{std::move(test)});
}

bool isMeant(const QString& candidate, const QString& text, Comparison comparison)
{
    return comparison == Comparison::contains ? candidate.contains(text, Qt::CaseInsensitive)
                                              : candidate.compare(text, Qt::CaseInsensitive) == 0;
}

// All texts that the field's values can show.
QVector<FieldInfo::SymbolicValue> textsOf(const FieldInfo& field)
{
    QVector<FieldInfo::SymbolicValue> texts = field.getSymbolicValues();
    if (field.hasDoNotUseValue()) {
        texts.append({field.getDoNotUseValue(), Message::doNotUseString});
    }
    return texts;
}

std::string listOf(const QVector<FieldInfo::SymbolicValue>& texts)
{
    std::string list = "its texts are";
    for (const FieldInfo::SymbolicValue& symbolic : texts) {
        list += "\n    " + quoted(symbolic.second.toStdString());
    }
    return list;
}

std::variant<ConditionPtr, Problem> codeComparison(const KindModel& kind, const FieldPath& path,
                                                   const SyntaxNode& syntax)
{
    const FieldModel& field = *path.back();
    const auto texts = textsOf(*field.info);
    if (texts.isEmpty()) {
        return Problem{syntax.value.place, "the values of '" + field.name + "' have no texts",
                       "expected a number; a comparison of two fields is not possible"};
    }
    if (syntax.comparison != Comparison::equal && syntax.comparison != Comparison::notEqual &&
        syntax.comparison != Comparison::contains) {
        return Problem{syntax.comparisonPlace, "texts have no order",
                       "expected ==, != or ~ before a text, or a number behind this"};
    }
    const QString meant = QString::fromStdString(syntax.value.text);
    CodeTest test{{}, syntax.comparison != Comparison::notEqual};
    for (const FieldInfo::SymbolicValue& symbolic : texts) {
        if (isMeant(symbolic.second, meant, syntax.comparison)) {
            test.values.push_back(symbolic.first);
        }
    }
    if (test.values.empty()) {
        return Problem{syntax.value.place,
                       "'" + syntax.value.text + "' is no text of '" + field.name + "'",
                       listOf(texts)};
    }
    return valueCondition(kind, path, std::move(test));
}

std::variant<ConditionPtr, Problem> textComparison(const FieldPath& path, const SyntaxNode& syntax)
{
    if (syntax.number) {
        return Problem{syntax.value.place, "'" + path.back()->name + "' is a text, not a number",
                       "expected a text in quotes: " + quoted(syntax.value.text)};
    }
    if (syntax.comparison != Comparison::equal && syntax.comparison != Comparison::notEqual &&
        syntax.comparison != Comparison::contains) {
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
    const FieldModel& field = *path.back();
    if (field.element != nullptr) {
        return Problem{syntax.comparisonPlace, "'" + field.name + "' has no value of its own",
                       "expected a dot and one of its parts: " + partsOf(field)};
    }
    if (field.type == FieldType::Character) {
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
