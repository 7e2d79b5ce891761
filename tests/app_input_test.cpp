// The forms of input: what is found in good, dirty and cut inputs, and where.
#include "PacketWriter.h"
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
    for (std::size_t i = 0; i < message.size(); i += 3) {
        const unsigned data = static_cast<unsigned>(message[i]) << 16 |
                              static_cast<unsigned>(message[i + 1]) << 8 | message[i + 2];
        const unsigned unit = 0xC0000000U | data << 6 | 0x2AU;
        for (unsigned shift = 0; shift < 32; shift += 8) {
            recorded.push_back(static_cast<std::uint8_t>(unit >> shift));
        }
    }
    return recorded;
}

Bytes cut(Bytes bytes, std::size_t size)
{
    bytes.resize(size);
    return bytes;
}

Bytes withoutFirst(const Bytes& bytes, std::size_t count)
{
    return {bytes.begin() + static_cast<std::ptrdiff_t>(count), bytes.end()};
}

struct Expected {
    Kind kind;
    std::uint64_t begin;
    std::uint64_t end;
    std::string damage = {};
};

struct InputCase {
    const char* title;
    InputForm form;
    Bytes input;
    std::vector<Expected> frames;
    std::uint64_t skipped;
};

void check(const InputCase& inputCase)
{
    SCOPED_TRACE(inputCase.title);
    for (const auto& pieceSize : waysToCut()) {
        const FoundInput found = readInput(inputCase.form, inputCase.input, pieceSize);
        ASSERT_EQ(found.frames.size(), inputCase.frames.size());
        for (std::size_t i = 0; i < found.frames.size(); ++i) {
            SCOPED_TRACE("frame " + std::to_string(i));
            EXPECT_EQ(found.frames[i].kind, inputCase.frames[i].kind);
            EXPECT_EQ(found.frames[i].number, i + 1);
            EXPECT_EQ(found.frames[i].begin, inputCase.frames[i].begin);
            EXPECT_EQ(found.frames[i].end, inputCase.frames[i].end);
            EXPECT_EQ(found.frames[i].damage, inputCase.frames[i].damage);
        }
        EXPECT_EQ(found.counters.bytesRead, inputCase.input.size());
        EXPECT_EQ(found.counters.bytesSkipped, inputCase.skipped);
    }
}

const std::string noMessage = "no message begins here";

TEST(PackedInput, FindsMessagesInGarbage)
{
    const InputForm form = InputForm::packed;
    const Bytes a = packed(1);
    const Bytes b = packed(2, 0x22);
    const std::vector<InputCase> cases = {
        {"nothing", form, {}, {}, 0},
        {"headers alone",
         form,
         packed(0) + packed(0),
         {{Kind::message, 0, 6}, {Kind::message, 6, 12}},
         0},
        {"garbage first",
         form,
         text("junk") + a + b,
         {{Kind::damaged, 0, 1, noMessage}, {Kind::message, 4, 13}, {Kind::message, 13, 25}},
         4},
        {"garbage between",
         form,
         a + text("xyz") + b + a,
         {{Kind::message, 0, 9},
          {Kind::damaged, 9, 10, noMessage},
          {Kind::message, 12, 24},
          {Kind::message, 24, 33}},
         3},
        {"garbage with preambles",
         form,
         a + text("xfy") + b + a + text("f") + b,
         {{Kind::message, 0, 9},
          {Kind::damaged, 9, 10, noMessage},
          {Kind::message, 12, 24},
          {Kind::message, 24, 33},
          {Kind::truncated, 33, 46},
          {Kind::message, 34, 46}},
         4},
        {"garbage last",
         form,
         a + text("junk"),
         {{Kind::message, 0, 9}, {Kind::damaged, 9, 10, noMessage}},
         4},
        {"a message that lost bytes and took them from the next",
         form,
         cut(a, 7) + b + a,
         {{Kind::message, 0, 9},
          {Kind::damaged, 9, 10, noMessage},
          {Kind::message, 7, 19},
          {Kind::message, 19, 28}},
         0},
        {"cut off", form, a + cut(b, 11), {{Kind::message, 0, 9}, {Kind::truncated, 9, 20}}, 11},
        {"cut off after a byte",
         form,
         a + cut(b, 1),
         {{Kind::message, 0, 9}, {Kind::truncated, 9, 10}},
         1},
        {"only garbage", form, Bytes(10000, 0x55), {{Kind::damaged, 0, 1, noMessage}}, 10000},
        {"garbage larger than any buffer",
         form,
         a + Bytes(10000, 0x55) + b,
         {{Kind::message, 0, 9}, {Kind::damaged, 9, 10, noMessage}, {Kind::message, 10009, 10021}},
         10000},
    };
    for (const InputCase& inputCase : cases) {
        check(inputCase);
    }
}

