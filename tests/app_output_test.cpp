// Every form of output is read back as it was written, by the reader of its form and by itself.
// The samples hold what the bytes of each form are.
#include "forms/InputForm.h"
#include "support/ReadFrames.h"
#include "support/StreamBuilder.h"

#include <gtest/gtest.h>

namespace {

const std::pair<const char*, InputForm> forms[] = {{"stream", InputForm::stream},
                                                   {"packed", InputForm::packed},
                                                   {"hex", InputForm::hex},
                                                   {"words", InputForm::words}};

Bytes written(InputForm form, const std::vector<Bytes>& messages)
{
    const std::unique_ptr<PacketWriter> writer = makeWriter(form);
    Bytes out;
    for (const Bytes& message : messages) {
        EXPECT_TRUE(writer->append(message, out));
    }
    return out;
}

TEST(EveryForm, IsReadAsItWasWritten)
{
    std::mt19937 random(1);
    std::vector<Bytes> messages;
    for (int i = 0; i < 500; ++i) {
        messages.push_back(makeMessage(random() % 32, random));
    }
    for (const auto& [name, form] : forms) {
        const Bytes input = written(form, messages);
        for (const InputForm readAs : {form, InputForm::automatic}) {
            for (const auto& pieceSize : waysToCut()) {
                const FoundInput found = readInput(readAs, input, pieceSize);
                ASSERT_EQ(found.messages(), messages) << name;
                EXPECT_EQ(found.frames.size(), messages.size());
                EXPECT_EQ(found.frames.back().number, messages.size());
                EXPECT_EQ(found.counters.bytesRead, input.size());
                EXPECT_EQ(found.counters.bytesSkipped, 0U);
                EXPECT_STREQ(found.counters.form, name);
            }
        }
    }
}

TEST(EveryForm, IsFoundOutFromASingleMessage)
{
    for (const auto& [name, form] : forms) {
        for (unsigned words = 1; words < 32; ++words) {
            std::mt19937 random(words);
            const std::vector<Bytes> message = {makeMessage(words, random)};
            const FoundInput found = readInput(InputForm::automatic, written(form, message),
                                               [] { return std::size_t{1}; });
            EXPECT_STREQ(found.counters.form, name) << words << " words";
            EXPECT_EQ(found.messages(), message);
        }
    }
}

TEST(EveryForm, RefusesWhatIsNoWholeMessage)
{
    std::mt19937 random(9);
    const Bytes good = makeMessage(3, random);
    Bytes shorter = good;
    shorter.resize(good.size() - 1);
    Bytes longer = good;
    longer.insert(longer.end(), {1, 2, 3});
    Bytes strange = good;
    strange[0] = 0x67;
    for (const auto& [name, form] : forms) {
        const std::unique_ptr<PacketWriter> writer = makeWriter(form);
        Bytes out;
        for (const Bytes& bad : {shorter, longer, strange, Bytes()}) {
            EXPECT_FALSE(writer->append(bad, out)) << name;
        }
        EXPECT_TRUE(writer->append(good, out));
        EXPECT_EQ(out, written(form, {good})) << name;
    }
}

}    // namespace
