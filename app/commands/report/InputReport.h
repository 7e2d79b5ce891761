// What a report tells of one input, collected message by message.
#pragma once

#include "check/InputCheck.h"
#include "commands/position/Positions.h"
#include "commands/stats/StatsCounter.h"
#include "curves/FieldCurves.h"
#include "curves/Traffic.h"
#include "filter/MessageFilter.h"
#include "pictures/Axis.h"

#include <map>
#include <optional>
#include <string>
#include <utility>

// What is the same for all inputs of a report.
struct ReportSubject {
    ReportSubject(const FormatModel& formatModel, const Wanted& wantedOfThem,
                  const FilterOptions& chosen)
        : model(formatModel), wanted(wantedOfThem), filter(formatModel, chosen),
          format(formatModel), satellites(satelliteFields(formatModel))
    {
    }

    const FormatModel& model;
    const Wanted& wanted;
    MessageFilter filter;    // of what is counted and drawn; the verdict is about all messages
    CheckedFormat format;
    FollowedSatellites satellites;
    std::optional<std::int64_t> date{};    // near which inputs begin, in microseconds since 1970
};

// How often a station sent a text, and when, in seconds of the input's clock.
struct TextUse {
    std::uint64_t times = 0;
    double first = 0;
    double last = 0;
};

class InputReport {
public:
    // What is given must outlive the report.
    InputReport(const ReportSubject& reportSubject, const std::string& name);

    void take(const Found& found);
    // Nothing more comes.
    void finish(const ReaderCounters& readerCounters);

    using Texts = std::map<std::pair<StationId, std::string>, TextUse>;

    // Seconds on the axis of time: by the input's clock, and within that as the message itself
    // tells it, which may be somewhat off where it came another way or counts in another system's
    // time.
    double secondsOf(const Place& place) const;
    // What they are shown as.
    TimeScale times() const;
    // The time of a place, as on the axis; empty where it has none.
    std::string timeText(const Place& place) const
    {
        return place.time ? times().text(secondsOf(place)) : std::string();
    }

    const ReportSubject& subject;
    InputCheck check;
    StatsCounter counter;
    Stats stats;                // after the end
    ReaderCounters counters;    // likewise
    Traffic traffic;
    FieldCurves satellites;
    Positions positions;
    // How far points are from the position given or, without one, from where they were first told.
    std::map<Positions::Key, Curve> distances;
    Texts texts;
    std::uint64_t otherTexts = 0;    // for which there was no room
    DamageCurve damageByTime;        // by the input's clock
    DamageCurve damageByByte;

private:
    bool isChosen(const Found& found) const;
    // When the clock begins, in seconds since 1970, where that is known.
    std::optional<double> dateOf(double begin) const;
    double axisSeconds(const std::optional<InputCheck::Taken>& taken);
    void takePoints(const Found& found, double seconds);
    void takeText(const Found& found, const StationId& station, double seconds);

    std::vector<const FieldModel*> textFields;    // by the number of the kind; null: it has none
    Range shown;
    std::optional<std::int64_t> received;    // the first message, in microseconds since 1970
};
