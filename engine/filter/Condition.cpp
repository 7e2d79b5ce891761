#include "filter/Condition.h"

#include <algorithm>

namespace where {

namespace {

// Has the value `decisive` as soon as one part has it.
Condition chain(std::vector<Condition> parts, bool decisive)
{
    for (const Condition& part : parts) {
        if (part.constant == decisive) {
            return part;
        }
    }
    std::erase_if(parts, [](const Condition& part) { return part.constant.has_value(); });
    if (parts.empty()) {
        return {.constant = !decisive};
    }
    if (parts.size() == 1) {
        return std::move(parts.front());
    }
    return {.test = [parts = std::move(parts), decisive](const Subject& subject) {
        const bool decided = std::any_of(parts.begin(), parts.end(), [&](const Condition& part) {
            return part.test(subject) == decisive;
        });
        return decided == decisive;
    }};
}

}    // namespace

Condition negationOf(Condition part)
{
    if (part.constant) {
        return {.constant = !*part.constant};
    }
    return {
        .test = [test = std::move(part.test)](const Subject& subject) { return !test(subject); }};
}

Condition allOf(std::vector<Condition> parts)
{
    return chain(std::move(parts), false);
}

Condition anyOf(std::vector<Condition> parts)
{
    return chain(std::move(parts), true);
}

}    // namespace where
