// A message to start from.
#pragma once

#include "RTCM2_format.h"

#include <string>

// A message of a main kind in the JSON that `encode` reads, with everything that has to be given
// and one element where there can be several, or as few as fill data words; it can be encoded as it
// is.
std::string templateOf(const RTCM2_kind_s& kind);
