#include "filter/EnvelopeCondition.h"

#include "filter/Comparing.h"
#include "filter/ExpressionError.h"
#include "format/EnvelopeField.h"

namespace where {

namespace {

template <class Test>
Condition valueCondition(const EnvelopeField& field, Test test)
{
    return {.test = [&field, test](const Subject& subject) {
        const auto value =
            subject.envelope != nullptr ? field.value(*subject.envelope) : std::nullopt;
        return value && test(*value);
    }};
}

}    // namespace

std::optional<Condition> envelopeCondition(const SyntaxNode& syntax)
{
    const EnvelopeField* const field =
        syntax.path.size() == 1 ? envelopeField(syntax.path.front().text) : nullptr;
    if (field == nullptr) {
        return std::nullopt;
    }
    if (syntax.kind == SyntaxNode::Kind::presence) {
        return valueCondition(*field, [](double) { return true; });
    }
    if (!syntax.value.number) {
        throw Problem{syntax.value.place,
                      std::string("the values of '") + field->name + "' are numbers",
                      "expected a number; a comparison of two fields is not possible"};
    }
    requireSignForNumbers(syntax);
    return valueCondition(
        *field, [comparison = syntax.sign.comparison, number = *syntax.value.number](double value) {
            return satisfies(comparison, number.orderOf(value));
        });
}

}    // namespace where
