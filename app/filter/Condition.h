// A condition on the messages of one kind, with everything looked up.
#pragma once

#include <functional>
#include <optional>
#include <vector>

namespace where {

struct Condition {
    // The result when it is the same for all messages of the kind.
    std::optional<bool> constant{};
    // Otherwise tells it for a record, which must be of the kind that the condition was made for.
    // What is said of elements is asked of this one of the record, or, without one, of all of them,
    // any of which may meet it.
    std::function<bool(const void* record, const void* element)> test{};

    bool holds(const void* record, const void* element = nullptr) const
    {
        return constant ? *constant : test(record, element);
    }
};

Condition negationOf(Condition part);

// Parts that are the same for all messages are dropped, or decide at once.
Condition allOf(std::vector<Condition> parts);
Condition anyOf(std::vector<Condition> parts);

}    // namespace where
