// A condition as it was written: the names are not looked up yet.
#pragma once

#include "filter/Lexer.h"

namespace where {

struct SyntaxNode {
    enum class Kind { all, any, comparison, presence, elements };

    Kind kind = Kind::all;
    bool isNegated = false;
    std::vector<SyntaxNode> parts{};    // of all and any; of elements the condition in brackets

    std::vector<Token> path{};    // of the others and of elements: the names
    Token sign{};                 // of comparison; of elements the bracket
    Token value{};                // of comparison
};

// Reads the whole expression. Throws Problem. The depth of the result is bounded.
SyntaxNode parseExpression(std::string_view expression);

}    // namespace where
