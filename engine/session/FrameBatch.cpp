#include "session/FrameBatch.h"

#include <algorithm>

void FrameBatch::clear()
{
    count = 0;
    used = 0;
    problems.clear();
    envelopes.resize(1);
}

void FrameBatch::add(const framing::Frame& frame, std::span<const std::uint8_t> recorded,
                     std::string problem)
{
    const std::span<const std::uint8_t> kept = recorded.empty() ? frame.bytes() : recorded;
    frames[count++] = {.kind = frame.kind,
                       .isRecording = !recorded.empty(),
                       .size = static_cast<std::uint16_t>(kept.size()),
                       .offset = static_cast<std::uint32_t>(used),
                       .number = frame.number,
                       .begin = frame.beginOffset,
                       .end = frame.endOffset,
                       .problem = static_cast<std::uint32_t>(problems.size()),
                       .envelope = 0};
    std::copy(kept.begin(), kept.end(), bytes.begin() + static_cast<std::ptrdiff_t>(used));
    used += kept.size();
    if (frame.kind != framing::Frame::Kind::message) {
        problems.push_back(std::move(problem));
    }
}

void FrameBatch::setEnvelope(const Envelope& envelope)
{
    frames[count - 1].envelope = static_cast<std::uint32_t>(envelopes.size());
    envelopes.push_back(envelope);
}
