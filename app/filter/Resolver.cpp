#include "filter/Resolver.h"

#include "base/NearestName.h"
#include "filter/Lexer.h"

#include <algorithm>

namespace where {

namespace {

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

}    // namespace

Resolver::Resolver(std::string_view text, const std::vector<const KindModel*>& passing)
    : expression(text), kinds(passing)
{
}

std::vector<ConditionPtr> Resolver::resolve(const SyntaxNode& node) const
{
    const bool isField =
        node.kind == SyntaxNode::Kind::comparison || node.kind == SyntaxNode::Kind::presence;
    return isField ? resolveField(node) : resolveParts(node);
}

std::vector<ConditionPtr> Resolver::resolveParts(const SyntaxNode& node) const
{
    std::vector<std::vector<ConditionPtr>> partsOfKinds(kinds.size());
    for (const SyntaxNode& part : node.parts) {
        std::vector<ConditionPtr> resolved = resolve(part);
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            partsOfKinds[i].push_back(std::move(resolved[i]));
        }
    }
    std::vector<ConditionPtr> result;
    for (std::vector<ConditionPtr>& parts : partsOfKinds) {
        result.push_back(node.kind == SyntaxNode::Kind::all   ? allOf(std::move(parts))
                         : node.kind == SyntaxNode::Kind::any ? anyOf(std::move(parts))
                                                              : negationOf(std::move(parts[0])));
    }
    return result;
}

std::vector<ConditionPtr> Resolver::resolveField(const SyntaxNode& node) const
{
    std::vector<ConditionPtr> result;
    const std::vector<std::string_view> names(node.path.begin(), node.path.end());
    std::vector<FieldLookup> incomplete;
    std::optional<Problem> firstProblem;
    bool makesSense = false;
    for (const KindModel* kind : kinds) {
        const FieldLookup lookup = lookUp(*kind, names);
        result.push_back(always(false));
        if (lookup.known < names.size()) {
            incomplete.push_back(lookup);
            continue;
        }
        auto made = node.kind == SyntaxNode::Kind::presence
                        ? presenceOf(lookup.path)
                        : comparisonOf(*kind, lookup.path, node);
        if (auto* condition = std::get_if<ConditionPtr>(&made)) {
            result.back() = std::move(*condition);
            makesSense = true;
        } else if (!firstProblem) {
            firstProblem = std::get<Problem>(made);
        }
    }
    if (!makesSense) {
        throw errorAt(expression,
                      firstProblem ? *firstProblem : unknownName(node.path, incomplete));
    }
    return result;
}

// Speaks of the kinds that have most of the path.
Problem Resolver::unknownName(const std::vector<PlacedText>& path,
                              const std::vector<FieldLookup>& lookups) const
{
    std::size_t known = 0;
    for (const FieldLookup& lookup : lookups) {
        known = std::max(known, lookup.known);
    }
    const PlacedText& missing = path[known];
    std::vector<std::string> names;
    bool holdsMessages = known == 0;
    for (const FieldLookup& lookup : lookups) {
        if (lookup.known == known && lookup.holder != nullptr) {
            holdsMessages = true;
            for (const FieldModel& field : lookup.holder->fields) {
                names.push_back(quotedIfNeeded(field.name));
            }
        }
    }
    const std::string before = known == 0 ? "" : "'" + path[known - 1].text + "'";
    if (!holdsMessages) {
        return {missing.place, before + " has no parts", "expected a comparison, no dot"};
    }
    std::vector<std::string> nearest =
        known == 0 ? longerPaths(missing.text) : std::vector<std::string>();
    if (nearest.empty()) {
        nearest = nearestNames(missing.text, names);
    }
    const std::string where =
        known == 0 ? "no message that can pass has a field '" : before + " has no part '";
    return {missing.place, where + missing.text + "'",
            nearest.empty() ? listOf(names) : suggestion(nearest)};
}

// Where the name is that of a part of sub-messages.
std::vector<std::string> Resolver::longerPaths(const std::string& name) const
{
    std::vector<std::string> paths;
    for (const KindModel* kind : kinds) {
        for (const FieldModel& field : kind->fields) {
            const FieldModel* part =
                field.element != nullptr ? field.element->field(name) : nullptr;
            const std::string path =
                part == nullptr ? std::string()
                                : quotedIfNeeded(field.name) + "." + quotedIfNeeded(part->name);
            if (!path.empty() && std::find(paths.begin(), paths.end(), path) == paths.end()) {
                paths.push_back(path);
            }
        }
    }
    return paths;
}

}    // namespace where
