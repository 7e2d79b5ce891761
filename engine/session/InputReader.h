// The reader for what a session reads of an input.
#pragma once

#include "forms/InputForm.h"
#include "forms/RangeReader.h"
#include "sources/Source.h"

#include <memory>
#include <optional>

// What is to be read of each input, and how.
struct InputOptions {
    InputForm form = InputForm::automatic;
    std::optional<ByteRange> range{};    // only of sources that can be read from any byte on
    // Of a range: the form as it was found before at the beginning of the same input, which is not
    // looked for again then; null where it was not.
    const FormSearch* search = nullptr;
};

// Looks for the form at the beginning of a source; not done where the source ended by a problem or
// was asked to.
void searchForm(Source& source, FormSearch& search);

// Gets what the source reads from now on. Of a range, the source has then been read at its
// beginning as far as the form needs it, and goes on where the range does.
std::unique_ptr<PacketReader> readerFor(Source& source, const InputOptions& options);
