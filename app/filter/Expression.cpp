#include "Expression.h"

#include "MessageFilter.h"

Expression::Expression(std::string_view, const std::vector<const KindModel*>&)
{
    throw FilterError{"--where is not available yet"};
}

Expression::~Expression() = default;

bool Expression::holds(const Message&, const KindModel&) const
{
    return false;
}
