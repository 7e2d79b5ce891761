// What the row of a message says beside what its index has.
#pragma once

#include "format/BriefLine.h"
#include "session/Found.h"

#include <vector>

class RowText {
public:
    explicit RowText(const FormatModel& model);

    // The content of a message, and what is wrong where something is.
    void append(Text& text, const Found& found) const;

private:
    const FormatModel& formatModel;
    std::vector<BriefLine> lines;    // by the number of the kind
};
