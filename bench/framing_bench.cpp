// Messages out of a stream, at each bit phase, against one bit after the other.
#include "Measured.h"
#include "framing/Framer.h"

namespace bench {

namespace {

constexpr std::size_t streamSize = std::size_t{4} << 20;
constexpr std::size_t blockSize = std::size_t{64} << 10;

struct Found {
    std::uint64_t messages = 0;
    std::uint64_t sum = 0;

    void add(Bytes packed)
    {
        ++messages;
        sum += packed.back();
    }
};

Found frame(Bytes stream)
{
    Found found;
    framing::Framer framer;
    const auto take = [&] {
        while (const framing::Frame* frame = framer.next()) {
            if (frame->kind == framing::Frame::Kind::message) {
                found.add(frame->bytes());
            }
        }
    };
    for (; !stream.empty(); stream = stream.subspan(std::min(blockSize, stream.size()))) {
        framer.push(stream.first(std::min(blockSize, stream.size())));
        take();
    }
    framer.finish();
    take();
    return found;
}

Found frameBitByBit(Bytes stream)
{
    Found found;
    bit_by_bit::Framer framer;
    framer.push(stream, [&found](Bytes packed) { found.add(packed); });
    return found;
}

template <Found (*frameStream)(Bytes)>
void framing(benchmark::State& state, unsigned bitPhase)
{
    const auto stream = streamOf(messagesOfFile(RTCM2_BENCH_SAMPLE), streamSize, bitPhase);
    const Found expected = frameBitByBit(stream);
    Found found;
    for (auto _ : state) {
        found = frameStream(stream);
        benchmark::DoNotOptimize(found);
    }
    if (found.messages != expected.messages || found.sum != expected.sum || found.messages == 0) {
        state.SkipWithError("finds other messages than the reference");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(stream.size()));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(found.messages));
    // Five bytes of the stream are a word.
    state.counters["words"] = static_cast<double>(stream.size()) / 5 / double(found.messages);
}

const bool registered = [] {
    for (unsigned phase = 0; phase < 6; ++phase) {
        const std::string name = "framing/bit phase " + std::to_string(phase);
        benchmark::RegisterBenchmark((name + "/rtcm2").c_str(), framing<frame>, phase);
        benchmark::RegisterBenchmark((name + "/bit_by_bit").c_str(), framing<frameBitByBit>, phase);
    }
    return true;
}();

}    // namespace

}    // namespace bench
