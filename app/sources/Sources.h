// Which source the name of an input means.
#pragma once

#include "sources/Source.h"

#include <memory>

struct SourceOptions {
    bool follows = false;    // a file is waited for at its end
};

// "-" is standard input; every other name is that of a file or device.
std::unique_ptr<Source> openSource(const std::string& name, const SourceOptions& options = {});

// Whether the bytes of the input of this name come in their own time, from a pipe, a terminal or
// another device. Then they do not come a second time.
bool isLiveInput(const std::string& name);