TEST(RecordedInput, FindsMessagesInGarbage)
{
    const InputForm form = InputForm::words;
    const Bytes a = units(packed(1));
    const Bytes b = units(packed(2, 0x22));
    const std::vector<InputCase> cases = {
        {"a partial unit last", form, a + cut(b, 3), {{Kind::message, 0, 12}}, 3},
        {"a partial message last",
         form,
         a + cut(b, 9),
         {{Kind::message, 0, 12}, {Kind::truncated, 12, 21}},
         9},
        {"garbage that is no whole unit",
         form,
         a + text("xyz") + b + a,
         {{Kind::message, 0, 12},
          {Kind::damaged, 12, 16, noMessage},
          {Kind::message, 15, 31},
          {Kind::message, 31, 43}},
         3},
        {"a unit lost",
         form,
         cut(a, 8) + b + a,
         {{Kind::message, 0, 12},
          {Kind::damaged, 12, 16, noMessage},
          {Kind::message, 8, 24},
          {Kind::message, 24, 36}},
         0},
        {"a partial unit behind a message that was searched",
         form,
         text("x") + a + text("yz"),
         {{Kind::damaged, 0, 4, noMessage}, {Kind::message, 1, 13}},
         3},
    };
    for (const InputCase& inputCase : cases) {
        check(inputCase);
    }
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
    const std::string good = "660405112218";    // declares three words more
    const std::string rest = "0102030405060708ab";
    const std::vector<Expected> atStart = {{Kind::message, 0, 30}};
    const auto inputCase = [](const char* title, const std::string& lines,
                              const std::vector<Expected>& frames, std::uint64_t skipped) {
        check({title, InputForm::hex, text(lines), frames, skipped});
    };
    inputCase("a line", good + rest + "\n", atStart, 0);
    inputCase("no line end", good + rest, atStart, 0);
    inputCase("CR LF", good + rest + "\r\n\r\n", atStart, 2);
    inputCase("upper case", "6604051122180102030405060708AB\n", atStart, 0);
    inputCase("blanks and 0x", " 0x66 0X04 0x05 11 22 18\t0102030405060708 0xab \n",
              {{Kind::message, 1, 46}}, 0);
    inputCase("comments and empty lines", "# 66\n\n  # 66\n" + good + rest + "\n \n",
              {{Kind::message, 13, 43}}, 15);
    inputCase("no digit", "66zz\n" + good + rest + "\n",
              {{Kind::damaged, 0, 4, "no hexadecimal digit at byte 2"}, {Kind::message, 5, 35}}, 5);
    inputCase("x without 0", "x6\n", {{Kind::damaged, 0, 2, "no hexadecimal digit at byte 0"}}, 3);
    inputCase("0x alone", "0x\n", {{Kind::damaged, 0, 2, "too short for a header"}}, 3);
    inputCase("half a byte", good + rest + "1\n",
              {{Kind::damaged, 0, 31, "odd number of hexadecimal digits"}}, 32);
    inputCase("other first byte", "670405112200\n",
              {{Kind::damaged, 0, 12, "does not begin with the preamble, 66"}}, 13);
    inputCase("short", "6604\n" + good + "\n",
              {{Kind::damaged, 0, 4, "too short for a header"},
               {Kind::damaged, 5, 17, "has 6 bytes, but its header declares 15"}},
              18);
    inputCase("long", good + rest + "00\n",
              {{Kind::damaged, 0, 32, "has 16 bytes, but its header declares 15"}}, 33);
    inputCase("cut off", good + rest + "\n" + good,
              {{Kind::message, 0, 30}, {Kind::truncated, 31, 43}}, 12);
    inputCase("cut off in garbage", good + rest + "\nhello",
              {{Kind::message, 0, 30}, {Kind::damaged, 31, 36, "no hexadecimal digit at byte 31"}},
              5);
    inputCase("endless line", std::string(100000, '6') + "\n" + good + rest,
              {{Kind::damaged, 0, 100000, "has 50000 bytes, but its header declares 42"},
               {Kind::message, 100001, 100031}},
              100001);
}

