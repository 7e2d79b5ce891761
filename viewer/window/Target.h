// Where people want to go in a list.
#pragma once

#include "viewer/document/MessageIndex.h"

#include <string>
#include <string_view>

struct Target {
    std::size_t place = 0;    // in the index
    std::string problem{};    // why there is none, for people; empty where there is one
};

// "17" is a number, "@1000" a byte; "30:15.6" is the next such time of the hour behind the place
// `here`, round the end of the index, and "2:30:15" a time with hours that count from that of the
// first message.
Target targetOf(std::string_view text, const MessageIndex& index, std::size_t here);
