#include "session/InputReader.h"

namespace {

std::unique_ptr<RangeReader> rangeReader(Source& source, const InputOptions& options)
{
    if (options.form != InputForm::automatic) {
        return std::make_unique<RangeReader>(options.form, *options.range);
    }
    FormSearch own;
    if (options.search == nullptr) {
        searchForm(source, own);
    }
    return std::make_unique<RangeReader>(options.search != nullptr ? *options.search : own,
                                         *options.range);
}

}    // namespace

void searchForm(Source& source, FormSearch& search)
{
    while (!search.isDone()) {
        const std::span<const std::uint8_t> bytes = source.read();
        if (bytes.empty() && (source.isAskedToEnd() || !source.problem().empty())) {
            break;
        }
        if (bytes.empty()) {
            search.finish();
        } else {
            search.look(bytes);
        }
    }
}

std::unique_ptr<PacketReader> readerFor(Source& source, const InputOptions& options)
{
    if (!options.range) {
        return makeReader(options.form);
    }
    std::unique_ptr<RangeReader> reader = rangeReader(source, options);
    source.seek(reader->firstByte(), options.range->end);
    return reader;
}
