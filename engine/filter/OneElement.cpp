#include "filter/OneElement.h"

#include "base/Names.h"
#include "filter/ExpressionError.h"

#include <algorithm>

namespace where {

namespace {

// A condition on elements in an expression.
struct Mention {
    const SyntaxNode* node;
    bool isNegated;    // by all that stands around it in the expression

    bool isInBrackets() const { return node->kind == SyntaxNode::Kind::elements; }
    const Token& array() const { return node->path.front(); }
    bool isAlike(const Mention& other) const
    {
        return isNegated == other.isNegated && isInBrackets() == other.isInBrackets() &&
               sameName(array().text, other.array().text);
    }
};

std::string textOf(const Token& token)
{
    return token.kind == Token::Kind::quoted ? quoted(token.text) : token.text;
}

// As it would stand in brackets.
std::string textOf(const Mention& mention)
{
    const SyntaxNode& node = *mention.node;
    if (mention.isInBrackets()) {
        return "...";
    }
    const std::string part = quotedIfNeeded(node.path.back().text);
    return node.kind == SyntaxNode::Kind::presence
               ? "present(" + part + ")"
               : part + " " + textOf(node.sign) + " " + textOf(node.value);
}

// `connection` stands between the two.
Problem openQuestion(const Mention& first, const Mention& second, const std::string& connection)
{
    const std::string array = quotedIfNeeded(first.array().text);
    const std::string negation = first.isNegated ? "not " : "";
    const auto inBrackets = [&](const std::string& text) {
        return negation + array + "[" + text + "]";
    };
    return {second.array().place,
            "it is open whether one and the same of '" + first.array().text +
                "' has to meet this condition and that before it",
            "one that meets both: " + inBrackets(textOf(first) + " and " + textOf(second)) +
                "\n  any for each:        " + inBrackets(textOf(first)) + " " + connection + " " +
                inBrackets(textOf(second))};
}

// Of mentions that are alike the first is enough.
void add(const Mention& mention, std::vector<Mention>& mentions)
{
    if (std::none_of(mentions.begin(), mentions.end(),
                     [&](const Mention& known) { return known.isAlike(mention); })) {
        mentions.push_back(mention);
    }
}

// The mentions of a chain that have to hold together are the plain ones in "and" and, since there
// the negation of it all is "and", the negated ones in "or".
void requireNoQuestion(const Mention& mention, const std::vector<Mention>& before, bool isAnd)
{
    for (const Mention& other : before) {
        if (mention.isNegated != isAnd && other.isNegated != isAnd &&
            !(mention.isInBrackets() && other.isInBrackets()) &&
            sameName(mention.array().text, other.array().text)) {
            throw openQuestion(other, mention, isAnd ? "and" : "or");
        }
    }
}

std::vector<Mention> mentionsOf(const SyntaxNode& node);

std::vector<Mention> mentionsOfChain(const SyntaxNode& chain)
{
    std::vector<Mention> mentions;
    for (const SyntaxNode& part : chain.parts) {
        const std::vector<Mention> ofPart = mentionsOf(part);
        for (const Mention& mention : ofPart) {
            requireNoQuestion(mention, mentions, chain.kind == SyntaxNode::Kind::all);
        }
        for (const Mention& mention : ofPart) {
            add(mention, mentions);
        }
    }
    return mentions;
}

std::vector<Mention> mentionsOf(const SyntaxNode& node)
{
    std::vector<Mention> mentions;
    if (node.kind == SyntaxNode::Kind::all || node.kind == SyntaxNode::Kind::any) {
        mentions = mentionsOfChain(node);
    } else if (node.kind == SyntaxNode::Kind::elements || node.path.size() > 1) {
        mentions = {{&node, false}};
    }
    for (Mention& mention : mentions) {
        mention.isNegated = mention.isNegated != node.isNegated;
    }
    return mentions;
}

}    // namespace

void requireOneElement(const SyntaxNode& root)
{
    mentionsOf(root);
}

}    // namespace where
