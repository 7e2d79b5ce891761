// Reads an input again for the messages that fulfil a condition.
#pragma once

#include "viewer/document/Input.h"
#include "viewer/document/MessageIndex.h"
#include "viewer/document/Pass.h"

#include "filter/MessageFilter.h"

#include <atomic>
#include <string>

class FilterPass {
public:
    struct Options {
        std::string where;
        bool withTroubles = false;    // also what gave no message
        bool follows = false;         // what is still written to the file
    };

    // Begins to read. The model belongs to the caller. Throws FilterError.
    FilterPass(const FormatModel& model, const Input& file, const Options& options);

    // Those found so far, as places in the index of the input.
    const Selection& chosen() const { return places; }
    bool isFinished() const { return pass.isFinished(); }
    void cancel() { pass.cancel(); }
    std::uint64_t bytesRead() const { return bytes; }

private:
    void read(const FormatModel& model, const Input& file, const Options& options);

    MessageFilter filter;
    Selection places;
    std::atomic<std::uint64_t> bytes = 0;
    Pass pass;
};
