// Cuts an expression into words, numbers, quoted texts and signs. What makes up expressions stands
// in the namespace `where`.
#pragma once

#include "filter/Number.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace where {

enum class Comparison { equal, notEqual, less, lessOrEqual, greater, greaterOrEqual, contains };

struct Token {
    enum class Kind {
        word,
        quoted,
        number,
        comparison,
        conjunction,
        disjunction,
        negation,
        open,
        close,
        openBracket,
        closeBracket,
        dot,
        end
    };

    Kind kind = Kind::end;
    std::string text{};                             // as written, without quotes
    std::size_t place = 0;                          // bytes before it in the expression
    Comparison comparison = Comparison::equal;      // of comparisons
    std::optional<Number> number = std::nullopt;    // of numbers
};

// The last token is of kind end. Throws Problem.
std::vector<Token> tokensOf(std::string_view expression);

// A text in quotes, as it can stand in an expression.
std::string quoted(const std::string& text);

// A name as it can stand in an expression: in quotes unless it is one plain word.
std::string quotedIfNeeded(const std::string& name);

}    // namespace where
