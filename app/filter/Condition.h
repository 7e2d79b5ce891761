// A condition on the messages of one kind, with everything looked up.
#pragma once

#include <memory>
#include <optional>
#include <vector>

namespace where {

class Condition {
public:
    virtual ~Condition() = default;

    // The record must be of the kind that the condition was made for.
    virtual bool holds(const void* record) const = 0;

    // The result when it is the same for all messages of the kind.
    virtual std::optional<bool> constant() const { return std::nullopt; }
};

using ConditionPtr = std::unique_ptr<Condition>;

ConditionPtr always(bool result);
ConditionPtr negationOf(ConditionPtr part);

// Parts that are the same for all messages are dropped, or decide at once.
ConditionPtr allOf(std::vector<ConditionPtr> parts);
ConditionPtr anyOf(std::vector<ConditionPtr> parts);

}    // namespace where
