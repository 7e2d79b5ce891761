#include "session/FrameBatch.h"

#include <algorithm>

void FrameBatch::clear()
{
    count = 0;
    used = 0;
    problems.clear();
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
                       .problem = static_cast<std::uint32_t>(problems.size())};
    std::copy(kept.begin(), kept.end(), bytes.begin() + static_cast<std::ptrdiff_t>(used));
    used += kept.size();
    if (frame.kind != framing::Frame::Kind::message) {
        problems.push_back(std::move(problem));
    }
}
