// Symbol visibility of the plug-in.
#pragma once

#include "quarn_platform.h"

#define VORLO_RTCM2_EXPORT QUARN_SHOWN

// For members of an exported class that only the plug-in itself uses.
#define VORLO_RTCM2_INTERNAL QUARN_HIDDEN
