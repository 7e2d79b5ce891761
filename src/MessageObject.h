// What all message objects share: the record behind the object, its accessors' checks and its
// release. The rendered classes add one accessor per member.
#pragma once

#include "DescriptorLinks.h"
#include "MemLeakTracer.h"
#include "Message.h"
#include "MisuseTexts.h"

#include <QVector>

#include <type_traits>

// Stands where an object has no room for a record.
struct NoRecord {};

// `Traits` names the record type, the class, the codec's free function of the kind, and whether it
// is a main kind. An object that owns its record releases the record's arrays and then the record,
// which came from new. What the decoder hands out holds a copy of the decoded record in itself, so
// that a message takes one block of memory instead of two.
template <class Traits>
class MessageObject : public Message {
public:
    using Record = typename Traits::Record;

    ~MessageObject() override { disposeRepresentation(); }

protected:
    MessageObject(const MessageInfo* info, Record* record, bool owns)
        : Message(info), ownsRepresentation(owns)
    {
        MemLeakTracer::allocateObject(Traits::className());
        setRepresentation(record);
    }

    // Takes over the arrays of a decoded record.
    MessageObject(const MessageInfo* info, const Record& decoded)
        : Message(info), ownsRepresentation(true), copy(decoded)
    {
        MemLeakTracer::allocateObject(Traits::className());
        setRepresentation(&copy);
    }

    // The destructor of the class itself begins with this.
    void reportDestruction() const { MemLeakTracer::deallocateObject(Traits::className()); }

    bool hasRepresentation() const { return representation != nullptr; }

    void assertRepresentation() const
    {
        if (!hasRepresentation()) {
            qFatal("%s::assertRepresentation() failed when trying to access data of an "
                   "uninitialized message.",
                   qPrintable(Traits::className()));
        }
    }

    // The record, for accessors that read it.
    const Record& record() const
    {
        assertRepresentation();
        return *representation;
    }

    template <class T>
    static T presentValue(bool present, T value)
    {
        if (!present) {
            throwMisuse(MisuseTexts::absentOptionalMember);
        }
        return value;
    }

    // An element of an inline array. Counts may exceed the capacity in records that no decoder
    // made; what lies beyond it reads as 0.
    template <class T, unsigned Capacity>
    static T element(const T (&array)[Capacity], unsigned index)
    {
        return index < Capacity ? array[index] : T{};
    }

    template <class T, unsigned Capacity>
    static T checkedElement(const T (&array)[Capacity], unsigned count, unsigned index,
                            const char* outOfRange)
    {
        if (index >= count) {
            throwMisuse(outOfRange);
        }
        return element(array, index);
    }

    template <class T, unsigned Capacity>
    static QVector<T> elementVector(const T (&array)[Capacity], unsigned count)
    {
        QVector<T> elements;
        elements.reserve(static_cast<int>(count));
        for (unsigned i = 0; i < count; ++i) {
            elements.append(element(array, i));
        }
        return elements;
    }

    Record* representation = nullptr;
    bool ownsRepresentation;

private:
    const void* getRawRepresentation() const override { return representation; }

    void setRepresentation(Record* record) { representation = record; }

    void disposeRepresentation()
    {
        if (hasRepresentation() && ownsRepresentation) {
            Traits::freeChildren(representation);
            deleteRecord();
        }
        representation = nullptr;
    }

    void deleteRecord()
    {
        if constexpr (Traits::isMain) {
            if (representation == &copy) {
                return;
            }
        }
        delete representation;
    }

    [[no_unique_address]] std::conditional_t<Traits::isMain, Record, NoRecord> copy{};
};
