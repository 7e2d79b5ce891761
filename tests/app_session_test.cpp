// Sessions: how inputs are read and how they end, and which messages are written again.
#include "base/Descriptor.h"
#include "base/Progress.h"
#include "base/Terminal.h"
#include "export/CopySink.h"
#include "session/FrameQueue.h"
#include "support/AppSession.h"

#include <algorithm>
#include <array>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace {

// Header words alone, in hexadecimal: types 1 and 44, one that nobody knows, and a type 3 that is
// too short for its content.
const std::string known = "660405112200\n";
const std::string unreported = "66b005112200\n";
const std::string unknown = "66f005112200\n";
const std::string misfit = "660c05112200\n";

class Counter : public Sink {
public:
    void take(const Found& found) override
    {
        messages += found.what == Found::What::message ? 1 : 0;
        troubles += found.text.empty() ? "" : found.text + ';';
    }

    int messages = 0;
    std::string troubles;
};

class SessionTest : public testing::Test {
protected:
    SessionTest() { app.form = InputForm::hex; }

    std::string file(const std::string& name, const std::string& content) const
    {
        app.writeFile(name, {content.begin(), content.end()});
        return app.pathOf(name);
    }

    AppSession app;
    Counter counter;
};

TEST_F(SessionTest, EndsAsItWasAsked)
{
    const std::string mixed = known + "zz\n" + known;
    const std::string trouble = "no hexadecimal digit at byte 13;";
    const struct {
        std::string input;
        SessionOptions options;
        ExitStatus status;
        int messages;
        std::string troubles;
    } cases[] = {
        {"", {}, ExitStatus::nothingFound, 0, ""},
        {mixed, {}, ExitStatus::success, 4, trouble + trouble},
        {mixed, {.max = 1}, ExitStatus::success, 1, ""},
        {mixed, {.max = 3}, ExitStatus::success, 3, trouble},
        {mixed, {.onError = OnError::stop}, ExitStatus::stoppedAtTrouble, 1, trouble},
    };
    for (const auto& test : cases) {
        Counter seen;
        app.sessionOptions = test.options;
        const std::string input = file("input", test.input);
        EXPECT_EQ(app.read({input, input}, seen), test.status);
        EXPECT_EQ(seen.messages, test.messages);
        EXPECT_EQ(seen.troubles, test.troubles);
    }
}

TEST_F(SessionTest, RecordedMessagesAreReadInTheirMode)
{
    // A type 1 message of station 70.
    app.form = InputForm::words;
    const std::string recorded = file("recorded", std::string("\x80\x11\x81\x19\0\0\0\0", 8));
    EXPECT_EQ(app.read({recorded}, counter), ExitStatus::success);
    EXPECT_EQ(counter.messages, 1);
    app.sessionOptions.mode = 3;
    EXPECT_EQ(app.read({recorded}, counter), ExitStatus::success);
    EXPECT_EQ(counter.messages, 1);
    EXPECT_EQ(counter.troubles, "");
}

// Of a type 22 message, whose words decide which fields it has, one data word out of three.
TEST_F(SessionTest, AShortMessageHasNoFieldsThatDidNotCome)
{
    struct Last : Counter {
        void take(const Found& found) override
        {
            Counter::take(found);
            isPresent = found.kind->fields.back().isPresent(found.record);
        }
        bool isPresent = true;
    } last;
    app.form = InputForm::aivdm;
    const std::string sentence = "!AIVDM,1,1,,A,A01r68CrU8vdP5VQGa<HnhEh,0*4F\r\n";
    EXPECT_EQ(app.read({file("short", sentence)}, last), ExitStatus::success);
    EXPECT_EQ(last.messages, 1) << last.troubles;
    EXPECT_FALSE(last.isPresent);
}

TEST_F(SessionTest, MessagesAreCopiedAsFarAsWanted)
{
    file("input", known + unreported + "zz\n" + unknown + misfit);
    const std::tuple<CopyOptions, unsigned, FilterOptions, std::string> cases[] = {
        {{}, 0, {}, known + unreported + unknown},
        {{}, 2, {}, known + unreported},
        {{.copiesUnknown = false}, 0, {}, known},
        {{.copiesMisfits = true}, 0, {}, known + unreported + unknown + misfit},
        {{.copiesUnknown = false, .copiesMisfits = true}, 2, {}, known + misfit},
        {{}, 0, {.kinds = {"44", "60"}}, unreported + unknown},
        {{}, 0, {.stations = {"5"}, .excludedKinds = {"1", "44"}}, unknown},
        {{}, 0, {.stations = {"6"}}, ""},
        {{}, 0, {.where = "Ns == 0"}, known + unreported},
    };
    for (auto [options, max, filter, written] : cases) {
        options.form = InputForm::hex;
        app.filterOptions = filter;
        app.sessionOptions.max = max;
        const auto makeSink = [&options = options](Output& output) {
            return std::make_unique<CopySink>(output, options);
        };
        EXPECT_EQ(app.run({"input"}, makeSink), written);
    }
}

