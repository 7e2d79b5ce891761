// Symbol visibility of the plug-in.
#pragma once

#define VORLO_RTCM2_EXPORT __attribute__((visibility("default")))

// For members of an exported class that only the plug-in itself uses.
#define VORLO_RTCM2_INTERNAL __attribute__((visibility("hidden")))
