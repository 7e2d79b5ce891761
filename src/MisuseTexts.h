// Texts of the events that misused accessors of messages and fields throw.
#pragma once

namespace MisuseTexts {

inline constexpr char absentOptionalMember[] = "Requesting value for a non-present optional field.";

inline constexpr char otherKind[] =
    "Requesting value for a field that is not present in the given kind of message.";
inline constexpr char absentOptional[] =
    "Requesting value for an optional field that is not present.";
inline constexpr char repeatedZeroTimes[] =
    "Requesting value for an repeated field that is repeated 0 times.";
inline constexpr char repeatedOutOfRange[] =
    "Requesting value for an repeated field with out of range index.";
inline constexpr char indexOfNonRepeated[] =
    "Requesting value for a non-repeated field using non-zero index.";

}    // namespace MisuseTexts
