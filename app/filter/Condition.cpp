#include "filter/Condition.h"

#include <algorithm>

namespace where {

namespace {

class Constant : public Condition {
public:
    explicit Constant(bool value) : result(value) {}
    bool holds(const void*) const override { return result; }
    std::optional<bool> constant() const override { return result; }

private:
    bool result;
};

class Negation : public Condition {
public:
    explicit Negation(ConditionPtr negated) : part(std::move(negated)) {}
    bool holds(const void* record) const override { return !part->holds(record); }

private:
    ConditionPtr part;
};

// Has the value `decisive` as soon as one part has it.
class Chain : public Condition {
public:
    Chain(std::vector<ConditionPtr> chained, bool decides)
        : parts(std::move(chained)), decisive(decides)
    {
    }

    bool holds(const void* record) const override
    {
        const bool decided = std::any_of(parts.begin(), parts.end(), [&](const ConditionPtr& part) {
            return part->holds(record) == decisive;
        });
        return decided == decisive;
    }

private:
    std::vector<ConditionPtr> parts;
    bool decisive;
};

ConditionPtr chain(std::vector<ConditionPtr> parts, bool decisive)
{
    for (const ConditionPtr& part : parts) {
        if (part->constant() == decisive) {
            return always(decisive);
        }
    }
    parts.erase(std::remove_if(parts.begin(), parts.end(),
                               [](const ConditionPtr& part) { return part->constant(); }),
                parts.end());
    if (parts.empty()) {
        return always(!decisive);
    }
    return parts.size() == 1 ? std::move(parts.front())
                             : std::make_unique<Chain>(std::move(parts), decisive);
}

}    // namespace

ConditionPtr always(bool result)
{
    return std::make_unique<Constant>(result);
}

ConditionPtr negationOf(ConditionPtr part)
{
    if (const auto constant = part->constant()) {
        return always(!*constant);
    }
    return std::make_unique<Negation>(std::move(part));
}

ConditionPtr allOf(std::vector<ConditionPtr> parts)
{
    return chain(std::move(parts), false);
}

ConditionPtr anyOf(std::vector<ConditionPtr> parts)
{
    return chain(std::move(parts), true);
}

}    // namespace where
