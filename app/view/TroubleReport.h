// Tells on standard error what could not be decoded, and where it stands in the input.
#pragma once

#include "Session.h"

class TroubleReport {
public:
    // Quiet: only counts.
    explicit TroubleReport(bool quiet) : silent(quiet) {}

    void tell(const Place& place, Trouble trouble, const std::string& text) const;

private:
    bool silent;
};

// The name of a kind of trouble, for people.
const char* nameOf(Trouble trouble);
