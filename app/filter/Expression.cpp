#include "filter/Expression.h"

#include "filter/Resolver.h"

Expression::Expression(std::string_view text, const std::vector<const KindModel*>& kinds)
{
    const where::SyntaxNode syntax = where::parseExpression(text);
    std::vector<where::ConditionPtr> resolved = where::Resolver(text, kinds).resolve(syntax);
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        conditions.emplace(kinds[i], std::move(resolved[i]));
    }
}

Expression::~Expression() = default;

bool Expression::canHold(const KindModel& kind) const
{
    const auto found = conditions.find(&kind);
    return found != conditions.end() && found->second->constant() != false;
}

bool Expression::holds(const void* record, const KindModel& kind) const
{
    const auto found = conditions.find(&kind);
    return found != conditions.end() && found->second->holds(record);
}
