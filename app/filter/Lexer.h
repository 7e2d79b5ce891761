// Cuts an expression into words, numbers, quoted texts and signs.
#pragma once

#include "filter/Syntax.h"

#include <vector>

namespace where {

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
        dot,
        end
    };

    Kind kind = Kind::end;
    PlacedText content;    // without quotes
    Comparison comparison = Comparison::equal;
};

// The last token is of kind end. Throws FilterError.
std::vector<Token> tokensOf(std::string_view expression);

// A text in quotes, as it can stand in an expression.
std::string quoted(const std::string& text);

// A name as it can stand in an expression: in quotes unless it is one plain word.
std::string quotedIfNeeded(const std::string& name);

}    // namespace where
