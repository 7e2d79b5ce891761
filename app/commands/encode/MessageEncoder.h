// Makes packed messages from values that are given by name.
#pragma once

#include "commands/encode/Integer.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// One message after another: begin(), what is known of its members in any order, finish(). Every
// kind of the codec can be made. After a mistake the rest of the message is ignored; problem()
// tells the first one, naming the member.
//
// Not needed are what every message of the kind has (preamble, type), the lengths of what is given,
// the number of data words, for which the smallest that holds everything is taken, and whatever is
// no part of the message itself; where they are given all the same they must agree. A member and
// its parts stand for each other. Every other member has to be given.
class MessageEncoder {
public:
    // What a member takes.
    enum class Shape { integer, real, text, bytes, elements };

    // A member of the record that is being filled.
    struct Member {
        int index;
        Shape shape;
    };

    virtual ~MessageEncoder() = default;

    // Begins a message of this kind, by name or identifier. False when there is none.
    [[nodiscard]] virtual bool begin(std::string_view kindName) = 0;
    // Name of the message's kind, for people.
    virtual const std::string& kindName() const = 0;

    // The member of this identifier or name; nothing when there is none.
    virtual std::optional<Member> member(std::string_view name) = 0;
    virtual void set(Member member, Integer value) = 0;
    virtual void set(Member member, double value) = 0;
    // A byte is a character.
    virtual void setText(Member member, std::string_view characters) = 0;
    virtual void beginBytes(Member member) = 0;
    virtual void addByte(Member member, Integer value) = 0;
    // The members of an element are set between beginElement() and endElement().
    virtual void beginElements(Member member) = 0;
    virtual void beginElement(Member member) = 0;
    virtual void endElement() = 0;

    // The packed message, valid until the next begin(); empty when there was a problem. `fill`
    // holds the bits behind the content as characters 0 and 1; without it they are 1010... as
    // stations send them.
    virtual std::span<const std::uint8_t> finish(std::optional<std::string_view> fill) = 0;

    // Notes what is wrong with a member of the record that is being filled.
    virtual void fail(Member member, const std::string& reason) = 0;
    // Notes that this record has no member of that name.
    virtual void failUnknown(std::string_view name) = 0;
    // Notes what is wrong with something else.
    virtual void fail(const std::string& reason) = 0;
    virtual bool failed() const = 0;
    virtual const std::string& problem() const = 0;
};

std::unique_ptr<MessageEncoder> makeMessageEncoder();
