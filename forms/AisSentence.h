// One sentence of AIS: "!AIVDM,2,1,3,A,<payload>,0*5C".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Views are of the text that was read.
struct AisSentence {
    // The most sentences of one message: their number is a digit.
    static constexpr unsigned mostOfMessage = 9;

    std::string_view address{};    // two letters of any talker and VDM or VDO
    unsigned count = 0;            // of the sentences that the message has
    unsigned number = 0;           // of this one, from 1
    char sequence = 0;    // the digit by which sentences of a message belong together, or 0
    char channel = 0;     // of the radio, or 0
    std::string_view payload{};    // of the head alone: all that follows
    unsigned fillBits = 0;         // at the end of the payload, that stand for nothing
    std::size_t size = 0;          // from the ! to the last character of the checksum
    bool hasChecksum = false;
    std::string problem{};    // why it is not to be used, for people; empty if it is good
};

// What stands before the payload of a sentence with which the text begins; nothing where it begins
// with no sentence.
std::optional<AisSentence> headOfSentence(std::string_view text);

// Reads the rest of the sentence.
//
// A sentence without a checksum is not used. A message may be shorter than it says (its sender
// leaves out fill), so that nothing else would tell it from a line that was cut off.
void readTail(AisSentence& sentence, std::string_view text);

// The exclusive or of all characters.
unsigned checksumOf(std::string_view text);

// Two hexadecimal digits of either case as a number; -1 where the text does not begin with them.
int checksumAt(std::string_view text);

// "5C"
std::string checksumText(unsigned sum);
