#include "session/InputReader.h"

#include "base/Interrupt.h"

namespace {

std::unique_ptr<RangeReader> rangeReader(Source& source, const InputOptions& options)
{
    if (options.form != InputForm::automatic) {
        return std::make_unique<RangeReader>(options.form, *options.range);
    }
    FormSearch search;
    while (!search.isDone()) {
        const std::span<const std::uint8_t> bytes = source.read();
        if (bytes.empty() && (interrupt::requested() || !source.problem().empty())) {
            break;
        }
        if (bytes.empty()) {
            search.finish();
        } else {
            search.look(bytes);
        }
    }
    return std::make_unique<RangeReader>(search, *options.range);
}

}    // namespace

std::unique_ptr<PacketReader> readerFor(Source& source, const InputOptions& options)
{
    if (!options.range) {
        return makeReader(options.form);
    }
    std::unique_ptr<RangeReader> reader = rangeReader(source, options);
    source.seek(reader->firstByte(), options.range->end);
    return reader;
}
