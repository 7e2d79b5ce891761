// Every form of output is read back as it was written, by the reader of its form and by itself.
#include "PacketWriter.h"
#include "support/ReadFrames.h"
#include "support/StreamBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

struct FormCase {
    const char* name;
    InputForm form;
};

std::ostream& operator<<(std::ostream& out, const FormCase& formCase)
{
    return out << formCase.name;
}

class EveryForm : public testing::TestWithParam<FormCase> {};

std::vector<Bytes> someMessages(std::size_t count, unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<Bytes> messages;
    for (std::size_t i = 0; i < count; ++i) {
        messages.push_back(makeMessage(random() % 32, random));
    }
    return messages;
}

Bytes written(InputForm form, const std::vector<Bytes>& messages)
{
    const std::unique_ptr<PacketWriter> writer = makeWriter(form);
    Bytes out;
    for (const Bytes& message : messages) {
        EXPECT_TRUE(writer->append(message, out));
    }
    return out;
}

TEST_P(EveryForm, IsReadAsItWasWritten)
{
    for (const unsigned seed : {1U, 2U, 3U, 4U, 5U}) {
        const std::vector<Bytes> messages = someMessages(200, seed);
        const Bytes input = written(GetParam().form, messages);
        for (const InputForm form : {GetParam().form, InputForm::automatic}) {
            for (const auto& pieceSize : waysToCut()) {
                const FoundInput found = readInput(form, input, pieceSize);
                ASSERT_EQ(found.messages(), messages);
                EXPECT_EQ(found.frames.size(), messages.size());
                EXPECT_EQ(found.frames.back().number, messages.size());
                EXPECT_EQ(found.counters.bytesRead, input.size());
                EXPECT_EQ(found.counters.bytesSkipped, 0U);
                EXPECT_STREQ(found.counters.form, GetParam().name);
            }
        }
    }
}

TEST_P(EveryForm, IsFoundOutFromASingleMessage)
{
    for (unsigned words = 1; words < 32; ++words) {
        std::mt19937 random(words);
        const std::vector<Bytes> message = {makeMessage(words, random)};
        const FoundInput found = readInput(InputForm::automatic, written(GetParam().form, message),
                                           [] { return std::size_t{1}; });
        EXPECT_STREQ(found.counters.form, GetParam().name) << words << " words";
        EXPECT_EQ(found.messages(), message);
    }
}

TEST_P(EveryForm, RefusesWhatIsNoWholeMessage)
{
    std::mt19937 random(9);
    const Bytes good = makeMessage(3, random);
    const std::unique_ptr<PacketWriter> writer = makeWriter(GetParam().form);
    Bytes out;
    Bytes other = good;
    other.pop_back();
    EXPECT_FALSE(writer->append(other, out));
    other = good;
    other.insert(other.end(), {1, 2, 3});
    EXPECT_FALSE(writer->append(other, out));
    other = good;
    other[0] = 0x67;
    EXPECT_FALSE(writer->append(other, out));
    EXPECT_FALSE(writer->append({}, out));
    EXPECT_TRUE(out.empty());
    EXPECT_TRUE(writer->append(good, out));
    EXPECT_EQ(out, written(GetParam().form, {good}));
}

INSTANTIATE_TEST_SUITE_P(Forms, EveryForm,
                         testing::Values(FormCase{"stream", InputForm::stream},
                                         FormCase{"packed", InputForm::packed},
                                         FormCase{"hex", InputForm::hex},
                                         FormCase{"words", InputForm::words}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(WordsForm, HoldsUprightDataAndTheParityOfAStream)
{
    const std::vector<Bytes> messages = someMessages(50, 6);
    const Bytes recording = written(InputForm::words, messages);
    bool d29 = false;
    bool d30 = false;
    std::size_t at = 0;
    for (const Bytes& message : messages) {
        for (std::size_t i = 0; i < message.size(); i += 3, at += 4) {
            const unsigned data = static_cast<unsigned>(message[i]) << 16 |
                                  static_cast<unsigned>(message[i + 1]) << 8 | message[i + 2];
            const unsigned parity = referenceParity(data, d29, d30);
            const unsigned unit = static_cast<unsigned>(recording[at + 3]) << 24 |
                                  static_cast<unsigned>(recording[at + 2]) << 16 |
                                  static_cast<unsigned>(recording[at + 1]) << 8 | recording[at];
            ASSERT_EQ(unit, data << 6 | parity);
            d29 = (parity & 2) != 0;
            d30 = (parity & 1) != 0;
        }
    }
    EXPECT_EQ(at, recording.size());
}

TEST(HexForm, IsALowerCaseLineAMessage)
{
    Bytes out;
    EXPECT_TRUE(makeWriter(InputForm::hex)->append(Bytes{0x66, 0x04, 0x8f, 0xAB, 0xCD, 0x03}, out));
    EXPECT_EQ(std::string(out.begin(), out.end()), "66048fabcd03\n");
}

TEST(OutputForms, OnlyHexIsText)
{
    EXPECT_TRUE(isText(InputForm::hex));
    EXPECT_FALSE(isText(InputForm::stream));
    EXPECT_FALSE(isText(InputForm::packed));
    EXPECT_FALSE(isText(InputForm::words));
}

}    // namespace
