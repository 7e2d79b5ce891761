// Which messages a command takes.
#pragma once

#include "filter/Condition.h"
#include "filter/FilterError.h"
#include "format/FormatModel.h"

#include <string>
#include <vector>

struct FilterOptions {
    // Names, identifiers or type numbers, also such as no kind has; empty for all.
    std::vector<std::string> kinds{};
    std::vector<std::string> stations{};         // numbers; empty for all
    std::vector<std::string> senders{};          // numbers (MMSI) of AIS stations; empty for all
    std::string where{};                         // expression over fields; empty for none
    std::vector<std::string> excludedKinds{};    // as kinds; taken away from these
    bool takesSenderless = false;    // with senders: also messages that did not come by AIS
};

class MessageFilter {
public:
    // Throws FilterError.
    MessageFilter(const FormatModel& model, const FilterOptions& options);

    // The main kinds that can pass, in the order of the format; the others may be switched off in
    // the decoder. Kinds whose messages can never fulfil the expression are not among them. Last
    // the unknown kind, unless there is an expression, which never holds for it.
    const std::vector<const KindModel*>& kinds() const { return passingKinds; }

    // Whether the options choose among messages at all.
    bool isRestricted() const { return restricted; }

    bool takesKind(const KindModel& kind) const
    {
        return conditions[kind.number()].constant != false;
    }
    // `record` is that of a message of the kind; of an element of it, if there is one, alone is
    // asked what the condition says of elements.
    bool takes(const where::Subject& subject, const KindModel& kind) const
    {
        return conditions[kind.number()].holds(subject);
    }

private:
    void restrict(const KindModel& kind, const where::Condition& more);
    void dropKinds();

    bool restricted;
    std::vector<const KindModel*> passingKinds;
    std::vector<where::Condition> conditions;    // by the number of the kind
};
