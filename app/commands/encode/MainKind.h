// The kinds of messages that can be encoded, also those that hosts are not told of.
#pragma once

#include "RTCM2_format.h"

#include <string>
#include <string_view>

// What people call a kind or a member: its name in code where it is not described.
template <class Row>
const char* labelOf(const Row& row)
{
    return *row.display != '\0' ? row.display : row.name;
}

// The member with the number of data words of a main kind's messages.
const RTCM2_member_s& wordsOf(const RTCM2_kind_s& kind);

// The main kind of this name, identifier or type number; null when there is none.
const RTCM2_kind_s* findMainKind(std::string_view nameOrNumber);

// What is told of a name that none has.
std::string noMainKind(std::string_view name);
