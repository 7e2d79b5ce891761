// A receiver's recorded blocks with arbitrary payload and mode.
#include "Receiver.h"

#include "QLX_DiffCorrIn_Message.h"
#include "QLX_DiffCorrIn_RTCM2Extractor.h"

using namespace fuzz;

namespace {

constexpr unsigned mostModes = 4;

struct Recorder {
    Recorder()
    {
        for (unsigned char mode = 0; mode < mostModes; ++mode) {
            extractors[mode] = std::make_unique<QLX_DiffCorrIn_RTCM2Extractor>(
                &sources[mode], &receiver.decoder, nullptr, mode);
        }
    }

    void play(unsigned mode, const QByteArray& payload, std::optional<unsigned char> blockMode)
    {
        receiver.watch([&] {
            const auto* block = new QLX_DiffCorrIn_Message(payload, blockMode);
            block->addReference();
            Q_EMIT sources[mode].newMessage(block);
            promise(6, block->getReferenceCount() == 1, "the block is kept");
            promise(1, block->getPayload() == payload, "the block is changed");
            block->removeReference();
        });
    }

    Receiver receiver{[](const Message&) {}};
    MessageSource sources[mostModes];
    std::unique_ptr<QObject> extractors[mostModes];
};

}    // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Recorder recorder;
    Taker input({data, size});
    const std::uint8_t modes = input.byte();
    const auto blockMode = static_cast<unsigned char>(modes >> 4);
    // Not shared with anything, so that its block ends where the payload does.
    const QByteArray payload(reinterpret_cast<const char*>(input.rest().data()),
                             static_cast<decltype(QByteArray().size())>(input.rest().size()));
    recorder.play(modes % mostModes, payload,
                  blockMode < 8 ? std::optional(blockMode) : std::nullopt);
    return 0;
}
