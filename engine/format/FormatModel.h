// A format as the commands see it: the row of each kind and field, with the names that people are
// told. Everything is looked up once, at the start.
#pragma once

#include "RTCM2_reader.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class FormatInfo;
class MessageInfo;

struct KindModel;

// One field of a kind, or the quantity that its integer means, which is a field of its own with a
// name of its own.
struct FieldModel {
    int index = 0;    // of a quantity that of the field
    const RTCM2_member_s* row = nullptr;
    RTCM2_reader_s reader{};                              // of the row
    std::optional<RTCM2_quantity_reader_s> quantity{};    // set in a quantity
    std::string name;                                     // display name, UTF-8
    std::string
        identifier;      // the display name as one word: what is no letter or digit becomes "_"
    std::string unit;    // empty where there is none
    const KindModel* element = nullptr;    // kind of the elements of a sub-message field

    bool isRepeated() const { return row->length != nullptr; }
    bool isOptional() const { return row->when != nullptr; }
    bool isText() const { return row->type == RTCM2_TYPE_CHARACTER; }
    bool isReal() const { return row->type == RTCM2_TYPE_REAL; }
    bool isQuantity() const { return quantity.has_value(); }
    // A number of units; else it is the name of a satellite.
    bool isScaled() const { return isQuantity() && row->quantity->is_satellite == 0; }
    // Whether some values have a text of their own.
    bool hasTexts() const
    {
        return !isQuantity() && (row->text_count != 0 || row->has_do_not_use != 0);
    }
    // Whether the field means something in a record of this system, which may be unknown.
    bool concerns(const RTCM2_system_s* system) const
    {
        return row->system == nullptr || row->system == system;
    }

    // Whether the field has a place in the message; a text may have one without characters.
    bool isPresent(const void* record) const
    {
        return isText() ? RTCM2_reader_is_present(&reader, record) != 0 : count(record) != 0;
    }
    // Values in a record of the field's kind; of a text its characters without the terminator.
    unsigned count(const void* record) const { return RTCM2_reader_count(&reader, record); }
    // Calls back with the record of each element of a sub-message field.
    template <class Function>
    void eachElement(const void* record, Function function) const
    {
        const char* next = RTCM2_reader_elements(&reader, record);
        for (unsigned left = count(record); left > 0; --left, next += reader.stride) {
            function(static_cast<const void*>(next));
        }
    }
    // Likewise, until the answer is true. Whether one was.
    template <class Function>
    bool anyElement(const void* record, Function function) const
    {
        const char* next = RTCM2_reader_elements(&reader, record);
        for (unsigned left = count(record); left > 0; --left, next += reader.stride) {
            if (function(static_cast<const void*>(next))) {
                return true;
            }
        }
        return false;
    }
    // The characters of a text, as many as it announces and has room for.
    std::string_view characters(const void* record) const
    {
        return {RTCM2_reader_place(&reader, record), count(record)};
    }
};

// One message kind, or all messages of no kind, of which only the header is known.
struct KindModel {
    const MessageInfo* info = nullptr;    // null where the plug-in tells hosts nothing of the kind
    const RTCM2_kind_s* row = nullptr;    // where it is unknown, that of a kind with this header
    std::string name;
    std::string text;    // short description; empty where there is none
    bool isMain = true;
    bool isUnknown = false;
    int typeNumber = -1;    // of a main kind
    std::vector<FieldModel> fields;
    std::vector<FieldModel> quantities;    // of those fields that have one

    // Number of the kind, from 1 to RTCM2_last_kind(); 0 where it is unknown.
    std::size_t number() const { return isUnknown ? 0 : static_cast<std::size_t>(row->kind); }
    // The field or quantity of this display name or identifier, regardless of case; null when there
    // is none.
    const FieldModel* field(std::string_view nameOrIdentifier) const;
    // Calls back with each field and then with each quantity.
    template <class Function>
    void eachField(Function function) const
    {
        std::for_each(fields.begin(), fields.end(), function);
        std::for_each(quantities.begin(), quantities.end(), function);
    }
    // The first field of this meaning; null when there is none.
    const FieldModel* field(RTCM2_meaning_enum meaning) const;
    // Whether other fields are in a message or not by the value of this one.
    bool decidesPresence(const FieldModel& field) const;
    // The quantity of a field of this kind; null when it has none.
    const FieldModel* quantityOf(const FieldModel& field) const;
};

class FormatModel {
public:
    // The format's descriptors must outlive the model.
    explicit FormatModel(const FormatInfo* format);
    FormatModel(const FormatModel&) = delete;
    FormatModel& operator=(const FormatModel&) = delete;

    const std::string& name() const { return formatName; }
    // Main kinds by their type, then sub-message kinds by their number.
    const std::vector<std::unique_ptr<KindModel>>& kinds() const { return allKinds; }
    // Not one of the kinds.
    const KindModel& unknownKind() const { return unknown; }
    // The kind of a record; null for a record of none.
    const KindModel* kindOf(const void* record) const { return modelOf(RTCM2_kind_of(record)); }
    const KindModel* modelOf(const RTCM2_kind_s* row) const;
    // The kind of this name, identifier or type number, regardless of case; null when there is
    // none.
    const KindModel* kind(std::string_view nameOrNumber) const;

private:
    void addKind(const RTCM2_kind_s& row);
    void addFields(KindModel& kind) const;
    FieldModel fieldOf(const RTCM2_member_s& row) const;
    static void addQuantities(KindModel& kind);
    void describeUnknown();

    std::string formatName;
    std::vector<std::unique_ptr<KindModel>> allKinds;
    std::vector<KindModel*> byNumber;               // by the number of the kind
    const RTCM2_kind_s* describedKind = nullptr;    // the first main kind with names for people
    KindModel unknown;
};
