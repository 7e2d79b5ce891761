// Looks up the names of a parsed expression, once for every kind.
#pragma once

#include "filter/Condition.h"
#include "filter/ExpressionError.h"
#include "filter/FieldCondition.h"
#include "filter/Syntax.h"

#include <string_view>
#include <vector>

namespace where {

class Resolver {
public:
    // Both must outlive the resolver.
    Resolver(std::string_view text, const std::vector<const KindModel*>& passing);

    // One condition for each kind, in the order of the kinds. Throws FilterError for what makes
    // sense for none of them.
    std::vector<ConditionPtr> resolve(const SyntaxNode& node) const;

private:
    std::vector<ConditionPtr> resolveParts(const SyntaxNode& node) const;
    std::vector<ConditionPtr> resolveField(const SyntaxNode& node) const;
    Problem unknownName(const std::vector<PlacedText>& path,
                        const std::vector<FieldLookup>& lookups) const;
    std::vector<std::string> longerPaths(const std::string& name) const;

    std::string_view expression;
    const std::vector<const KindModel*>& kinds;
};

}    // namespace where
