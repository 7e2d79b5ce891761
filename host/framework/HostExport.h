// Symbol visibility of the host framework library.
#pragma once

#define HOST_FRAMEWORK_EXPORT __attribute__((visibility("default")))
