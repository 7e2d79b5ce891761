// How many data words a message has.
#pragma once

#include "commands/encode/RecordDraft.h"

namespace dataWords {

inline constexpr unsigned headerBits = 48;
inline constexpr unsigned bitsPerWord = 24;
inline constexpr unsigned most = 31;

// The member with the number of data words, which every main record has.
int member(const RecordDraft& draft);

// Sets the smallest number of words that has room for the message and agrees with the elements and
// optional members given; where there is none, the smallest that has room, so that a check then
// tells what does not agree. `elementsBits` are those of the array's elements.
void choose(RecordDraft& draft, unsigned elementsBits);

}    // namespace dataWords
