// Symbol visibility of the support library.
#pragma once

#define HOST_SUPPORT_EXPORT __attribute__((visibility("default")))
