// What is copied of the chosen messages.
#pragma once

#include "viewer/window/DocumentView.h"

enum class CopyForm { text, json, hex };

// Puts it on the clipboard; where too many messages are chosen, it tells so.
void copyRows(DocumentView& view, CopyForm form);
// The same as a text.
QString textOfRows(DocumentView& view, CopyForm form, const std::vector<std::size_t>& places);
