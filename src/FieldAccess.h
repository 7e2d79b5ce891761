// How a field finds its values in a message: plain, optional, repeated, or optional and repeated.
// Each says whether the field is present, how often it occurs, what its index-th value is, and why
// a request for one is refused. The accessors are those of the message class.
#pragma once

#include "MisuseTexts.h"

// One value in every message.
template <class MessageT, auto get>
struct PlainAccess {
    using MessageClass = MessageT;
    static constexpr bool isOptional = false;
    static constexpr bool isRepeated = false;

    static unsigned int count(const MessageClass&) { return 1; }
    static auto value(const MessageClass& message, unsigned int) { return (message.*get)(); }
    static const char* refusal(const MessageClass&, unsigned int index)
    {
        return index == 0 ? nullptr : MisuseTexts::indexOfNonRepeated;
    }
};

// One value in the messages that have it.
template <class MessageT, auto has, auto get>
struct OptionalAccess {
    using MessageClass = MessageT;
    static constexpr bool isOptional = true;
    static constexpr bool isRepeated = false;

    static unsigned int count(const MessageClass& message) { return (message.*has)() ? 1 : 0; }
    static auto value(const MessageClass& message, unsigned int) { return (message.*get)(); }
    static const char* refusal(const MessageClass& message, unsigned int index)
    {
        return !(message.*has)() ? MisuseTexts::absentOptional
               : index == 0      ? nullptr
                                 : MisuseTexts::indexOfNonRepeated;
    }
};

// Any number of values.
template <class MessageT, auto number, auto get>
struct RepeatedAccess {
    using MessageClass = MessageT;
    static constexpr bool isOptional = false;
    static constexpr bool isRepeated = true;

    static unsigned int count(const MessageClass& message) { return (message.*number)(); }
    static auto value(const MessageClass& message, unsigned int index)
    {
        return (message.*get)(index);
    }
    static const char* refusal(const MessageClass& message, unsigned int index)
    {
        const unsigned int values = count(message);
        return values == 0      ? MisuseTexts::repeatedZeroTimes
               : index < values ? nullptr
                                : MisuseTexts::repeatedOutOfRange;
    }
};

// Any number of values in the messages that have the field.
template <class MessageT, auto has, auto number, auto get>
struct OptionalRepeatedAccess : RepeatedAccess<MessageT, number, get> {
    using Repeated = RepeatedAccess<MessageT, number, get>;
    static constexpr bool isOptional = true;

    static unsigned int count(const MessageT& message)
    {
        return (message.*has)() ? Repeated::count(message) : 0;
    }
    static const char* refusal(const MessageT& message, unsigned int index)
    {
        return (message.*has)() ? Repeated::refusal(message, index) : MisuseTexts::absentOptional;
    }
};

// Picks the const one of an overloaded pair of accessors.
template <class Result, class MessageT, class... Arguments>
constexpr auto constAccessor(Result (MessageT::*accessor)(Arguments...) const)
{
    return accessor;
}
