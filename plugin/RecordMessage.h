// What all message objects share: the record behind the object, the checks of its accessors, its
// raw line, its sub-messages and its release. The rendered classes add one accessor per member.
#pragma once

#include "Message.h"
#include "PluginExport.h"
#include "RTCM2_format.h"
#include "SubMessages.h"

#include <QVector>

#include <cstdlib>
#include <memory>
#include <span>
#include <type_traits>

// An object either refers to a record of somebody else or owns one: that came from new, as a record
// of exactly the kind's type, and goes with the object, its arrays first. What the decoder hands
// out holds a copy of the decoded record in itself, so that a message takes one block of memory
// instead of two.
class VORLO_RTCM2_EXPORT RecordMessage : public Message {
public:
    // The row of the message's kind.
    const RTCM2_kind_s& kindRow() const { return *RTCM2_kind(kind); }

    // The record, for whoever reads it. Without one the process ends.
    const void* assertedRecord() const
    {
        if (representation == nullptr) [[unlikely]] {
            failWithoutRecord();
        }
        return representation;
    }

    // The index-th object of the message's array, which is made when it is first asked for.
    const Message* subMessage(const RTCM2_member_s& array, unsigned index) const;

    // Those that exist at this moment.
    QVector<Message*> getSubMessages() override;
    QVector<const Message*> getSubMessages() const override;

    QString getRawStringFor(const QVector<bool>& selection) const override;

    // Throw for a value that the message does not have.
    void demandPresent(const RTCM2_member_s& member) const;
    void demandIndex(const RTCM2_member_s& member, unsigned index) const;

    // The number of values that accessors tell: a run of characters counts its terminator.
    unsigned numberOf(const RTCM2_member_s& member) const;

protected:
    enum class Hold { reference, own, copy };

    RecordMessage(RTCM2_message_enum ofKind, const MessageInfo* info, void* record)
        : Message(info), representation(record), kind(ofKind)
    {
    }

    // The constructor of the class itself ends with this: until then the record is the caller's.
    void take(Hold holding) { hold = holding; }

    bool hasRecord() const { return representation != nullptr; }
    bool has(int member) const;
    const RTCM2_member_s& member(int index) const { return kindRow().members[index]; }

    void* representation;
    mutable std::unique_ptr<SubMessages> subMessages;

    Hold hold = Hold::reference;

private:
    const void* getRawRepresentation() const override { return representation; }
    // Makes the objects of the array's elements, in the classes that have one.
    virtual void makeSubMessages() const {}

    [[noreturn]] void failWithoutRecord() const;

    const RTCM2_message_enum kind;
};

// Stands where an object has no room for a record.
struct NoRecord {};

// A message object on a record of the codec; main kinds have room for a decoded one. `elements` is
// the record's array of sub-records, where it has one.
template <class RecordType, bool isMain, auto elements = nullptr>
class MessageOf : public RecordMessage {
public:
    using Record = RecordType;

    ~MessageOf() override
    {
        subMessages.reset();
        if (!hasRecord() || hold == Hold::reference) {
            return;
        }
        if constexpr (elements != nullptr) {
            std::free(unchecked()->*elements);
        }
        if (hold == Hold::own) {
            delete unchecked();
        }
    }

protected:
    // What the rendered class derives from.
    using Shared = MessageOf;

    MessageOf(RTCM2_message_enum ofKind, const MessageInfo* info, Record* record)
        : RecordMessage(ofKind, info, record)
    {
    }

    // On a copy of a decoded record.
    MessageOf(RTCM2_message_enum ofKind, const MessageInfo* info, const Record& decoded)
        : RecordMessage(ofKind, info, &copy), copy(decoded)
    {
    }

    const Record& record() const { return *static_cast<const Record*>(assertedRecord()); }
    Record* unchecked() const { return static_cast<Record*>(representation); }

    template <class T>
    T presentValue(int index, T value) const
    {
        demandPresent(member(index));
        return value;
    }

    // An element of an inline array. Counts may exceed the capacity in records that no decoder
    // made; what lies beyond it reads as 0.
    template <class T, unsigned Capacity>
    T elementOf(int run, const T (&array)[Capacity], unsigned index) const
    {
        demandIndex(member(run), index);
        return index < Capacity ? array[index] : T{};
    }

    template <class T, unsigned Capacity>
    QVector<T> elementsOf(int run, const T (&array)[Capacity]) const
    {
        const unsigned count = numberOf(member(run));
        QVector<T> values;
        values.reserve(static_cast<int>(count));
        for (unsigned i = 0; i < count; ++i) {
            values.append(i < Capacity ? array[i] : T{});
        }
        return values;
    }

private:
    [[no_unique_address]] std::conditional_t<isMain, Record, NoRecord> copy{};
};

// A main message with an array of sub-records; `array` and `count` are the record's members.
template <class Record, class Element, auto array, auto count>
class MessageWithSubMessages : public MessageOf<Record, true, array> {
    using Base = MessageOf<Record, true, array>;

protected:
    using Shared = MessageWithSubMessages;
    using Base::Base;

    // The elements are told their new parent.
    MessageWithSubMessages(RTCM2_message_enum ofKind, const MessageInfo* info,
                           const Record& decoded)
        : Base(ofKind, info, decoded)
    {
        for (auto& element : std::span(decoded.*array, decoded.*count)) {
            element.parent = this->representation;
        }
    }

    Element* element(int member, unsigned index) const
    {
        this->record();
        this->demandIndex(this->member(member), index);
        return made().elements[static_cast<int>(index)];
    }

    // The objects of all elements, made unless that has been done.
    const SubMessagesOf<Element>& made() const
    {
        if (this->subMessages == nullptr) {
            makeSubMessages();
        }
        return static_cast<const SubMessagesOf<Element>&>(*this->subMessages);
    }

private:
    void makeSubMessages() const override
    {
        auto* self = const_cast<MessageWithSubMessages*>(this);
        this->subMessages = std::make_unique<SubMessagesOf<Element>>(this->record().*array,
                                                                     this->record().*count, self);
    }
};
