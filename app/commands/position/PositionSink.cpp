#include "commands/position/PositionSink.h"

void PositionSink::take(const Found& found)
{
    if (found.what == Found::What::message) {
        positions.add(found);
    }
}
