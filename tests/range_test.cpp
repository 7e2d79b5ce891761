// What begins in the ranges into which an input is cut is, together, what the whole input gives.
#include "forms/RangeReader.h"
#include "support/ReadFrames.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace {

Bytes fileBytes(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Long enough that most ranges begin to read in its middle.
Bytes longInput(InputForm form, const std::vector<Bytes>& messages)
{
    const std::unique_ptr<PacketWriter> writer = makeWriter(form);
    Bytes out;
    while (out.size() < 400'000) {
        for (const Bytes& message : messages) {
            EXPECT_TRUE(writer->append(message, out));
        }
    }
    return out;
}

// Bits that are wrong, bytes that are missing and bytes that do not belong there.
Bytes damaged(Bytes bytes, std::mt19937& random)
{
    for (std::size_t i = 0; i < bytes.size(); i += 1 + random() % 1000) {
        const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(i);
        const std::ptrdiff_t count = std::min<std::ptrdiff_t>(1 + random() % 60, bytes.end() - at);
        switch (random() % 3) {
        case 0:
            *at ^= static_cast<std::uint8_t>(1U << random() % 6);
            break;
        case 1:
            bytes.erase(at, at + count);
            break;
        default:
            bytes.insert(at, static_cast<std::size_t>(count), static_cast<std::uint8_t>(random()));
        }
    }
    return bytes;
}

std::vector<FoundFrame> readRange(const FormSearch& search, const Bytes& input, ByteRange range)
{
    constexpr std::size_t pieceSize = 4096;
    RangeReader reader(search, range);
    std::vector<FoundFrame> frames;
    std::size_t at = std::min<std::size_t>(reader.firstByte(), input.size());
    while (at < input.size() && !reader.isComplete()) {
        const std::size_t size = std::min(pieceSize, input.size() - at);
        reader.push(std::span(input).subspan(at, size));
        collectFrames(reader, frames);
        at += size;
    }
    if (!reader.isComplete()) {
        reader.finish();
        collectFrames(reader, frames);
    }
    const std::uint64_t end = std::min<std::uint64_t>(range.end, input.size());
    EXPECT_EQ(reader.counters().bytesRead, end - range.begin);
    EXPECT_LE(at, end + 3 * pieceSize) << "reads on for long";
    return frames;
}

// Where a message overlaps damage before it, frames are not in the order in which they begin.
std::vector<FoundFrame> partOf(const std::vector<FoundFrame>& whole, const ByteRange& range)
{
    std::vector<FoundFrame> part;
    for (const FoundFrame& frame : whole) {
        if (range.has(frame.begin)) {
            part.push_back(frame);
            part.back().number = part.size();
        }
    }
    return part;
}

void expectSameParts(const Bytes& input, unsigned cuts, const std::string& name)
{
    std::mt19937 random(cuts);
    FormSearch search;
    search.look(input);
    search.finish();
    const std::vector<FoundFrame> whole = readInput(InputForm::automatic, input).frames;
    ASSERT_FALSE(whole.empty()) << name;
    for (unsigned cut = 0; cut < cuts; ++cut) {
        std::vector<std::uint64_t> places{0, UINT64_MAX};
        for (std::size_t i = 1 + random() % 5; i > 0; --i) {
            places.push_back(random() % input.size());
        }
        std::sort(places.begin(), places.end());
        for (std::size_t i = 1; i < places.size(); ++i) {
            const ByteRange range{.begin = places[i - 1], .end = places[i]};
            ASSERT_TRUE(readRange(search, input, range) == partOf(whole, range))
                << name << ", " << range.begin << " to " << range.end;
        }
    }
}

TEST(Range, OfASampleIsItsPart)
{
    for (const auto& entry : std::filesystem::directory_iterator(RTCM2_TEST_SAMPLES)) {
        if (entry.is_regular_file() && entry.path().extension() != ".md" &&
            entry.path().filename() != ".gitattributes") {
            expectSameParts(fileBytes(entry.path()), 40, entry.path());
        }
    }
}

TEST(Range, BeginsInTheMiddleOfALongInput)
{
    const std::filesystem::path samples = RTCM2_TEST_SAMPLES;
    std::vector<Bytes> messages =
        readInput(InputForm::stream, fileBytes(samples / "demo.rtcm2")).messages();
    for (const Bytes& other :
         readInput(InputForm::stream, fileBytes(samples / "all-types.rtcm2")).messages()) {
        messages.push_back(other);
    }
    std::mt19937 random(1);
    for (const InputForm form :
         {InputForm::stream, InputForm::packed, InputForm::hex, InputForm::words}) {
        const Bytes input = longInput(form, messages);
        expectSameParts(input, 12, nameOf(form));
        expectSameParts(damaged(input, random), 12, std::string("damaged ") + nameOf(form));
    }
}

}    // namespace
