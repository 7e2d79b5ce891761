// The forms of input: what is found in good, dirty and cut inputs, and where.
#include "forms/InputForm.h"
#include "support/ReadFrames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

namespace {

using Kind = framing::Frame::Kind;

Bytes operator+(Bytes left, const Bytes& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Bytes text(std::string_view characters)
{
    return {characters.begin(), characters.end()};
}

// A message of 3 * (2 + words) bytes, none of which but the first is a preamble.
Bytes packed(unsigned words, std::uint8_t fill = 0x11)
{
    Bytes message(3 * (2 + std::size_t{words}), fill);
    message[0] = 0x66;
    message[5] = static_cast<std::uint8_t>(words << 3);
    return message;
}

// The same as units of a recording, with other bits where they do not matter.
Bytes units(const Bytes& message)
{
    Bytes recorded;
    EXPECT_TRUE(makeWriter(InputForm::words)->append(message, recorded));
    for (std::size_t i = 0; i < recorded.size(); i += 4) {
        recorded[i] ^= 0x2A;
        recorded[i + 3] |= 0xC0;
    }
    return recorded;
}

Bytes cut(Bytes bytes, std::size_t size)
{
    bytes.resize(size);
    return bytes;
}

Bytes writtenAs(InputForm form, std::size_t count, std::uint8_t fill = 0x91)
{
    const auto writer = makeWriter(form);
    Bytes out;
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_TRUE(writer->append(packed(5, fill), out));
    }
    return out;
}

struct Expected {
    Kind kind;
    std::uint64_t begin;
    std::uint64_t end;
    std::string damage = {};
};

Expected good(std::uint64_t begin, std::uint64_t end)
{
    return {Kind::message, begin, end};
}

Expected cutOff(std::uint64_t begin, std::uint64_t end)
{
    return {Kind::truncated, begin, end};
}

Expected bad(std::uint64_t begin, std::uint64_t end,
             const std::string& damage = "no message begins here")
{
    return {Kind::damaged, begin, end, damage};
}

// Frames and skipped bytes, however the input is cut.
void check(InputForm form, const char* title, const Bytes& input,
           const std::vector<Expected>& expected, std::uint64_t skipped)
{
    SCOPED_TRACE(title);
    for (const auto& pieceSize : waysToCut()) {
        const FoundInput found = readInput(form, input, pieceSize);
        ASSERT_EQ(found.frames.size(), expected.size());
        for (std::size_t i = 0; i < found.frames.size(); ++i) {
            SCOPED_TRACE("frame " + std::to_string(i));
            EXPECT_EQ(found.frames[i].kind, expected[i].kind);
            EXPECT_EQ(found.frames[i].number, i + 1);
            EXPECT_EQ(found.frames[i].begin, expected[i].begin);
            EXPECT_EQ(found.frames[i].end, expected[i].end);
            EXPECT_EQ(found.frames[i].damage, expected[i].damage);
        }
        EXPECT_EQ(found.counters.bytesRead, input.size());
        EXPECT_EQ(found.counters.bytesSkipped, skipped);
    }
}

TEST(PackedInput, FindsMessagesInGarbage)
{
    const Bytes a = packed(1);
    const Bytes b = packed(2, 0x22);
    const auto holds = [](const char* title, const Bytes& input,
                          const std::vector<Expected>& frames, std::uint64_t skipped) {
        check(InputForm::packed, title, input, frames, skipped);
    };
    holds("headers alone", packed(0) + packed(0), {good(0, 6), good(6, 12)}, 0);
    holds("garbage first", text("junk") + a + b, {bad(0, 1), good(4, 13), good(13, 25)}, 4);
    holds("garbage with preambles", a + text("xfy") + b + a + text("f") + b,
          {good(0, 9), bad(9, 10), good(12, 24), good(24, 33), cutOff(33, 46), good(34, 46)}, 4);
    holds("garbage last", a + text("junk"), {good(0, 9), bad(9, 10)}, 4);
    holds("a message that lost bytes and took them from the next", cut(a, 7) + b + a,
          {good(0, 9), bad(9, 10), good(7, 19), good(19, 28)}, 0);
    holds("cut off", a + cut(b, 11), {good(0, 9), cutOff(9, 20)}, 11);
    holds("cut off after a byte", a + cut(b, 1), {good(0, 9), cutOff(9, 10)}, 1);
    holds("garbage larger than any buffer", a + Bytes(10000, 0x55) + b,
          {good(0, 9), bad(9, 10), good(10009, 10021)}, 10000);
}

TEST(RecordedInput, FindsMessagesInGarbage)
{
    const InputForm form = InputForm::words;
    const Bytes a = units(packed(1));
    const Bytes b = units(packed(2, 0x22));
    check(form, "a partial unit last", a + cut(b, 3), {good(0, 12)}, 3);
    check(form, "a partial message last", a + cut(b, 9), {good(0, 12), cutOff(12, 21)}, 9);
    check(form, "garbage that is no whole unit", a + text("xyz") + b + a,
          {good(0, 12), bad(12, 16), good(15, 31), good(31, 43)}, 3);
    check(form, "a partial unit behind a message that was searched", text("x") + a + text("yz"),
          {bad(0, 4), good(1, 13)}, 3);
}

TEST(RecordedInput, IsKeptAsItWasRecorded)
{
    const Bytes first = packed(3, 0x35);
    const Bytes second = packed(0);
    for (const InputForm form : {InputForm::words, InputForm::automatic}) {
        const FoundInput found =
            readInput(form, units(first) + units(second), [] { return std::size_t{5}; });
        EXPECT_EQ(found.messages(), (std::vector<Bytes>{first, second}));
        EXPECT_EQ(found.frames.at(0).recorded, units(first));
        EXPECT_EQ(found.frames.at(1).recorded, units(second));
    }
    const FoundInput packedInput =
        readInput(InputForm::packed, first, [] { return std::size_t{5}; });
    EXPECT_TRUE(packedInput.frames.at(0).recorded.empty());
}

TEST(HexInput, IsReadLineByLine)
{
    const std::string header = "660405112218";    // declares three words more
    const std::string whole = header + "0102030405060708ab";
    const auto holds = [](const char* title, const std::string& lines,
                          const std::vector<Expected>& frames, std::uint64_t skipped) {
        check(InputForm::hex, title, text(lines), frames, skipped);
    };
    holds("no line end", whole, {good(0, 30)}, 0);
    holds("CR LF", whole + "\r\n\r\n", {good(0, 30)}, 2);
    holds("blanks, 0x and upper case", " 0x66 0X04 0x05 11 22 18\t0102030405060708 0xAB \n",
          {good(1, 46)}, 0);
    holds("comments and empty lines", "# 66\n\n  # 66\n" + whole + "\n \n", {good(13, 43)}, 15);
    holds("no digit", "66zz\n" + whole + "\n",
          {bad(0, 4, "no hexadecimal digit at byte 2"), good(5, 35)}, 5);
    holds("x without 0", "x6\n", {bad(0, 2, "no hexadecimal digit at byte 0")}, 3);
    holds("half a byte", whole + "1\n", {bad(0, 31, "odd number of hexadecimal digits")}, 32);
    holds("other first byte", "670405112200\n",
          {bad(0, 12, "does not begin with the preamble, 66")}, 13);
    holds("short", "6604\n" + header + "\n",
          {bad(0, 4, "too short for a header"),
           bad(5, 17, "has 6 bytes, but its header declares 15")},
          18);
    holds("long", whole + "00\n", {bad(0, 32, "has 16 bytes, but its header declares 15")}, 33);
    holds("cut off", whole + "\n" + header, {good(0, 30), cutOff(31, 43)}, 12);
    holds("cut off in garbage", whole + "\nhello",
          {good(0, 30), bad(31, 36, "no hexadecimal digit at byte 31")}, 5);
    holds("endless line", std::string(100000, '6') + "\n" + whole,
          {bad(0, 100000, "has 50000 bytes, but its header declares 42"), good(100001, 100031)},
          100001);
}

TEST(StreamInput, TellsWhatIsDamaged)
{
    Bytes stream = writtenAs(InputForm::stream, 3);
    stream[35 + 2 * 5 + 1] ^= 4;    // third word of the second message
    check(InputForm::stream, "a bit error", stream,
          {good(0, 35), bad(35, 50, "bad parity in word 3"), good(70, 105)}, 35);
}

// A message comes out with its last byte (of a hex line, its end), not with the next message.
TEST(EveryInput, IsDeliveredAtOnce)
{
    for (const InputForm form :
         {InputForm::stream, InputForm::packed, InputForm::hex, InputForm::words}) {
        for (const InputForm readAs : {form, InputForm::automatic}) {
            SCOPED_TRACE(std::to_string(static_cast<int>(form)) + " read as " +
                         std::to_string(static_cast<int>(readAs)));
            const auto writer = makeWriter(form);
            const auto reader = makeReader(readAs);
            for (unsigned count = 0; count < 3; ++count) {
                Bytes input;
                ASSERT_TRUE(writer->append(packed(4, 0x91), input));
                for (std::size_t at = 0; at < input.size(); ++at) {
                    reader->push(std::span(input).subspan(at, 1));
                    const bool isLast = at + 1 == input.size();
                    ASSERT_EQ(reader->next() != nullptr, isLast) << at << ' ' << count;
                    ASSERT_TRUE(!isLast || reader->next() == nullptr);
                }
            }
        }
    }
}

// A packed message whose first bytes are a header in a recording as well.
Bytes ambiguous()
{
    Bytes message = packed(5);
    message[2] = 0x80;
    message[3] = 0x19;
    return message;
}

TEST(AutoInput, FindsTheForm)
{
    const Bytes prose = text("Connected to station 5.\r\nfor news see below\r\n\r\n");
    const Bytes noise(30000, '~');
    const Bytes comment = text(std::string(200, '#') + "\n");
    const struct {
        const char* title;
        Bytes input;
        const char* form;
        std::size_t messages;
    } cases[] = {
        {"nothing", {}, "stream", 0},
        {"prose alone", prose, "stream", 0},
        {"much prose, then a stream", noise + writtenAs(InputForm::stream, 3), "stream", 3},
        {"prose, then packed messages", prose + writtenAs(InputForm::packed, 9), "packed", 9},
        {"prose, then recorded messages", prose + writtenAs(InputForm::words, 9), "words", 9},
        {"comments, then hex lines", comment + writtenAs(InputForm::hex, 2), "hex", 2},
        {"packed bytes that all look like a stream's", writtenAs(InputForm::packed, 1, 0x61),
         "packed", 1},
        {"packed, but might be recorded", ambiguous() + ambiguous() + ambiguous(), "packed", 3},
        {"the same for long", ambiguous() + writtenAs(InputForm::packed, 900), "packed", 901},
        {"packed, cut off", cut(writtenAs(InputForm::packed, 2), 30), "packed", 1},
        {"recorded, cut off", cut(writtenAs(InputForm::words, 2), 50), "words", 1},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.title);
        for (const auto& pieceSize : waysToCut()) {
            const FoundInput found = readInput(InputForm::automatic, test.input, pieceSize);
            EXPECT_STREQ(found.counters.form, test.form);
            EXPECT_EQ(found.messages().size(), test.messages);
            EXPECT_EQ(found.counters.bytesRead, test.input.size());
        }
    }
}

}    // namespace
