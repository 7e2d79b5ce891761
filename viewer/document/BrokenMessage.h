// What can be decoded of a message of which only the first words came, or whose content does not
// fit: its elements that came whole, or at least its header.
#pragma once

#include "viewer/document/MessageDetail.h"

// Fills in kind and record where `detail.packed` holds a header.
void decodeBroken(MessageDetail& detail, const FormatModel& model);
