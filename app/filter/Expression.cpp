#include "filter/Expression.h"

#include "base/NearestName.h"
#include "filter/ExpressionError.h"
#include "filter/FieldCondition.h"
#include "filter/Syntax.h"

#include <algorithm>

namespace where {

namespace {

using Kinds = std::vector<const KindModel*>;
using Conditions = std::vector<Condition>;    // one for each kind

std::string listOf(std::vector<std::string> names)
{
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    constexpr std::size_t mostNames = 12;
    std::string list =
        names.size() > mostNames ? "expected another name, such as" : "expected one of";
    for (std::size_t i = 0; i < std::min(names.size(), mostNames); ++i) {
        list += (i == 0 ? " " : ", ") + names[i];
    }
    return list;
}

// Paths to the parts of sub-messages that have the name.
std::vector<std::string> longerPaths(const std::string& name, const Kinds& kinds)
{
    std::vector<std::string> paths;
    for (const KindModel* kind : kinds) {
        for (const FieldModel& field : kind->fields) {
            const FieldModel* part =
                field.element != nullptr ? field.element->field(name) : nullptr;
            if (part == nullptr) {
                continue;
            }
            const std::string path = quotedIfNeeded(field.name) + "." + quotedIfNeeded(part->name);
            if (std::find(paths.begin(), paths.end(), path) == paths.end()) {
                paths.push_back(path);
            }
        }
    }
    return paths;
}

// The names that the next one of the path could have had.
std::vector<std::string> namesBehind(std::size_t known, const std::vector<FieldLookup>& lookups)
{
    std::vector<std::string> names;
    for (const FieldLookup& lookup : lookups) {
        if (lookup.known == known && lookup.holder != nullptr) {
            for (const FieldModel& field : lookup.holder->fields) {
                names.push_back(quotedIfNeeded(field.name));
            }
        }
    }
    return names;
}

// Speaks of the kinds that have most of the path.
Problem unknownName(const std::vector<Token>& path, const std::vector<FieldLookup>& lookups,
                    const Kinds& kinds)
{
    std::size_t known = 0;
    for (const FieldLookup& lookup : lookups) {
        known = std::max(known, lookup.known);
    }
    const Token& missing = path[known];
    const std::vector<std::string> names = namesBehind(known, lookups);
    const std::string before = known == 0 ? "" : "'" + path[known - 1].text + "'";
    if (names.empty()) {
        return {missing.place, before + " has no parts", "expected a comparison, no dot"};
    }
    std::vector<std::string> meant;
    if (known == 0) {
        meant = longerPaths(missing.text, kinds);
    }
    if (meant.empty()) {
        meant = nearestNames(missing.text, names);
    }
    const std::string where =
        known == 0 ? "no message that can pass has a field '" : before + " has no part '";
    return {missing.place, where + missing.text + "'",
            meant.empty() ? listOf(names) : suggestion(meant)};
}

// Kinds that do not have the field, or not so, never fulfil the condition.
Conditions fieldConditions(const SyntaxNode& node, const Kinds& kinds)
{
    std::vector<std::string_view> names;
    for (const Token& name : node.path) {
        names.push_back(name.text);
    }
    Conditions conditions(kinds.size(), {.constant = false});
    std::vector<FieldLookup> lookups;
    std::optional<Problem> firstProblem;
    bool makesSense = false;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        lookups.push_back(lookUp(*kinds[i], names));
        if (lookups.back().known < names.size()) {
            continue;
        }
        try {
            conditions[i] = fieldCondition(*kinds[i], lookups.back().path, node);
            makesSense = true;
        } catch (const Problem& problem) {
            if (!firstProblem) {
                firstProblem = problem;
            }
        }
    }
    if (!makesSense) {
        throw firstProblem ? *firstProblem : unknownName(node.path, lookups, kinds);
    }
    return conditions;
}

Conditions conditionsOf(const SyntaxNode& node, const Kinds& kinds);

Conditions chainedConditions(const SyntaxNode& node, const Kinds& kinds)
{
    std::vector<Conditions> partsOfKinds(kinds.size());
    for (const SyntaxNode& part : node.parts) {
        Conditions conditions = conditionsOf(part, kinds);
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            partsOfKinds[i].push_back(std::move(conditions[i]));
        }
    }
    Conditions result;
    const auto chain = node.kind == SyntaxNode::Kind::all ? allOf : anyOf;
    for (Conditions& parts : partsOfKinds) {
        result.push_back(chain(std::move(parts)));
    }
    return result;
}

Conditions conditionsOf(const SyntaxNode& node, const Kinds& kinds)
{
    Conditions conditions =
        node.parts.empty() ? fieldConditions(node, kinds) : chainedConditions(node, kinds);
    if (node.isNegated) {
        for (Condition& condition : conditions) {
            condition = negationOf(std::move(condition));
        }
    }
    return conditions;
}

}    // namespace

}    // namespace where

std::vector<where::Condition> conditionsOf(std::string_view expression,
                                           const std::vector<const KindModel*>& kinds)
{
    try {
        return where::conditionsOf(where::parseExpression(expression), kinds);
    } catch (const where::Problem& problem) {
        throw where::errorAt(expression, problem);
    }
}
