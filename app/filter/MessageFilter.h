// Which messages a command takes.
#pragma once

#include "filter/FilterError.h"
#include "format/FormatModel.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

struct FilterOptions {
    std::vector<std::string> kinds{};       // names, identifiers or type numbers; empty for all
    std::vector<std::string> stations{};    // numbers; empty for all
    std::string where{};                    // expression over fields; empty for none
    std::vector<std::string> excludedKinds{};    // as kinds; taken away from these
};

class Expression;

class MessageFilter {
public:
    // `stationField` is the display name of the field that tells the station. Throws FilterError.
    MessageFilter(const FormatModel& model, const FilterOptions& options,
                  const std::string& stationField);
    ~MessageFilter();
    MessageFilter(const MessageFilter&) = delete;
    MessageFilter& operator=(const MessageFilter&) = delete;

    // The main kinds that can pass, in the order of the format; the others may be switched off in
    // the decoder. Kinds whose messages can never fulfil the expression are not among them.
    const std::vector<const KindModel*>& kinds() const { return passingKinds; }

    bool takesKind(const KindModel& kind) const { return isPassing[kind.number()]; }
    // `record` is that of a message of the kind.
    bool takes(const void* record, const KindModel& kind) const;

private:
    void chooseKinds(const FormatModel& model, const FilterOptions& options);
    void chooseStations(const FilterOptions& options, const std::string& stationField);
    void chooseByExpression(const std::string& where);
    bool takesStation(const void* record, const KindModel& kind) const;

    std::vector<const KindModel*> passingKinds;
    std::vector<bool> isPassing;    // by the number of the kind
    std::vector<std::uint64_t> stations;
    std::unordered_map<const KindModel*, const FieldModel*> stationFields;
    std::unique_ptr<Expression> expression;
};
