// Every form of input, whole and cut into arbitrary reads.
#include "fuzz.h"

#include "support/ReadFrames.h"

#include <random>

using namespace fuzz;

namespace {

constexpr InputForm forms[] = {InputForm::stream, InputForm::automatic, InputForm::packed,
                               InputForm::hex, InputForm::words};

void demandSame(const FoundInput& whole, const FoundInput& cut)
{
    promise(5, whole.frames == cut.frames, "other frames when cut into other reads");
    promise(5,
            whole.counters.bytesRead == cut.counters.bytesRead &&
                whole.counters.bytesSkipped == cut.counters.bytesSkipped &&
                std::strcmp(whole.counters.form, cut.counters.form) == 0,
            "other counts when cut into other reads");
}

void demandSound(const FoundInput& found, std::size_t size)
{
    promise(5, found.counters.bytesRead == size, "not all bytes are read");
    promise(5, found.counters.bytesSkipped <= size, "more bytes skipped than given");
    for (const FoundFrame& frame : found.frames) {
        promise(1, frame.begin <= frame.end && frame.end <= size, "a frame outside the input");
        promise(4,
                frame.kind != framing::Frame::Kind::message || framing::isWholeMessage(frame.bytes),
                "accepted, but no whole message");
    }
}

}    // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::size_t before = heapInUse();
    {
        Taker input({data, size});
        const InputForm form = forms[input.byte() % std::size(forms)];
        std::minstd_rand random(input.byte() + 1U);
        const ::Bytes bytes(input.rest().begin(), input.rest().end());

        const FoundInput whole = readInput(form, bytes);
        demandSound(whole, bytes.size());
        demandSame(whole, readInput(form, bytes, [] { return std::size_t{1}; }));
        demandSame(whole, readInput(form, bytes, [&] { return 1 + random() % 97; }));
    }
    promise(6, heapInUse() == before, "memory is not returned");
    return 0;
}
