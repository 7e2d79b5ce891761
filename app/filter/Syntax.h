// A condition as it was written: the names are not looked up yet.
#pragma once

#include "filter/Lexer.h"

namespace where {

struct SyntaxNode {
    enum class Kind { all, any, comparison, presence };

    Kind kind = Kind::all;
    bool isNegated = false;
    std::vector<SyntaxNode> parts{};    // of all and any

    std::vector<Token> path{};    // of comparison and presence: the names
    Token sign{};                 // of comparison
    Token value{};                // of comparison
};

// Reads the whole expression. Throws Problem. The depth of the result is bounded.
SyntaxNode parseExpression(std::string_view expression);

}    // namespace where
