// Holds one reference on a message.
#pragma once

#include "Message.h"

#include <utility>

class MessageReference {
public:
    MessageReference() = default;
    explicit MessageReference(const Message* referenced) : message(referenced)
    {
        if (message != nullptr) {
            message->addReference();
        }
    }
    MessageReference(MessageReference&& other) noexcept
        : message(std::exchange(other.message, nullptr))
    {
    }
    MessageReference& operator=(MessageReference&& other) noexcept
    {
        std::swap(message, other.message);
        other.drop();
        return *this;
    }
    ~MessageReference() { drop(); }

    const Message* get() const { return message; }
    void drop()
    {
        if (message != nullptr) {
            std::exchange(message, nullptr)->removeReference();
        }
    }

private:
    const Message* message = nullptr;
};
