// What a command does with what is found.
#pragma once

#include "base/Text.h"
#include "forms/PacketReader.h"
#include "session/Found.h"

#include <string>

class Sink {
public:
    virtual ~Sink() = default;

    // Whether what was found counts for --max.
    virtual bool counts(const Found& found) const { return found.what == Found::What::message; }

    // Makes the text of a batch that passed the filter, for take(). May run on another thread, and
    // on two at once.
    virtual void print(const Batch&, Text&) const {}

    // Takes one batch after the other, in their order, on one thread at a time.
    virtual void take(const Batch& batch, Text& printed) = 0;

    // The functions below are called when everything before has been taken.

    // After the last message of an input.
    virtual void endOfInput(const std::string&, const ReaderCounters&) {}
    // After everything, whatever ended it.
    virtual void finish() {}
    // Between two reads of an input whose bytes arrive slowly.
    virtual void pause() {}

    // Whether there is no point in going on. Asked after each batch.
    virtual bool isDone() const { return false; }
    // Whether results are written while inputs are read, so that progress must not be shown on the
    // same terminal.
    virtual bool writesAlong() const { return true; }
};
