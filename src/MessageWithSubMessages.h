// Message objects whose record holds an array of sub-records: each element is a message object of
// its own, made when it is first asked for and owned by the main object.
#pragma once

#include "MessageObject.h"

#include <QVector>

#include <utility>

// Keeps the objects of one array in step with it. `Element` is the message class of the elements.
template <class Element>
class SubMessageObjects {
public:
    SubMessageObjects() = default;
    SubMessageObjects(const SubMessageObjects&) = delete;
    SubMessageObjects& operator=(const SubMessageObjects&) = delete;
    ~SubMessageObjects() { dispose(); }

    // Makes the objects match the array. An object whose element is still at its address stays.
    // `identify` gives the record behind an object.
    template <class Record, class Identify>
    void ensure(Record* array, unsigned count, Message* parent, Identify identify)
    {
        if (valid) {
            return;
        }
        QVector<Message*> old = std::exchange(untyped, {});
        typed.clear();
        untyped.reserve(static_cast<int>(count));
        typed.reserve(static_cast<int>(count));
        for (unsigned i = 0; i < count; ++i) {
            Element* object = takeFor(array + i, old, identify);
            if (object == nullptr) {
                object = new Element(array + i, parent, false);
            }
            untyped.append(object);
            typed.append(object);
        }
        qDeleteAll(old);
        valid = true;
    }

    void dispose()
    {
        qDeleteAll(untyped);
        untyped.clear();
        valid = false;
    }

    const QVector<Element*>& elements() const { return typed; }
    const QVector<Message*>& messages() const { return untyped; }

private:
    template <class Identify>
    static Element* takeFor(const void* element, QVector<Message*>& old, Identify identify)
    {
        for (int i = 0; i < old.size(); ++i) {
            if (identify(old[i]) == element) {
                return static_cast<Element*>(old.takeAt(i));
            }
        }
        return nullptr;
    }

    bool valid = false;
    QVector<Element*> typed;
    QVector<Message*> untyped;
};

// `Traits` additionally names the element class and where the record keeps array and count.
template <class Traits>
class MessageWithSubMessages : public MessageObject<Traits> {
    using Base = MessageObject<Traits>;
    using Element = typename Traits::Element;

public:
    // Sub-message objects refer into the record's array, so they go before it does.
    ~MessageWithSubMessages() override { subMessages.dispose(); }

    QVector<Message*> getSubMessages() override { return subMessages.messages(); }

    QVector<const Message*> getSubMessages() const override
    {
        const QVector<Message*>& objects = subMessages.messages();
        return QVector<const Message*>(objects.cbegin(), objects.cend());
    }

protected:
    using Base::Base;

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
        subMessages.ensure(Traits::array(this->record()), count(), self, [](const Message* object) {
            return Message::getRawRepresentationOf(object);
        });
        return subMessages.elements();
    }

    QVector<const Element*> allConstSubMessages() const
    {
        const QVector<Element*>& objects = allSubMessages();
        return QVector<const Element*>(objects.cbegin(), objects.cend());
    }

private:
    mutable SubMessageObjects<Element> subMessages;
};