TEST_F(SessionTest, TellsWhatAndWhereAndSumsUpWhatIsAlike)
{
    std::string many = misfit;
    for (int i = 0; i < 1211; ++i) {
        many += unknown;
    }
    app.sessionOptions.quiet = false;
    const std::string name = file("input", many + "zz\n");
    testing::internal::CaptureStderr();
    Output output;
    CopySink sink(output, {.form = InputForm::hex, .copiesUnknown = false});
    app.read({name}, sink);
    const std::string told = testing::internal::GetCapturedStderr();
    for (const std::string line :
         {": message 1 at byte 0, station 5, type 3: its content ends early (ECEF X does not "
          "fit)\n",
          ": message 11 at byte 130, station 5, type 60: unknown type\n",
          ": message 1213 at byte 15756: damaged message: no hexadecimal digit at byte 15756\n",
          ": and 1,201 more messages of unknown type 60\n"}) {
        EXPECT_NE(told.find("rtcm2: " + name + line), std::string::npos) << line << told;
    }
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 13);
}

// More frames of all sizes than the queue holds. The second thread gets time to run as far ahead as
// it may, and so has to wait.
TEST(FrameQueue, GivesEveryFrameOnceAndThenWhatTheSourceThrows)
{
    constexpr unsigned most = 300 * FrameBatch::room + 5;
    for (const bool throws : {false, true}) {
        unsigned made = 0;
        const auto fill = [&](FrameBatch& batch) {
            while (!batch.isFull() && made < most) {
                ++made;
                framing::Frame frame{.kind = made % 3 == 0 ? framing::Frame::Kind::damaged
                                                           : framing::Frame::Kind::message,
                                     .number = made,
                                     .wordCount = made % (framing::maxWords + 1)};
                frame.storage.fill(static_cast<std::uint8_t>(made));
                const AppSession::Packed recorded(made % 2 * 4 * frame.wordCount, frame.storage[0]);
                batch.add(frame, recorded, std::to_string(made));
            }
            if (throws && made == most) {
                throw std::bad_alloc();
            }
        };
        FrameQueue queue(fill, true);
        unsigned seen = 0;
        try {
            for (const auto* batch = &queue.next(); !batch->isEmpty(); batch = &queue.next()) {
                std::this_thread::sleep_for(std::chrono::milliseconds(seen < 200 ? 10 : 0));
                for (const FrameBatch::Entry& entry : batch->entries()) {
                    ASSERT_EQ(entry.number, ++seen);
                    const std::size_t size = seen % (framing::maxWords + 1) * (3 + seen % 2);
                    const AppSession::Packed bytes(size, static_cast<std::uint8_t>(seen));
                    ASSERT_TRUE(std::ranges::equal(batch->bytesOf(entry), bytes)) << seen;
                    ASSERT_TRUE(seen % 3 != 0 || batch->problemOf(entry) == std::to_string(seen));
                }
            }
            EXPECT_FALSE(throws);
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(throws);
        }
        EXPECT_EQ(seen, throws ? most - 5 : most);
    }
}

TEST(ProgressText, TellsWhatIsKnown)
{
    EXPECT_EQ(progressText(45'200'000, 100'000'000, 1),
              "45.2 MB of 100.0 MB (45 %), 45.2 MB/s, 2 s left");
    EXPECT_EQ(progressText(100, 1'000'000'000, 1),
              "100 B of 1.0 GB (0 %), 100 B/s, 2777 h 46 min left");
    EXPECT_EQ(progressText(999'960, 0, 2), "1.0 MB, 500.0 kB/s");
    EXPECT_EQ(progressText(300, 200, 1), "300 B of 200 B (100 %), 300 B/s");
    EXPECT_EQ(progressText(0, 200, 0), "0 B of 200 B (0 %), 0 B/s");
}

TEST(Printable, EscapesWhatIsNoVisibleCharacter)
{
    for (const char* const same :
         {"", " a\\~", "\u00A0\u07FF\u0800\uD7FF\uFFFD\U00010000\U0010FFFF"}) {
        EXPECT_EQ(printable(same), same);
    }
    const std::pair<std::string_view, const char*> cases[] = {
        {std::string_view("a\0b\x1B[2J\r\n\t\x7F", 11), R"(a\x00b\x1B[2J\x0D\x0A\x09\x7F)"},
        {"\u0080\u009B~", R"(\xC2\x80\xC2\x9B~)"},
        {"\u200B\u202E\u2066\uFEFF", R"(\xE2\x80\x8B\xE2\x80\xAE\xE2\x81\xA6\xEF\xBB\xBF)"},
        {"\xC3(\xE4\xBD", R"(\xC3(\xE4\xBD)"},                          // cut off
        {"\x80\xC1\xBF\xE0\x9F\xBF", R"(\x80\xC1\xBF\xE0\x9F\xBF)"},    // longer than need be
        {"\xED\xA0\x80\xF4\x90\x80\x80\xFF", R"(\xED\xA0\x80\xF4\x90\x80\x80\xFF)"},
    };
    for (const auto& [text, escaped] : cases) {
        EXPECT_EQ(printable(text), escaped);
    }
}

// Some who start the program leave it an output that does not wait for its reader.
TEST(WriteAll, WaitsForASlowReader)
{
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_NONBLOCK), 0);
    const std::string sent(300'000, 'x');
    std::thread writer([&] {
        EXPECT_TRUE(writeAll(ends[1], sent));
        ::close(ends[1]);
    });
    std::string received;
    std::array<char, 10'000> part{};
    for (ssize_t count = -1; count != 0; count = ::read(ends[0], part.data(), part.size())) {
        received.append(part.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    writer.join();
    ::close(ends[0]);
    EXPECT_EQ(received, sent);
}

}    // namespace
