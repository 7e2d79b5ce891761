// Which messages a command takes.
#pragma once

#include "FormatModel.h"

#include <memory>
#include <string>
#include <vector>

class Message;

struct FilterOptions {
    std::vector<std::string> kinds;       // names, identifiers or type numbers; empty for all
    std::vector<std::string> stations;    // numbers; empty for all
    std::string where;                    // expression over fields; empty for none
};

// A filter that cannot be understood; the text is for people and points at the place.
struct FilterError {
    std::string text;
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

    // The main kinds that can pass; the others may be switched off in the decoder.
    const std::vector<const KindModel*>& kinds() const { return passingKinds; }

    bool takesKind(const KindModel& kind) const;
    bool takes(const Message& message, const KindModel& kind) const;

private:
    bool takesStation(const Message& message, const KindModel& kind) const;

    std::vector<const KindModel*> passingKinds;
    std::vector<std::uint64_t> stations;
    std::string stationName;
    std::unique_ptr<Expression> expression;
};
