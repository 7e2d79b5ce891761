// Message objects whose record holds an array of sub-records: each element is a message object of
// its own, made when it is first asked for and owned by the main object.
#pragma once

#include "MessageObject.h"

#include <QVector>

#include <deque>
#include <memory>
#include <span>
#include <utility>

// The objects of one array. `Element` is the message class of the elements.
template <class Element>
class SubMessageObjects {
public:
    // Makes the objects unless that has been done.
    template <class Record>
    void ensure(Record* array, unsigned count, Message* parent)
    {
        if (made != nullptr) {
            return;
        }
        auto objects = std::make_unique<Objects>();
        objects->typed.reserve(static_cast<int>(count));
        objects->untyped.reserve(static_cast<int>(count));
        for (unsigned i = 0; i < count; ++i) {
            Element* object = &objects->owned.emplace_back(array + i, parent, false);
            objects->typed.append(object);
            objects->untyped.append(object);
        }
        made = std::move(objects);
    }

    // To be asked for when the objects have been made.
    const QVector<Element*>& elements() const { return made->typed; }
    // Empty as long as they have not.
    QVector<Message*> messages() const { return made ? made->untyped : QVector<Message*>(); }

private:
    // Most messages are never asked for their elements and need none of this.
    struct Objects {
        std::deque<Element> owned;
        QVector<Element*> typed;
        QVector<Message*> untyped;
    };

    std::unique_ptr<Objects> made;
};

// `Traits` additionally names the element class and where the record keeps array and count.
template <class Traits>
class MessageWithSubMessages : public MessageObject<Traits> {
    using Base = MessageObject<Traits>;
    using Element = typename Traits::Element;

public:
    QVector<Message*> getSubMessages() override { return subMessages.messages(); }

    QVector<const Message*> getSubMessages() const override
    {
        const QVector<Message*> objects = subMessages.messages();
        return QVector<const Message*>(objects.cbegin(), objects.cend());
    }

protected:
    using Base::Base;

    // The elements are told their new parent.
    MessageWithSubMessages(const MessageInfo* info, const typename Base::Record& decoded)
        : Base(info, decoded)
    {
        for (auto& element : std::span(Traits::array(decoded), Traits::count(decoded))) {
            element.parent = this->representation;
        }
    }

    unsigned count() const { return Traits::count(this->record()); }

    Element* subMessage(unsigned index, const char* outOfRange) const
    {
        if (index >= count()) {
            throwMisuse(outOfRange);
        }
        return allSubMessages()[static_cast<int>(index)];
    }

    const QVector<Element*>& allSubMessages() const
    {
        auto* self = const_cast<MessageWithSubMessages*>(this);
        subMessages.ensure(Traits::array(this->record()), count(), self);
        return subMessages.elements();
    }

    QVector<const Element*> allConstSubMessages() const
    {
        const QVector<Element*>& objects = allSubMessages();
        return QVector<const Element*>(objects.cbegin(), objects.cend());
    }

private:
    // They refer into the record's array, which is the base's and goes after them.
    mutable SubMessageObjects<Element> subMessages;
};
