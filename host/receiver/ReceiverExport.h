// Symbol visibility of the receiver-format library.
#pragma once

#define HOST_RECEIVER_EXPORT __attribute__((visibility("default")))
