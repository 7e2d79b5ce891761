// Forms other than the stream: found out or given, whole and cut into arbitrary reads; where the
// frames of a form without a framer may stand; and that what is written is read.
#include "fuzz.h"

#include "support/ReadFrames.h"

using namespace fuzz;

namespace {

constexpr InputForm forms[] = {InputForm::automatic, InputForm::packed, InputForm::hex,
                               InputForm::words};

// Messages one after another, and so what is none; no message goes back behind the one before.
void demandOrder(const FoundInput& found, std::size_t size)
{
    std::uint64_t begins[2] = {0, 0};
    std::uint64_t end = 0;
    for (const FoundFrame& frame : found.frames) {
        const bool isMessage = frame.kind == framing::Frame::Kind::message;
        promise(1, frame.begin < frame.end && frame.end <= size, "a frame outside the input");
        promise(5, frame.begin >= begins[isMessage ? 1 : 0], "a frame before one told earlier");
        promise(5, !isMessage || frame.end > end, "a message that ends inside another");
        promise(4, !isMessage || framing::isWholeMessage(frame.bytes), "no whole message");
        begins[isMessage ? 1 : 0] = frame.begin;
        end = isMessage ? frame.end : end;
    }
}

void demandSame(const FoundInput& whole, const FoundInput& cut)
{
    promise(5,
            whole.frames == cut.frames &&
                whole.counters.bytesSkipped == cut.counters.bytesSkipped &&
                std::strcmp(whole.counters.form, cut.counters.form) == 0,
            "other findings when cut into other reads");
}

}    // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::size_t before = heapInUse();
    {
        Taker input({data, size});
        const InputForm form = forms[input.byte() % std::size(forms)];
        const ::Bytes bytes(input.rest().begin(), input.rest().end());
        const FoundInput found = readInput(form, bytes);
        promise(5, found.counters.bytesRead == bytes.size(), "not all bytes are read");
        if (std::strcmp(found.counters.form, "stream") != 0) {
            demandOrder(found, bytes.size());
        }
        demandSame(found, readInput(form, bytes, [] { return std::size_t{1}; }));
        demandSame(found, readInput(form, bytes, [] { return std::size_t{13}; }));

        ::Bytes written;
        const auto writer = makeWriter(form);
        for (const ::Bytes& message : found.messages()) {
            promise(4, writer->append(message, written), "found, but not written");
        }
        promise(4,
                form == InputForm::automatic ||
                    readInput(form, written).messages() == found.messages(),
                "written, not read");
    }
    promise(6, heapInUse() == before, "memory is not returned");
    return 0;
}
