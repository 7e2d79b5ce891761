#include "filter/Comparing.h"

#include "filter/ExpressionError.h"

namespace where {

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

void requireSignForNumbers(const SyntaxNode& syntax)
{
    if (syntax.sign.comparison == Comparison::contains) {
        throw Problem{syntax.sign.place, "only texts contain something",
                      "expected ==, !=, <, <=, > or >= before a number"};
    }
}

void requireSignForTexts(const SyntaxNode& syntax)
{
    const Comparison comparison = syntax.sign.comparison;
    if (comparison != Comparison::equal && comparison != Comparison::notEqual &&
        comparison != Comparison::contains) {
        throw Problem{syntax.sign.place, "texts have no order",
                      "expected ==, != or ~ before a text"};
    }
}

}    // namespace where