TEST(StreamInput, TellsWhatIsDamaged)
{
    Bytes stream;
    const auto writer = makeWriter(InputForm::stream);
    for (const std::uint8_t fill : Bytes{0x11, 0x22, 0x33}) {
        ASSERT_TRUE(writer->append(packed(2, fill), stream));
    }
    stream[20 + 2 * 5 + 1] ^= 4;    // third word of the second message
    check({"a bit error",
           InputForm::stream,
           stream,
           {{Kind::message, 0, 20},
            {Kind::damaged, 20, 35, "bad parity in word 3"},
            {Kind::message, 40, 60}},
           20});
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

struct AutoCase {
    const char* title;
    Bytes input;
    const char* form;
    std::size_t messages;
};

Bytes writtenAs(InputForm form, std::size_t count, std::uint8_t fill = 0x91)
{
    const auto writer = makeWriter(form);
    Bytes out;
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_TRUE(writer->append(packed(5, fill), out));
    }
    return out;
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
    const Bytes noise = text(std::string(30000, '~'));
    const std::vector<AutoCase> cases = {
        {"nothing", {}, "stream", 0},
        {"prose alone", prose, "stream", 0},
        {"prose, then a stream", prose + writtenAs(InputForm::stream, 3), "stream", 3},
        {"much prose, then a stream", noise + writtenAs(InputForm::stream, 3), "stream", 3},
        {"a stream cut at its front", withoutFirst(writtenAs(InputForm::stream, 4), 20), "stream",
         3},
        {"prose, then packed messages", prose + writtenAs(InputForm::packed, 9), "packed", 9},
        {"prose, then recorded messages", prose + writtenAs(InputForm::words, 9), "words", 9},
        {"prose, then hex lines", prose + writtenAs(InputForm::hex, 2), "hex", 2},
        {"comments, then hex lines",
         text(std::string(200, '#') + "\n") + writtenAs(InputForm::hex, 2), "hex", 2},
        {"packed bytes that all look like a stream's", writtenAs(InputForm::packed, 1, 0x61),
         "packed", 1},
        {"more of them", writtenAs(InputForm::packed, 9, 0x61), "packed", 9},
        {"packed, but might be recorded", ambiguous() + ambiguous() + ambiguous(), "packed", 3},
        {"the same for long", ambiguous() + writtenAs(InputForm::packed, 900), "packed", 901},
        {"packed, cut off", cut(writtenAs(InputForm::packed, 2), 30), "packed", 1},
        {"recorded, cut off", cut(writtenAs(InputForm::words, 2), 50), "words", 1},
    };
    for (const AutoCase& autoCase : cases) {
        SCOPED_TRACE(autoCase.title);
        for (const auto& pieceSize : waysToCut()) {
            const FoundInput found = readInput(InputForm::automatic, autoCase.input, pieceSize);
            EXPECT_STREQ(found.counters.form, autoCase.form);
            EXPECT_EQ(found.messages().size(), autoCase.messages);
            EXPECT_EQ(found.counters.bytesRead, autoCase.input.size());
        }
    }
}

// Whatever the bytes are, they are read alike however they are cut, and every one is accounted for.
TEST(EveryInput, TakesAnyBytes)
{
    std::mt19937 random(11);
    const std::string_view alphabet = "f\x66\x04\x11\x18\x00 \n0x6604#\x59\x99\x80\xC0";
    for (int round = 0; round < 60; ++round) {
        Bytes input = round % 2 == 0 ? Bytes() : writtenAs(InputForm::packed, 2);
        for (std::size_t i = random() % 600; i > 0; --i) {
            input.push_back(round % 3 == 0
                                ? static_cast<std::uint8_t>(random())
                                : static_cast<std::uint8_t>(alphabet[random() % alphabet.size()]));
        }
        for (const InputForm form : {InputForm::automatic, InputForm::stream, InputForm::packed,
                                     InputForm::hex, InputForm::words}) {
            const FoundInput whole = readInput(form, input, waysToCut()[0]);
            const FoundInput single = readInput(form, input, waysToCut()[1]);
            EXPECT_EQ(whole.frames, single.frames);
            EXPECT_STREQ(whole.counters.form, single.counters.form);
            EXPECT_EQ(whole.counters.bytesSkipped, single.counters.bytesSkipped);
            EXPECT_LE(whole.counters.bytesSkipped, input.size());
            for (const FoundFrame& frame : whole.frames) {
                EXPECT_LT(frame.begin, frame.end);
                EXPECT_LE(frame.end, input.size() + 3);
            }
        }
    }
}

TEST(InputForms, HaveNames)
{
    EXPECT_EQ(inputFormOf("auto"), InputForm::automatic);
    EXPECT_EQ(inputFormOf("words"), InputForm::words);
    EXPECT_FALSE(inputFormOf("Stream").has_value());
}

}    // namespace
