// What a line about a message says of its content: planned once for each kind by what its rows
// mean.
#pragma once

#include "base/Text.h"
#include "format/FormatModel.h"

#include <array>
#include <string>
#include <vector>

class BriefPlan {
public:
    BriefPlan() = default;
    // With `all`, fields that mean nothing with the system of the message are told, too.
    BriefPlan(const KindModel& kind, bool all);

    // Appends the content of a record of the kind; nothing where there is nothing to tell.
    void append(Text& text, const void* record) const;

private:
    enum class Shape : std::uint8_t {
        corrections,    // satellites with what is to be added
        satellites,
        elements,    // counted
        point,
        text,
        bytes,
        quantity,
        coded,
        number,
    };
    struct Item {
        Shape shape;
        const FieldModel* field;
        std::string label{};    // before the value
        std::string unit{};     // behind it
        const FieldModel* satellite = nullptr;
        const FieldModel* correction = nullptr;    // and its quantity:
        const FieldModel* scaled = nullptr;
        std::array<const FieldModel*, 3> position{};
    };

    void addArray(const FieldModel& field);
    void addPoint(const KindModel& kind, const RTCM2_point_s& point);
    void addField(const KindModel& kind, const FieldModel& field);
    bool appendItem(Text& text, const Item& item, const void* record) const;
    static void appendElements(Text& text, const Item& item, const void* record);
    static void appendCorrection(Text& text, const Item& item, const void* element);
    static bool appendPoint(Text& text, const Item& item, const void* record);
    static void appendBytes(Text& text, const Item& item, const void* record);

    bool tellsAll = false;
    std::vector<Item> items;
};
