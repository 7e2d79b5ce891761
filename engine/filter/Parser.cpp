#include "base/Names.h"
#include "filter/ExpressionError.h"
#include "filter/Syntax.h"

namespace where {

namespace {

constexpr std::size_t longestExpression = 16 * 1024;
constexpr int deepestNesting = 100;    // of parentheses and brackets

constexpr const char* conditionForms =
    "expected a condition: FIELD == VALUE, FIELD[CONDITION], present(FIELD), 'not' or '('";

// Grammar, loosest first:
//   condition   = conjunction { or conjunction }
//   conjunction = negation { and negation }
//   negation    = { not } basic
//   basic       = "(" condition ")" | present "(" field ")" | field comparison value |
//                 field "[" condition "]"
//   field       = name { "." name }
//   name        = word | quoted
//   value       = number | quoted | word
class Parser {
public:
    explicit Parser(std::string_view text) : tokens(tokensOf(text)) {}

    SyntaxNode run()
    {
        SyntaxNode root = condition();
        if (!at(Token::Kind::end)) {
            fail(at(Token::Kind::close)          ? "there is no '(' for this ')'"
                 : at(Token::Kind::closeBracket) ? "there is no '[' for this ']'"
                                                 : "the condition before this place is complete",
                 "expected 'and', 'or' or the end");
        }
        return root;
    }

private:
    using Part = SyntaxNode (Parser::*)();

    bool at(Token::Kind kind) const { return current().kind == kind; }
    bool atName() const { return at(Token::Kind::word) || at(Token::Kind::quoted); }
    const Token& current() const { return tokens[position]; }
    Token take() { return std::move(tokens[position++]); }

    bool takeIf(Token::Kind kind)
    {
        const bool found = at(kind);
        position += found ? 1U : 0U;
        return found;
    }

    [[noreturn]] void fail(const std::string& problem, const std::string& help) const
    {
        throw Problem{current().place, problem, help};
    }

    // What stands at the current place, for the beginning of a sentence.
    std::string found() const
    {
        return at(Token::Kind::end) ? "the expression ends too early"
                                    : "'" + current().text + "' cannot stand here";
    }

    SyntaxNode condition()
    {
        return chain(SyntaxNode::Kind::any, Token::Kind::disjunction, &Parser::conjunction);
    }

    SyntaxNode conjunction()
    {
        return chain(SyntaxNode::Kind::all, Token::Kind::conjunction, &Parser::negation);
    }

    // Chains are one node, so that their length is no depth.
    SyntaxNode chain(SyntaxNode::Kind kind, Token::Kind connection, Part part)
    {
        SyntaxNode node{.kind = kind};
        do {
            node.parts.push_back((this->*part)());
        } while (takeIf(connection));
        return node;
    }

    SyntaxNode negation()
    {
        bool isNegated = false;
        while (takeIf(Token::Kind::negation)) {
            isNegated = !isNegated;
        }
        SyntaxNode node = basic();
        node.isNegated = node.isNegated != isNegated;
        return node;
    }

    SyntaxNode basic()
    {
        if (at(Token::Kind::open)) {
            return enclosed(Token::Kind::close);
        }
        if (at(Token::Kind::word) && sameName(current().text, "present") &&
            tokens[position + 1].kind == Token::Kind::open) {
            return presence();
        }
        if (at(Token::Kind::number)) {
            fail("a condition does not begin with a number",
                 "expected the field first: FIELD == VALUE");
        }
        if (!atName()) {
            fail(found(), conditionForms);
        }
        return onField();
    }

    // In parentheses or brackets.
    SyntaxNode enclosed(Token::Kind end)
    {
        if (++depth > deepestNesting) {
            fail("parentheses and brackets are nested too deeply",
                 "expected at most " + std::to_string(deepestNesting) + " of them");
        }
        take();
        SyntaxNode inner = condition();
        close(end);
        --depth;
        return inner;
    }

    void close(Token::Kind end)
    {
        if (!takeIf(end)) {
            fail(found(), end == Token::Kind::close ? "expected ')'" : "expected ']'");
        }
    }

    SyntaxNode presence()
    {
        take();
        take();
        SyntaxNode node{.kind = SyntaxNode::Kind::presence, .path = field()};
        close(Token::Kind::close);
        return node;
    }

    SyntaxNode onField()
    {
        SyntaxNode node{.kind = SyntaxNode::Kind::comparison, .path = field()};
        if (at(Token::Kind::openBracket)) {
            node.kind = SyntaxNode::Kind::elements;
            node.sign = current();
            node.parts.push_back(enclosed(Token::Kind::closeBracket));
            return node;
        }
        if (!at(Token::Kind::comparison)) {
            fail(found(), comparisonHelp(node.path.back().text));
        }
        node.sign = take();
        if (!atName() && !at(Token::Kind::number)) {
            fail(found(), "expected a number or a text");
        }
        node.value = take();
        return node;
    }

    std::string comparisonHelp(const std::string& name) const
    {
        std::string help = "expected ==, !=, <, <=, >, >=, ~ (contains)";
        if (at(Token::Kind::word)) {
            help += "; names with blanks stand in quotes: \"" + name + ' ' + current().text + '"';
        }
        return help;
    }

    std::vector<Token> field()
    {
        std::vector<Token> path;
        do {
            if (!atName()) {
                fail(found(), "expected the name of a field");
            }
            path.push_back(take());
        } while (takeIf(Token::Kind::dot));
        return path;
    }

    std::vector<Token> tokens;
    std::size_t position = 0;
    int depth = 0;
};

}    // namespace

SyntaxNode parseExpression(std::string_view expression)
{
    if (expression.size() > longestExpression) {
        throw Problem{longestExpression, "the expression is too long",
                      "expected at most " + std::to_string(longestExpression) + " bytes"};
    }
    return Parser(expression).run();
}

}    // namespace where
