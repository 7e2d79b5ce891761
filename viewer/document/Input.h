// What a document is read from.
#pragma once

#include "forms/InputForm.h"

#include <string>

struct Input {
    std::string name{};    // a file, or what sources/Sources.h has beside files
    InputForm form = InputForm::automatic;
    bool follows = false;      // a file is waited for at its end
    unsigned char mode = 0;    // of recorded messages
};
