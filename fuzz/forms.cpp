// Every form of input, given or found out, whole and cut into arbitrary reads; where frames may
// stand; and that what is written is read.
#include "fuzz.h"

#include "support/ReadFrames.h"

#include <random>

using namespace fuzz;

namespace {

constexpr InputForm forms[] = {InputForm::stream, InputForm::automatic, InputForm::packed,
                               InputForm::hex,    InputForm::words,     InputForm::aivdm};

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

// Of a form that is no stream: messages behind each other, and so is what is none. Those of AIS may
// stand between the sentences of others.
void demandOrder(const FoundInput& found, bool mayMix)
{
    std::uint64_t begins[2] = {0, 0};
    std::uint64_t end = 0;
    for (const FoundFrame& frame : found.frames) {
        const bool isMessage = frame.kind == framing::Frame::Kind::message;
        promise(5, mayMix || frame.begin >= begins[isMessage ? 1 : 0],
                "a frame before one told earlier");
        promise(5, !isMessage || frame.end > end, "a message that ends inside another");
        begins[isMessage ? 1 : 0] = frame.begin;
        end = isMessage ? frame.end : end;
    }
}

// What was found and is written in a form without a framer is found again, all of it.
void demandAgain(InputForm form, const std::vector<::Bytes>& messages)
{
    ::Bytes written;
    const auto writer = makeWriter(form);
    writer->setEnvelope({.received = 1'700'000'000'125'000, .sender = AisSender{.mmsi = 2734450}});
    for (const ::Bytes& message : messages) {
        promise(4, writer->append(message, written), "found, but not written");
    }
    promise(4, readInput(form, written).messages() == messages, "written, but not read");
}

void demandSame(const FoundInput& whole, const FoundInput& cut)
{
    promise(5,
            whole.frames == cut.frames && whole.counters.bytesRead == cut.counters.bytesRead &&
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
        std::minstd_rand random(input.byte() + 1U);
        const ::Bytes bytes(input.rest().begin(), input.rest().end());

        const FoundInput whole = readInput(form, bytes);
        demandSound(whole, bytes.size());
        if (std::strcmp(whole.counters.form, "stream") != 0) {
            demandOrder(whole, std::strcmp(whole.counters.form, "aivdm") == 0);
        }
        demandSame(whole, readInput(form, bytes, [] { return std::size_t{1}; }));
        demandSame(whole, readInput(form, bytes, [&] { return 1 + random() % 97; }));
        if (form != InputForm::stream && form != InputForm::automatic) {
            demandAgain(form, whole.messages());
        }
    }
    promise(6, heapInUse() == before, "memory is not returned");
    return 0;
}
