// What becomes of one decoded message.
#pragma once

#include "MessageSource.h"
#include "RTCM2.h"

// Reports the outcome of RTCM2_decode through the signals of `source`: a message object, which
// takes over the record's arrays, or an event. Arrays that nobody takes over are released.
void report(MessageSource& source, const RTCM2_context_s& context, std::int32_t result,
            RTCM2_message_s& decoded);
