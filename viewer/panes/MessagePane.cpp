#include "viewer/panes/MessagePane.h"

// Compiled here instead of on its own.
#include "moc_MessagePane.cpp"
