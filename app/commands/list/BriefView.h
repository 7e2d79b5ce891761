// One line a message, for people: number, time, station, type, and what is in it.
#pragma once

#include "format/BriefLine.h"
#include "format/EnvelopeColumns.h"
#include "session/Sink.h"

#include <string>
#include <vector>

struct BriefOptions {
    std::size_t inputWidth = 0;    // of the column with the input's name; 0 for none
    bool position = false;         // the byte behind the number
    bool times = false;            // when messages were received
    bool all = false;              // also fields that mean nothing with the message's system
    bool colour = false;           // of a health that is not the usual one
    std::size_t columns = 0;       // that a line may have; 0 for any number
};

class BriefView : public PrintingSink {
public:
    // `kinds` are those that may occur.
    BriefView(Output& out, const BriefOptions& briefOptions,
              const std::vector<const KindModel*>& kinds);

    void beginInput(const std::string& name) override;

private:
    void print(const Found& found, Text& target) override;
    void appendHeading(Text& target) const;
    std::string inInputColumn(const std::string& name) const;
    void finishLine(Text& target, std::size_t begin, std::size_t healthBegin,
                    std::size_t healthEnd) const;

    BriefOptions options;
    EnvelopeColumns envelopes;
    bool hasHeading = false;
    std::string input;
    std::vector<BriefLine> plans;    // by the number of the kind
};
