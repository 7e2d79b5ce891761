#include "filter/Expression.h"

#include "base/NearestName.h"
#include "filter/EnvelopeCondition.h"
#include "filter/ExpressionError.h"
#include "filter/FieldCondition.h"
#include "filter/OneElement.h"
#include "filter/Syntax.h"
#include "format/FieldPath.h"

#include <algorithm>

namespace where {

namespace {

using Kinds = std::vector<const KindModel*>;
using Conditions = std::vector<Condition>;    // one for each kind

// Where names are looked up.
struct Scope {
    Kinds kinds;
    std::string array{};    // in brackets the name of the field that holds the elements
};

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

// The names that the next one of the path could have had, of fields or of quantities.
std::vector<std::string> namesBehind(std::size_t known, const std::vector<FieldLookup>& lookups,
                                     std::vector<FieldModel> KindModel::*list)
{
    std::vector<std::string> names;
    for (const FieldLookup& lookup : lookups) {
        if (lookup.known == known && lookup.holder != nullptr) {
            for (const FieldModel& field : lookup.holder->*list) {
                names.push_back(quotedIfNeeded(field.name));
            }
        }
    }
    return names;
}

// Speaks of the kinds that have most of the path.
Problem unknownName(const std::vector<Token>& path, const std::vector<FieldLookup>& lookups,
                    const Scope& scope)
{
    std::size_t known = 0;
    for (const FieldLookup& lookup : lookups) {
        known = std::max(known, lookup.known);
    }
    const Token& missing = path[known];
    const std::vector<std::string> names = namesBehind(known, lookups, &KindModel::fields);
    const std::string& before = known == 0 ? scope.array : path[known - 1].text;
    if (names.empty()) {
        return {missing.place, "'" + before + "' has no parts", "expected a comparison, no dot"};
    }
    std::vector<std::string> meant;
    if (known == 0) {
        meant = longerPaths(missing.text, scope.kinds);
    }
    if (meant.empty()) {
        std::vector<std::string> candidates = namesBehind(known, lookups, &KindModel::quantities);
        candidates.insert(candidates.begin(), names.begin(), names.end());
        meant = nearestNames(missing.text, candidates);
    }
    const std::string where = before.empty() ? "no message that can pass has a field '"
                                             : "'" + before + "' has no part '";
    return {missing.place, where + missing.text + "'",
            meant.empty() ? listOf(names) : suggestion(meant)};
}

// One for each kind, at least one of which has the field.
std::vector<FieldLookup> lookUps(const std::vector<Token>& path, const Scope& scope)
{
    std::vector<std::string_view> names;
    for (const Token& name : path) {
        names.push_back(name.text);
    }
    std::vector<FieldLookup> lookups;
    for (const KindModel* kind : scope.kinds) {
        lookups.push_back(lookUp(*kind, names));
    }
    if (std::none_of(lookups.begin(), lookups.end(),
                     [&](const FieldLookup& lookup) { return lookup.known == names.size(); })) {
        throw unknownName(path, lookups, scope);
    }
    return lookups;
}

// A part of elements is asked of them as in brackets.
Condition conditionOn(const KindModel& kind, const FieldPath& path, const SyntaxNode& node)
{
    return path.part == nullptr ? fieldCondition(kind, *path.field, node)
                                : elementCondition(*path.field, fieldCondition(*path.field->element,
                                                                               *path.part, node));
}

// Kinds that do not have the field, or not so, never fulfil the condition.
Conditions fieldConditions(const SyntaxNode& node, const Scope& scope)
{
    if (scope.array.empty()) {
        if (const std::optional<Condition> same = envelopeCondition(node)) {
            return Conditions(scope.kinds.size(), *same);
        }
    }
    const std::vector<FieldLookup> lookups = lookUps(node.path, scope);
    Conditions conditions(lookups.size(), {.constant = false});
    std::optional<Problem> firstProblem;
    bool makesSense = false;
    for (std::size_t i = 0; i < lookups.size(); ++i) {
        if (lookups[i].known < node.path.size()) {
            continue;
        }
        try {
            conditions[i] = conditionOn(*scope.kinds[i], lookups[i].path, node);
            makesSense = true;
        } catch (const Problem& problem) {
            if (!firstProblem) {
                firstProblem = problem;
            }
        }
    }
    if (!makesSense) {
        throw *firstProblem;
    }
    return conditions;
}

Conditions conditionsOf(const SyntaxNode& node, const Scope& scope);

// What stands in brackets is about the kinds of elements.
Conditions bracketConditions(const SyntaxNode& node, const Scope& scope)
{
    const std::vector<FieldLookup> lookups = lookUps(node.path, scope);
    Scope inner{.kinds = {}, .array = node.path.back().text};
    for (const FieldLookup& lookup : lookups) {
        if (lookup.known == node.path.size() && lookup.holder != nullptr) {
            inner.kinds.push_back(lookup.holder);
        }
    }
    if (inner.kinds.empty()) {
        throw Problem{node.sign.place, "'" + inner.array + "' has no parts",
                      "expected a comparison, no bracket"};
    }
    Conditions ofElements = conditionsOf(node.parts.front(), inner);
    Conditions conditions(lookups.size(), {.constant = false});
    auto next = ofElements.begin();
    for (std::size_t i = 0; i < lookups.size(); ++i) {
        if (lookups[i].known == node.path.size() && lookups[i].holder != nullptr) {
            conditions[i] = elementCondition(*lookups[i].path.field, std::move(*next++));
        }
    }
    return conditions;
}

Conditions chainedConditions(const SyntaxNode& node, const Scope& scope)
{
    std::vector<Conditions> partsOfKinds(scope.kinds.size());
    for (const SyntaxNode& part : node.parts) {
        Conditions conditions = conditionsOf(part, scope);
        for (std::size_t i = 0; i < conditions.size(); ++i) {
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

Conditions conditionsOf(const SyntaxNode& node, const Scope& scope)
{
    Conditions conditions = node.kind == SyntaxNode::Kind::elements ? bracketConditions(node, scope)
                            : node.parts.empty()                    ? fieldConditions(node, scope)
                                                 : chainedConditions(node, scope);
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
        const where::SyntaxNode root = where::parseExpression(expression);
        std::vector<where::Condition> conditions = where::conditionsOf(root, {.kinds = kinds});
        where::requireOneElement(root);
        return conditions;
    } catch (const where::Problem& problem) {
        throw where::errorAt(expression, problem);
    }
}
