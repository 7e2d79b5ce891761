// What can be plotted: the numbers of all kinds, none of them twice.
#pragma once

#include "curves/FieldCurves.h"
#include "format/FormatModel.h"

#include <set>
#include <string>
#include <vector>

// A field by the same name in the same elements, or in the messages themselves, of some kinds.
struct PlotField {
    std::string name;     // "Corrections.PRC_m"
    std::string unit;     // empty where there is none
    std::string kinds;    // in which it is, for people
    std::vector<std::pair<const KindModel*, FieldPath>> paths{};

    const FieldModel& field() const { return paths.front().second.last(); }
};

// Whether its values are numbers, and not names.
bool isPlottable(const PlotField& field);

class PlotFields {
public:
    // Of the kinds of these types of messages.
    PlotFields(const FormatModel& model, const std::set<std::uint16_t>& types);

    const std::vector<PlotField>& all() const { return fields; }
    // Those whose values can be told apart by, in the same records as those of a field.
    std::vector<const PlotField*> keysFor(const PlotField& field) const;

    // What is looked at first: the first correction, else the first number; null where there is
    // none.
    const PlotField* first() const;
    // By their meaning, of the same records; null where they have none.
    const PlotField* satelliteOf(const PlotField& field) const;
    const PlotField* issueOf(const PlotField& field) const;
    // Of this name; null where there is none.
    const PlotField* named(const std::string& name) const;

private:
    void addKind(const KindModel& kind);
    void addField(const KindModel& kind, const FieldPath& path);
    const PlotField* beside(const PlotField& field, RTCM2_meaning_enum meaning) const;

    std::vector<PlotField> fields;
};

// What is followed so that there is a line for each value of the key, broken where the issue
// changes. Both may be null.
std::vector<FollowedFields> followed(const PlotField& value, const PlotField* key,
                                     const PlotField* issue);
