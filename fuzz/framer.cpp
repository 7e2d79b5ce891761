// The framer against one that looks at every bit, on streams as they are and with damage.
#include "fuzz.h"

#include "forms/StreamReader.h"
#include "support/SlowFramer.h"

#include <algorithm>
#include <string>

using namespace fuzz;

namespace {

// What the first byte of the input does to the rest: so many changes, each of which takes four
// bytes.
::Bytes damaged(Taker& input)
{
    const unsigned changes = input.byte() % 8;
    std::uint8_t steps[8][4];
    input.fill(steps, changes * sizeof steps[0]);
    ::Bytes stream(input.rest().begin(), input.rest().end());
    for (unsigned i = 0; i < changes && !stream.empty(); ++i) {
        const std::uint8_t* const step = steps[i];
        const auto at = static_cast<std::ptrdiff_t>((step[1] * 256U + step[2]) % stream.size());
        const auto place = stream.begin() + at;
        const auto left = stream.end() - place;
        const auto count = std::min<std::ptrdiff_t>(step[3], left);
        const ::Bytes piece(place, place + count);
        static constexpr char text[] = "$GPGSA,A,3,10,07*0A\r\nICY 200 OK\r\n";
        switch (step[0] % 5) {
        case 0:
            *place = static_cast<std::uint8_t>(*place ^ 1U << step[3] % 6);
            break;
        case 1:
            stream.erase(place, place + count);
            break;
        case 2:
            stream.insert(place, piece.begin(), piece.end());
            break;
        case 3:
            stream.insert(place, text, text + sizeof text - 1);
            break;
        default:    // whole words
            stream.erase(place, place + count / 5 * 5);
        }
    }
    return stream;
}

class Compared {
public:
    explicit Compared(const ::Bytes& stream) : wanted_(slow::frame(stream)) {}

    void take()
    {
        while (const framing::Frame* frame = framer.next()) {
            promise(5, seen_ < wanted_.frames.size(), "a frame too many");
            const slow::Frame& wanted = wanted_.frames[seen_++];
            promise(5, verdictOf(*frame) == wanted.verdict, "another verdict");
            promise(5, frame->number == seen_, "another number");
            promise(5, frame->beginOffset == wanted.begin && frame->endOffset == wanted.end,
                    "another place");
            promise(5, std::ranges::equal(frame->bytes(), wanted.packed), "other words");
        }
    }
    void end() const
    {
        promise(5, seen_ == wanted_.frames.size(), "a frame is missing");
        promise(5, framer.counters().bytesSkipped == wanted_.bytesSkipped + wanted_.bitsOutside / 6,
                "other bytes skipped");
    }

    StreamReader framer;

private:
    std::string verdictOf(const framing::Frame& frame) const
    {
        using Kind = framing::Frame::Kind;
        return frame.kind == Kind::message     ? "message"
               : frame.kind == Kind::truncated ? "cut off"
                                               : framer.damage();
    }

    slow::Framed wanted_;
    std::size_t seen_ = 0;
};

}    // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Taker input({data, size});
    const std::size_t piece = 1U + input.byte();
    const ::Bytes stream = damaged(input);
    Compared compared(stream);
    for (std::span<const std::uint8_t> left = stream; !left.empty();) {
        const auto part = left.first(std::min(piece, left.size()));
        compared.framer.push(part);
        compared.take();
        left = left.subspan(part.size());
    }
    compared.framer.finish();
    compared.take();
    compared.end();
    return 0;
}
