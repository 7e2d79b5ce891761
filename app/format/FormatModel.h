// A format as the commands see it: descriptors for what people are told, and the row of each kind
// and field for its values. Everything is looked up once, at the start.
#pragma once

#include "RTCM2_reader.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class FieldInfo;
class FormatInfo;
class MessageInfo;

struct KindModel;

// One field of a kind, or the quantity that its integer means, which is a field of its own with a
// name of its own.
struct FieldModel {
    const FieldInfo* info = nullptr;    // of a quantity that of the field
    int index = 0;                      // likewise
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
    // The characters of a text, as many as it announces and has room for.
    std::string_view characters(const void* record) const
    {
        return {RTCM2_reader_place(&reader, record), count(record)};
    }
};

// One message kind. A main kind of a format with type numbers has one, taken from the value that
// identifies it.
struct KindModel {
    const MessageInfo* info = nullptr;
    const RTCM2_kind_s* row = nullptr;
    std::string name;
    std::string text;    // short description; empty where there is none
    bool isMain = true;
    int typeNumber = -1;
    std::vector<FieldModel> fields;
    std::vector<FieldModel> quantities;    // of those fields that have one

    // Number of the kind, from 1 to RTCM2_last_kind().
    std::size_t number() const { return static_cast<std::size_t>(row->kind); }
    // The field or quantity of this display name or identifier, regardless of case; null when there
    // is none.
    const FieldModel* field(std::string_view nameOrIdentifier) const;
    // The first field of this meaning; null when there is none.
    const FieldModel* field(RTCM2_meaning_enum meaning) const;
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
    // Main kinds, then sub-message kinds, each in the order of their registration.
    const std::vector<std::unique_ptr<KindModel>>& kinds() const { return allKinds; }
    // The kind of a record; null for one that hosts are not told of.
    const KindModel* kindOf(const void* record) const;
    // The kind of this name, identifier or type number, regardless of case; null when there is
    // none.
    const KindModel* kind(std::string_view nameOrNumber) const;

private:
    void addKind(const MessageInfo* info);
    void addFields(KindModel& kind) const;
    static void addQuantities(KindModel& kind);
    const KindModel* modelOf(const RTCM2_kind_s* row) const;

    std::string formatName;
    std::vector<std::unique_ptr<KindModel>> allKinds;
    std::vector<const KindModel*> byNumber;    // by the number of the kind; null for others
};
