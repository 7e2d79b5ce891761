// A condition on the messages of one kind, with everything looked up.
#pragma once

#include "forms/Envelope.h"

#include <functional>
#include <optional>
#include <vector>

namespace where {

// What a condition is asked of.
struct Subject {
    const void* record;    // of the kind that the condition was made for
    // What is said of elements is asked of this one of the record, or, without one, of all of them,
    // any of which may meet it.
    const void* element = nullptr;
    const Envelope* envelope = nullptr;    // null for elements, which have none
};

struct Condition {
    // The result when it is the same for all messages of the kind.
    std::optional<bool> constant{};
    std::function<bool(const Subject& subject)> test{};    // otherwise

    bool holds(const Subject& subject) const { return constant ? *constant : test(subject); }
};

Condition negationOf(Condition part);

// Parts that are the same for all messages are dropped, or decide at once.
Condition allOf(std::vector<Condition> parts);
Condition anyOf(std::vector<Condition> parts);

}    // namespace where
