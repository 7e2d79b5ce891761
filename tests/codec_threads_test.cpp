// Threads that use the codec at once, each with a context and records of its own. Run under a race
// detector as well.
#include "RTCM2.h"

#include "support/CodecKinds.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>

namespace {

struct Result {
    std::int32_t decoded;
    std::string name;
    std::uint8_t unknownType;
    std::vector<std::uint8_t> encoded;

    bool operator==(const Result&) const = default;
};

// Decodes messages of every type number, of random content and length, and encodes them again.
std::vector<Result> work(unsigned seed)
{
    std::mt19937 random{seed};
    RTCM2_context_s context;
    RTCM2_init_context(&context);
    std::vector<Result> results;
    for (unsigned i = 0; i < 400; ++i) {
        std::vector<std::uint8_t> bytes(6 + random() % 94);
        for (std::uint8_t& byte : bytes) {
            byte = static_cast<std::uint8_t>(random());
        }
        RTCM2_message_s message;
        message.kind = RTCM2_MESSAGE_NULL;
        const auto size = static_cast<std::uint16_t>(bytes.size());
        const std::int32_t decoded = RTCM2_decode(&context, bytes.data(), size, &message);
        Result result{decoded, RTCM2_error_to_string(decoded), context.unknown_type, {}};
        if (message.kind != RTCM2_MESSAGE_NULL) {
            const MainKind& kind = mainKind(bytes[1] >> 2);
            if (decoded > 0) {
                result.encoded.resize(bytes.size());
                kind.encodeMessage(message, result.encoded.data(), size);
            }
            RTCM2_free_message(&message);
        }
        results.push_back(std::move(result));
    }
    return results;
}

TEST(CodecThreads, GiveWhatOneThreadGives)
{
    constexpr unsigned count = 4;
    std::vector<std::vector<Result>> expected;
    for (unsigned seed = 0; seed < count; ++seed) {
        expected.push_back(work(seed));
    }
    std::vector<std::vector<Result>> found(count);
    std::vector<std::thread> threads;
    for (unsigned seed = 0; seed < count; ++seed) {
        threads.emplace_back([&found, seed] { found[seed] = work(seed); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(found, expected);
}

}    // namespace
