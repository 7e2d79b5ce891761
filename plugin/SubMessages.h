// The message objects of the elements of an array, owned by the message whose array it is.
#pragma once

#include <QVector>

#include <deque>

class Message;

struct SubMessages {
    virtual ~SubMessages() = default;

    QVector<Message*> messages;
};

// `Element` is the message class of the elements.
template <class Element>
struct SubMessagesOf final : SubMessages {
    template <class Record>
    SubMessagesOf(Record* array, unsigned count, Message* parent)
    {
        messages.reserve(static_cast<int>(count));
        elements.reserve(static_cast<int>(count));
        constElements.reserve(static_cast<int>(count));
        for (unsigned i = 0; i < count; ++i) {
            Element* object = &owned.emplace_back(array + i, parent, false);
            messages.append(object);
            elements.append(object);
            constElements.append(object);
        }
    }

    QVector<Element*> elements;
    QVector<const Element*> constElements;
    std::deque<Element> owned;
};
