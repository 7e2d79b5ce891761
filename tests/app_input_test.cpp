// The forms of input and output, through the C interface: what is found in good, dirty and cut
// inputs, where and in which form, and that what is written is read.
#include "RTCM2_forms.h"
#include "framing/Header.h"
#include "support/StreamBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string_view>

namespace {

Bytes operator+(Bytes left, const Bytes& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Bytes text(std::string_view characters)
{
    return {characters.begin(), characters.end()};
}

Bytes cut(Bytes bytes, std::size_t size)
{
    bytes.resize(size);
    return bytes;
}

// A message of 3 * (2 + words) bytes, none of which but the first is a preamble.
Bytes packed(unsigned words, std::uint8_t fill = 0x11)
{
    Bytes message(3 * (2 + std::size_t{words}), fill);
    message[0] = 0x66;
    message[5] = static_cast<std::uint8_t>(words << 3);
    return message;
}

// As a station sends them, of any length.
std::vector<Bytes> messages(unsigned count, unsigned seed = 1)
{
    std::mt19937 random(seed);
    std::vector<Bytes> messages;
    for (unsigned i = 0; i < count; ++i) {
        messages.push_back(makeMessage(3 + random() % 29, random));
        messages.back()[3] = static_cast<std::uint8_t>(i >> 5);
        messages.back()[4] = static_cast<std::uint8_t>(i << 3 | i % 8);
    }
    return messages;
}

constexpr RTCM2_envelope_s sender = {.received = RTCM2_FORMS_NO_TIME,
                                     .has_sender = 1,
                                     .mmsi = 2734450,
                                     .longitude = -5,
                                     .latitude = 7};

// Leaves out what the writer refuses.
Bytes writtenAs(const char* form, const std::vector<Bytes>& messages,
                const RTCM2_envelope_s& envelope = sender)
{
    RTCM2_form_writer_s* const writer = RTCM2_form_writer_new(form);
    RTCM2_form_writer_set_envelope(writer, &envelope);
    Bytes out;
    for (const Bytes& message : messages) {
        std::size_t size = 0;
        const std::uint8_t* bytes =
            RTCM2_form_writer_write(writer, message.data(), message.size(), &size);
        EXPECT_EQ(bytes == nullptr, size == 0);
        out.insert(out.end(), bytes, bytes + size);
    }
    RTCM2_form_writer_free(writer);
    return out;
}

// A message as units of a recording, without parity.
Bytes units(const Bytes& message)
{
    Bytes recorded = writtenAs("words", {message});
    for (std::size_t i = 0; i < recorded.size(); i += 4) {
        recorded[i] ^= 0x2A;
        recorded[i + 3] |= 0xC0;
    }
    return recorded;
}

struct Reading {
    std::vector<Bytes> messages;
    Bytes recorded;
    std::string frames;    // "begin-end" of each, what is wrong with it and what came with it
    std::string problem;
    RTCM2_form_counters_s counters{};
};

// " MMSI,longitude,latitude @microseconds bits", as far as there is anything to tell.
std::string told(const RTCM2_found_s& found)
{
    const RTCM2_envelope_s& envelope = found.envelope;
    const std::string position =
        ',' + std::to_string(envelope.longitude) + ',' + std::to_string(envelope.latitude);
    return (envelope.has_sender ? ' ' + std::to_string(envelope.mmsi) + position : "") +
           (envelope.received != RTCM2_FORMS_NO_TIME ? " @" + std::to_string(envelope.received)
                                                     : "") +
           (found.bits_heard < found.packed_size * 8 ? ' ' + std::to_string(found.bits_heard) : "");
}

void takeAll(RTCM2_form_reader_s* reader, Reading& reading)
{
    RTCM2_found_s found{};
    while (RTCM2_form_reader_next(reader, &found) == 1) {
        if (found.kind == RTCM2_FOUND_MESSAGE) {
            reading.messages.emplace_back(found.packed, found.packed + found.packed_size);
        }
        reading.recorded =
            reading.recorded + Bytes(found.recorded, found.recorded + found.recorded_size);
        EXPECT_EQ(*found.damage == 0, found.kind == RTCM2_FOUND_MESSAGE);
        reading.frames += std::to_string(found.begin) + '-' + std::to_string(found.end) +
                          (*found.damage == 0 ? "" : " ") + found.damage + told(found) + "; ";
    }
}

Reading readAs(const char* form, const Bytes& input, std::size_t pieceSize = 1 << 30)
{
    RTCM2_form_reader_s* const reader = RTCM2_form_reader_new(form);
    Reading reading;
    for (std::size_t at = 0; at < input.size(); at += pieceSize) {
        // A block of the exact size, so that a sanitizer sees any read beyond it.
        const auto from = input.begin() + static_cast<std::ptrdiff_t>(at);
        const Bytes piece(
            from, from + static_cast<std::ptrdiff_t>(std::min(pieceSize, input.size() - at)));
        EXPECT_EQ(RTCM2_form_reader_push(reader, piece.data(), piece.size()), 1);
        EXPECT_EQ(RTCM2_form_reader_push(reader, piece.data(), piece.size()), 0)
            << "not used up yet";
        takeAll(reader, reading);
    }
    RTCM2_form_reader_finish(reader);
    EXPECT_EQ(RTCM2_form_reader_push(reader, input.data(), input.size()), 0) << "after the end";
    takeAll(reader, reading);
    reading.problem = RTCM2_form_reader_problem(reader);
    RTCM2_form_reader_counters(reader, &reading.counters);
    RTCM2_form_reader_free(reader);
    EXPECT_EQ(reading.counters.bytes_read, input.size());
    return reading;
}

// Frames and the number of bytes skipped, however the input is cut.
void check(const char* form, const std::vector<std::pair<Bytes, std::string>>& inputs)
{
    for (const auto& [input, expected] : inputs) {
        for (const std::size_t pieceSize : {1 << 30, 1, 7}) {
            const Reading reading = readAs(form, input, pieceSize);
            EXPECT_EQ(reading.frames + std::to_string(reading.counters.bytes_skipped), expected);
        }
    }
}

TEST(PackedInput, FindsMessagesInGarbage)
{
    const Bytes a = packed(1);
    const Bytes b = packed(2, 0x22);
    Bytes nested = packed(5);    // a message inside it, followed by another preamble
    std::copy_n(packed(0).begin(), 6, &nested[9]);
    nested[15] = 0x66;
    const std::string no = " no message begins here; ";
    check("packed", {{nested + text("x") + b, "0-21; 21-22" + no + "22-34; 1"},
                     {packed(0) + packed(0), "0-6; 6-12; 0"},
                     {text("junk") + a + b, "0-1" + no + "4-13; 13-25; 4"},
                     {a + text("xfy") + b + a + text("f") + b,
                      "0-9; 9-10" + no + "12-24; 24-33; 33-46 the input ends inside it; 34-46; 4"},
                     {a + text("junk"), "0-9; 9-10" + no + "4"},
                     // A message that lost bytes and took them from the next.
                     {cut(a, 7) + b + a, "0-9; 9-10" + no + "7-19; 19-28; 0"},
                     {a + cut(b, 11), "0-9; 9-20 the input ends inside it; 11"},
                     {a + cut(b, 1), "0-9; 9-10 the input ends inside it; 1"},
                     {a + text("\n") + b + text("\r\n") + a + text("\n"), "0-9; 10-22; 24-33; 4"},
                     {text("x") + a + text("\r\n") + b + text("\n\n\n") + a,
                      "0-1" + no + "1-10; 12-24; 26-27" + no + "27-36; 6"},
                     {a + Bytes(10000, '\n') + b, "0-9; 11-12" + no + "10009-10021; 10000"}});
}

TEST(RecordedInput, FindsMessagesInGarbage)
{
    const Bytes a = units(packed(1));
    const Bytes b = units(packed(2, 0x22));
    const std::string no = " no message begins here; ";
    check("words", {{a + cut(b, 3), "0-12; 3"},
                    {a + cut(b, 9), "0-12; 12-21 the input ends inside it; 9"},
                    {a + text("xyz") + b + a, "0-12; 12-16" + no + "15-31; 31-43; 3"},
                    {text("x") + a + text("yz"), "0-4" + no + "1-13; 3"}});
    EXPECT_EQ(readAs("auto", a + b).recorded, a + b);
    Bytes damaged = writtenAs("words", std::vector<Bytes>(3, packed(9, 0x91)));
    damaged[44 + 13] ^= 4;
    check("auto", {{damaged, "0-44; 44-60 bad parity in word 4; 88-132; 44"}});
}

TEST(RecordedOutput, HasParityThatGoesOnFromMessageToMessage)
{
    const Bytes recorded = writtenAs("words", messages(9));
    std::uint32_t last = 0;
    for (std::size_t i = 0; i < recorded.size(); i += 4) {
        const std::uint32_t unit = recorded[i] + recorded[i + 1] * 256U + recorded[i + 2] * 65536U +
                                   (recorded[i + 3] * 65536U << 8);
        ASSERT_EQ(unit & 0x3F, referenceParity(unit >> 6, (last & 2) != 0, (last & 1) != 0));
        last = unit;
    }
}

TEST(HexInput, IsReadLineByLine)
{
    const std::string header = "660405112218";    // declares three words more
    const std::string whole = header + "0102030405060708ab";
    const std::string none = " no hexadecimal digit at byte ";
    const std::pair<std::string, std::string> lines[] = {
        {whole, "0-30; 0"},
        {whole + "\r\n\r\n", "0-30; 2"},
        {" 0x66 0X04 0x05 11 22 18\t0102030405060708 0xAB \n", "1-46; 0"},
        {"2024-01-01T00:00:00 " + whole + "\n[12:00:01.5] 66 " + whole.substr(2),
         "20-50 @1704067200000000; 64-95; 0"},
        {"Received on 1 January: 1704067200 1704067201 " + whole, "45-75 @1704067200000000; 0"},
        {"7 660 Jan 1 1:02 " + whole, "17-47; 0"},
        {"1:02 66zz\n1:02 6604\n1:02 " + whole + " ok",
         "0-9" + none + "1; 15-19 too short for a header; 20-58" + none + "21; 58"},
        {"# 66\n\n  # 66\n" + whole + "\n \n", "13-43; 15"},
        {"x6\n", "0-2" + none + "0; 3"},
        {whole + "1\n", "0-31 odd number of hexadecimal digits; 32"},
        {"670405112200\n", "0-12 does not begin with the preamble, 66; 13"},
        {header + "\n", "0-12 has 6 bytes, but its header declares 15; 13"},
        {whole + "00\n", "0-32 has 16 bytes, but its header declares 15; 33"},
        {whole + "\n1:02 " + header, "0-30; 36-48 the input ends inside it; 17"},
        {whole + "\nhello", "0-30; 31-36" + none + "31; 5"},
        {std::string(100000, '6') + "\n" + whole,
         "0-100000 has 50000 bytes, but its header declares 42; 100001-100031; 100001"},
    };
    for (const auto& [input, expected] : lines) {
        check("hex", {{text(input), expected}});
    }
}

// With its checksum, of which the given bits are wrong.
std::string summed(const std::string& content, unsigned wrong = 0)
{
    unsigned sum = wrong;
    for (const char character : content) {
        sum ^= static_cast<unsigned char>(character);
    }
    return content + "*" + "0123456789ABCDEF"[sum >> 4] + "0123456789ABCDEF"[sum & 15];
}

// A broadcast of three words in one sentence of 43 characters, and in two of 32 and 31.
TEST(AisInput, IsReadAsItIsHeard)
{
    const auto one = [](const std::string& payload, const std::string& fill = "0") {
        return "!" + summed("AIVDO,1,1,,A," + payload + "," + fill);
    };
    const auto tags = [](const std::string& content, unsigned wrong = 0) {
        return "\\" + summed(content, wrong) + "\\";
    };
    const Bytes written = writtenAs("aivdm", {packed(1)});
    const std::string payload = std::string(written.begin(), written.end()).substr(14, 24);
    const std::string whole = one(payload);
    const std::string half = payload.substr(12) + ",0";
    const std::string first = "!" + summed("BSVDM,2,1,7,B," + payload.substr(0, 12) + ",0");
    const std::string second = "!" + summed("BSVDM,2,2,7,," + half);
    const std::string other = one("13HOI:0P0000VOHLCnHQKwvL05Ip");
    const auto others = [&](unsigned count) {
        std::string text = "\n";
        for (unsigned i = 0; i < count; ++i) {
            text += other + "\n";
        }
        return text;
    };
    const std::string from = " 2734450,-5,7";
    const std::string fromSomewhere = " 2734450,108600,54600";
    const std::string of = " the AIS message of MMSI 2734450";
    const std::string unheard = " sentence 2 of 2 of" + of + " did not come" + fromSomewhere + "; ";
    const std::string cutOff = " the input ends inside it" + fromSomewhere + "; ";
    const std::pair<std::string, std::string> inputs[] = {
        {whole + "\r" + whole + "\r\n\n" + whole,
         "0-43" + from + "; 44-87" + from + "; 90-133" + from + "; 1"},
        {"a! !AIVDM,\n" + other + "\n" + one("") + "\nrx2 " + whole + " ok\n" +
             std::string(99999, 'x'),
         "83-126" + from + "; 100078"},
        // Times: of a logger, behind the sentence, and in tag blocks.
        {"2024-01-01 00:00:00 " + whole + "\n" + whole + ",r003669945,1704067201\n",
         "20-63" + from + " @1704067200000000; 64-107" + from + " @1704067201000000; 0"},
        {tags("c:1704067200") + whole + "\n5 " + tags("c:1704067200125,s:x") + tags("s:y") + whole +
             "\n" + tags("c:5", 1) + whole,
         "17-60" + from + " @1704067200000000; 95-138" + from + " @1704067200125000; 147-190" +
             from + "; 0"},
        // Last bits that did not come, and bits behind the last word.
        {one(payload.substr(0, 22), "2") + one(payload.substr(0, 20)) + one(payload + "AA"),
         "0-41" + from + " 58; 41-80" + from + " 48; 80-125" + from + "; 0"},
        {one(payload.substr(0, 19)) + one("A0") + one("A\x7f") + one(payload, "6"),
         "0-38 no correction data in" + of + from +
             "; 38-59 no correction data in the AIS message; 59-80 its sentence has a character "
             "that stands for no bits; 80-123 its sentence does not say how many fill bits it "
             "has; 123"},
        {"!" + summed("AIVDM,1,1,,A,A", 1) + "\n" + whole.substr(0, 40) + "\n",
         "0-18 its sentence has the checksum 7A, and 7B would be right; 19-59 its sentence has no "
         "checksum; 60"},
        // Sentences in any order, between others, again, and those of another message.
        {first + "\n" + whole + other + "\n" + second, "33-76" + from + "; 0-155" + from + "; 48"},
        {second + "\n" + first + "\n" + first + "\n" + first + "\n" + second,
         "0-64" + from + "; 65-162" + from + "; 33"},
        {first + "\n!" + summed("BSVDM,2,1,7,B,5,0") + "\n" + second, "0-32" + unheard + "86"},
        {first + "\n!" + summed("BSVDM,2,2,7,," + half, 16) + "\n",
         "0-64 its sentence has the checksum 14, and 04 would be right" + fromSomewhere + "; 65"},
        {second + others(8) + first, "0-448" + from + "; 384"},
        {second + others(9) + first, "464-496" + cutOff + "496"},
        {first + others(63) + second, "0-3088" + from + "; 3024"},
        {first + others(64) + second, "0-32" + unheard + "3136"},
        {tags("g:1-2-5") + first + "\n" + tags("g:1-2-6") + first + "\n" + tags("g:2-2-5") + "!" +
             summed("BSVDM,2,2,9,B," + half),
         "12-134" + from + "; 57-89" + cutOff + "45"},
        {whole.substr(0, 40), "0-40 the input ends inside it; 40"},
    };
    for (const auto& [input, expected] : inputs) {
        check("aivdm", {{text(input), expected}});
    }
}

// By MMSI, type and station, as counted by another program.
TEST(AisInput, GivesWhatIsInTheCapture)
{
    const char* const directory = std::getenv("RTCM2_TEST_CAPTURES");
    std::ifstream file(std::string(directory != nullptr ? directory : "") + "/ais-17-mixed.nmea",
                       std::ios::binary);
    if (!file) {
        GTEST_SKIP() << "no captures here";
    }
    const Bytes input{std::istreambuf_iterator<char>(file), {}};
    RTCM2_form_reader_s* const reader = RTCM2_form_reader_new("auto");
    RTCM2_form_reader_push(reader, input.data(), input.size());
    std::map<std::tuple<unsigned, unsigned, unsigned>, unsigned> counts;
    unsigned shorter = 0;
    for (RTCM2_found_s found{}; RTCM2_form_reader_next(reader, &found) == 1;) {
        const framing::Header header = framing::headerOf({found.packed, found.packed_size});
        ++counts[{found.envelope.mmsi, header.type, header.station}];
        shorter += found.packed_size * 8 - found.bits_heard == 16 ? 1 : 0;
    }
    RTCM2_form_reader_free(reader);
    const decltype(counts) expected = {
        {{4310302, 9, 684}, 43}, {{2734450, 31, 5}, 4},    {{2734450, 1, 5}, 3},
        {{2723683, 1, 1}, 3},    {{2723683, 31, 1}, 2},    {{4310602, 9, 696}, 5},
        {{4403003, 9, 722}, 4},  {{4403007, 9, 722}, 4},   {{2734462, 1, 1}, 2},
        {{2734462, 5, 1}, 1},    {{209400962, 43, 285}, 1}};
    EXPECT_EQ(counts, expected);
    EXPECT_EQ(shorter, 11U);
}

// What is of no form that is read: noise, sextets, letters, noise with u-blox and RTCM 3 in it.
Bytes rubbish(unsigned kind, std::size_t size, unsigned seed)
{
    std::mt19937 random(seed);
    Bytes bytes;
    while (bytes.size() < size) {
        Bytes noise(100);
        for (std::uint8_t& byte : noise) {
            byte = static_cast<std::uint8_t>(random());
            byte = kind == 1 ? byte % 64 + 0x40 : kind == 2 ? "aefY \n0x"[byte % 8] : byte;
        }
        const Bytes frame = kind == 3   ? Bytes{0xB5, 0x62, 1, 2, 0, 0, 3, 10}
                            : kind == 4 ? Bytes{0xD3, 0, 0, 0x47, 0xEA, 0x4B}
                                        : Bytes();
        bytes = bytes + noise + frame;
    }
    return bytes;
}

TEST(AutoInput, FindsWhatHasParityBehindAnything)
{
    for (unsigned run = 0; run < 45; ++run) {
        const char* const form = std::array{"hex", "stream", "words"}[run % 3];
        const std::vector<Bytes> sent = messages(20, run);
        const Reading reading =
            readAs("auto", rubbish(run % 5, 50000, run) + text("\n") + writtenAs(form, sent));
        EXPECT_STREQ(reading.counters.form, form) << run;
        // A message without data words may come out of the noise before.
        ASSERT_GE(reading.messages.size(), sent.size()) << run;
        EXPECT_TRUE(std::equal(sent.rbegin(), sent.rend(), reading.messages.rbegin())) << run;
    }
}

// A packed message whose first bytes are a header in a recording as well.
Bytes ambiguous()
{
    Bytes message = packed(5, 0x91);
    message[2] = 0x80;
    message[3] = 0x19;
    return message;
}

TEST(AutoInput, FindsTheForm)
{
    const Bytes prose = text("Connected to station 5.\r\nfor news see below\r\n\r\n");
    const auto written = [](const char* form, unsigned count) {
        return writtenAs(form, messages(count));
    };
    const std::vector<Bytes> many(900, packed(5, 0x91));
    Bytes lines;
    Bytes recorded;
    for (const Bytes& message : messages(9)) {
        lines = lines + message + text("\r\n");
        recorded = recorded + units(message);
    }
    const Bytes stream = written("stream", 9);
    const Bytes ais = text("!AIVDM,1,1,,A,13HOI:0P0000VOHLCnHQKwvL05Ip,0*23\r\n");
    const std::string nothing = "unsure of its form: no certain message in ";
    constexpr auto vouched = RTCM2_CERTAINTY_VOUCHED;
    constexpr auto likely = RTCM2_CERTAINTY_LIKELY;
    constexpr auto unsure = RTCM2_CERTAINTY_UNSURE;
    const std::tuple<Bytes, std::string, std::size_t, RTCM2_certainty_enum> cases[] = {
        {stream, "stream", 9, vouched},
        {text("x") + cut(stream, 60), "stream", 0, vouched},
        {ais + stream, "stream", 9, vouched},
        {text("# a\n") + written("hex", 2), "hex", 2, vouched},
        {cut(written("hex", 1), 20), "hex", 0, vouched},
        {prose + written("words", 1), "words", 1, vouched},
        {prose + recorded, "words", 9, likely},
        {prose + written("packed", 9), "packed", 9, likely},
        {lines, "packed", 9, likely},
        {written("packed", 1) + packed(3), "packed", 2, likely},
        {written("packed", 1) + cut(packed(3), 8), "packed", 1, likely},
        {ambiguous() + ambiguous(), "packed", 2, likely},
        {ambiguous() + writtenAs("packed", many), "packed", 901, likely},
        {{}, "", 0, unsure},
        {prose, nothing + "47 bytes", 0, unsure},
        {Bytes(5000, 0), nothing + "5000 bytes", 0, unsure},
        {Bytes(5000, '@'), nothing + "5000 bytes", 0, unsure},
        {rubbish(0, 1 << 20, 9) + stream, nothing + "1048576 bytes", 0, unsure},
        // The first bytes of a type 1 message are a header of type 16 as packed ones.
        {cut(stream, 14), nothing + "14 bytes", 0, unsure},
        {packed(4, 'a'), nothing + "18 bytes", 0, unsure},
        {prose + written("packed", 7),
         "unsure of its form: in 383 bytes, no more than 7 messages in a row", 0, unsure},
        {text("!AIVDM,1,1,,A,1,0*00"), nothing + "20 bytes", 0, unsure},
        {ais + lines, "aivdm", 0, vouched},
        {cut(ais, ais.size() - 2), "aivdm", 0, vouched},
        {ais + written("aivdm", 3) + stream, "aivdm", 3, vouched},
        {prose + ais + Bytes(1 << 20, ' ') + written("aivdm", 3), "aivdm", 3, vouched},
        {rubbish(3, 9000, 1), "it looks like u-blox (", 0, unsure},
        {rubbish(4, 9000, 1), "it looks like RTCM 3 (", 0, unsure},
    };
    for (const auto& [input, formOrProblem, count, certainty] : cases) {
        for (const std::size_t pieceSize : {1 << 30, 1, 7}) {
            const Reading reading = readAs("auto", input, pieceSize);
            const std::string told = reading.counters.form + reading.problem;
            EXPECT_EQ(told.substr(0, formOrProblem.size()), formOrProblem);
            EXPECT_EQ(reading.messages.size(), count) << formOrProblem;
            EXPECT_EQ(reading.counters.certainty, certainty) << formOrProblem;
        }
    }
    // Behind something else only messages of one station count, in its order and without a
    // pause.
    for (const std::size_t byte : {2U, 3U, 4U}) {
        std::vector<Bytes> mixed = messages(9);
        mixed[4][byte] ^= 4;
        EXPECT_EQ(readAs("auto", prose + writtenAs("packed", mixed)).frames, "") << byte;
    }
}

// A message comes out with its last byte (of a hex line, its end), not with the next one; packed
// ones whose form has to be found out, with the last byte of those that are needed.
TEST(EveryForm, IsReadAsItWasWrittenAndAtOnce)
{
    EXPECT_EQ(RTCM2_form_reader_new("no such form"), nullptr);
    EXPECT_EQ(RTCM2_form_writer_new("auto"), nullptr);
    const std::vector<Bytes> sent = messages(400);
    const std::vector<Bytes> refused = {cut(sent[0], 32), sent[0] + text("abc"), {}, text("abc")};
    for (const char* const form : {"stream", "packed", "hex", "words", "aivdm"}) {
        // What is no whole message is left out.
        const Bytes input = writtenAs(form, refused) + writtenAs(form, sent);
        for (const char* const readForm : {form, "auto"}) {
            SCOPED_TRACE(std::string(form) + " read as " + readForm);
            const Reading reading = readAs(readForm, input, 40);
            EXPECT_EQ(reading.messages, sent);
            EXPECT_EQ(reading.counters.bytes_skipped, 0U);
            EXPECT_STREQ(reading.counters.form, form);
            const unsigned needed = *form == 'p' && readForm != form ? 4 : 1;
            const std::size_t size = writtenAs(form, messages(needed)).size();
            RTCM2_form_reader_s* const reader = RTCM2_form_reader_new(readForm);
            RTCM2_found_s found{};
            for (std::size_t at = 0; at < size; ++at) {
                RTCM2_form_reader_push(reader, &input[at], 1);
                ASSERT_EQ(RTCM2_form_reader_next(reader, &found), at + 1 == size ? 1 : 0) << at;
            }
            RTCM2_form_reader_free(reader);
        }
    }
}

}    // namespace
