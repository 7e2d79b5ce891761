#include "filter/Lexer.h"

#include "filter/ExpressionError.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace where {

namespace {

struct Sign {
    std::string_view text;
    Token::Kind kind;
    Comparison comparison = Comparison::equal;
};

// Longer signs stand before those that they begin with. Words among them mean the same in any case.
constexpr std::array signs{
    Sign{"==", Token::Kind::comparison, Comparison::equal},
    Sign{"!=", Token::Kind::comparison, Comparison::notEqual},
    Sign{"<=", Token::Kind::comparison, Comparison::lessOrEqual},
    Sign{">=", Token::Kind::comparison, Comparison::greaterOrEqual},
    Sign{"=", Token::Kind::comparison, Comparison::equal},
    Sign{"<", Token::Kind::comparison, Comparison::less},
    Sign{">", Token::Kind::comparison, Comparison::greater},
    Sign{"~", Token::Kind::comparison, Comparison::contains},
    Sign{"&&", Token::Kind::conjunction},
    Sign{"||", Token::Kind::disjunction},
    Sign{"!", Token::Kind::negation},
    Sign{"(", Token::Kind::open},
    Sign{")", Token::Kind::close},
    Sign{"[", Token::Kind::openBracket},
    Sign{"]", Token::Kind::closeBracket},
    Sign{".", Token::Kind::dot},
    Sign{"and", Token::Kind::conjunction},
    Sign{"or", Token::Kind::disjunction},
    Sign{"not", Token::Kind::negation},
    Sign{"contains", Token::Kind::comparison, Comparison::contains},
};

// Whatever is not ASCII belongs to words.
bool isWordCharacter(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || c == '_' || std::isalnum(byte) != 0;
}

bool sameWord(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return std::tolower(static_cast<unsigned char>(x)) == y;
    });
}

const Sign* keywordOf(std::string_view word)
{
    const auto found = std::find_if(signs.begin(), signs.end(),
                                    [&](const Sign& sign) { return sameWord(word, sign.text); });
    return found != signs.end() ? &*found : nullptr;
}

class Lexer {
public:
    explicit Lexer(std::string_view text) : expression(text) {}

    std::vector<Token> run()
    {
        std::vector<Token> tokens;
        do {
            skipBlanks();
            tokens.push_back(next());
        } while (tokens.back().kind != Token::Kind::end);
        return tokens;
    }

private:
    char at(std::size_t place) const
    {
        return place < expression.size() ? expression[place] : '\0';
    }

    void skipBlanks()
    {
        position = std::min(expression.find_first_not_of(" \t\r\n", position), expression.size());
    }

    Token next()
    {
        if (position == expression.size()) {
            return {Token::Kind::end, "", position};
        }
        const char c = at(position);
        if (c == '"' || c == '\'') {
            return quotedText();
        }
        if (isDigit(c) || ((c == '-' || c == '+') && isDigit(at(position + 1)))) {
            return number();
        }
        return isWordCharacter(c) ? word() : sign();
    }

    Token quotedText()
    {
        const std::size_t begin = position;
        const char quote = at(begin);
        std::string text;
        for (++position; position < expression.size(); ++position) {
            if (at(position) == quote) {
                ++position;
                return {Token::Kind::quoted, text, begin};
            }
            if (at(position) == '\\' && position + 1 < expression.size()) {
                ++position;
            }
            text += at(position);
        }
        throw Problem{begin, "this quote is never closed",
                      std::string("expected another ") + quote + " at its end"};
    }

    // Also takes what cannot belong to a number but stands without a gap behind it.
    Token number()
    {
        const std::size_t begin = position++;
        while (isWordCharacter(at(position)) || at(position) == '.' || isSignOfExponent(begin)) {
            ++position;
        }
        const std::string text(expression.substr(begin, position - begin));
        const std::optional<Number> number = Number::parse(text);
        if (!number) {
            throw Problem{begin, "'" + text + "' is no number",
                          "expected digits like 12, -3, 0.5, 1e3 or 0x1f; names and texts that "
                          "begin with a digit stand in quotes"};
        }
        return {Token::Kind::number, text, begin, {}, number};
    }

    bool isSignOfExponent(std::size_t begin) const
    {
        const char last = at(position - 1);
        const bool isHexadecimal =
            expression.substr(begin, position - begin).find_first_of("xX") != expression.npos;
        return (at(position) == '-' || at(position) == '+') && (last == 'e' || last == 'E') &&
               !isHexadecimal;
    }

    Token word()
    {
        const std::size_t begin = position;
        while (isWordCharacter(at(position))) {
            ++position;
        }
        const std::string text(expression.substr(begin, position - begin));
        if (const Sign* keyword = keywordOf(text)) {
            return {keyword->kind, text, begin, keyword->comparison};
        }
        return {Token::Kind::word, text, begin};
    }

    Token sign()
    {
        const std::string_view rest = expression.substr(position);
        for (const Sign& candidate : signs) {
            if (rest.starts_with(candidate.text)) {
                const std::size_t begin = position;
                position += candidate.text.size();
                return {candidate.kind, std::string(candidate.text), begin, candidate.comparison};
            }
        }
        const char c = rest.front();
        const char* help = c == '&'   ? "expected && or 'and'"
                           : c == '|' ? "expected || or 'or'"
                           : c == '-' ? "expected a number behind the minus sign; names with '-' "
                                        "stand in quotes, or write '_' instead"
                                      : "names and texts with such characters stand in quotes";
        throw Problem{position, "this character has no meaning here", help};
    }

    std::string_view expression;
    std::size_t position = 0;
};

}    // namespace

std::vector<Token> tokensOf(std::string_view expression)
{
    return Lexer(expression).run();
}

std::string quoted(const std::string& text)
{
    std::string result = "\"";
    for (const char c : text) {
        result += c == '"' || c == '\\' ? std::string{'\\', c} : std::string{c};
    }
    return result + '"';
}

std::string quotedIfNeeded(const std::string& name)
{
    const bool isPlain = !name.empty() && !isDigit(name[0]) && keywordOf(name) == nullptr &&
                         std::all_of(name.begin(), name.end(), isWordCharacter);
    return isPlain ? name : quoted(name);
}

}    // namespace where
