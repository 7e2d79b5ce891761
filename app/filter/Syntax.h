// A condition as it was written: the names are not looked up yet. What makes up expressions stands
// in the namespace `where`.
#pragma once

#include "filter/Number.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace where {

enum class Comparison { equal, notEqual, less, lessOrEqual, greater, greaterOrEqual, contains };

struct PlacedText {
    std::string text;
    std::size_t place = 0;    // bytes before it in the expression

    operator std::string_view() const { return text; }
};

struct SyntaxNode {
    enum class Kind { all, any, negation, comparison, presence };

    Kind kind = Kind::all;
    std::vector<SyntaxNode> parts;    // of all, any and negation

    std::vector<PlacedText> path;    // of comparison and presence
    Comparison comparison = Comparison::equal;
    std::size_t comparisonPlace = 0;
    PlacedText value;                // as written, without quotes
    std::optional<Number> number;    // when the value is one
};

// Reads the whole expression. Throws FilterError. The depth of the result is bounded.
SyntaxNode parseExpression(std::string_view expression);

}    // namespace where
