// Sessions: which inputs are read and how they end, and which messages are written again.
#include "CopySink.h"
#include "Host.h"
#include "MessageFilter.h"
#include "Output.h"
#include "Progress.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include <unistd.h>

namespace {

// Header words alone, in hexadecimal: types 1 and 44, one that nobody knows, and a type 3 that is
// too short for its content.
const std::string known = "660405112200";
const std::string unreported = "66b005112200";
const std::string unknown = "66f005112200";
const std::string misfit = "660c05112200";

class Counter : public Sink {
public:
    void message(const Place&, const Decoded&) override { ++messages; }
    void trouble(const Place&, Trouble, const std::string& text) override
    {
        troubles += text + ';';
    }
    void endOfInput(const std::string&, const ReaderCounters&) override { ++inputs; }

    int messages = 0;
    int inputs = 0;
    std::string troubles;
};

class SessionTest : public testing::Test {
protected:
    SessionTest()
    {
        std::string pattern = testing::TempDir() + "sessionXXXXXX";
        directory = ::mkdtemp(pattern.data());
    }
    ~SessionTest() override { std::filesystem::remove_all(directory); }

    std::string path(const std::string& name) const { return directory / name; }
    std::string file(const std::string& name, const std::string& content) const
    {
        std::ofstream(path(name), std::ios::binary) << content;
        return path(name);
    }

    ExitStatus run(const std::vector<std::string>& inputs, Sink& sink, SessionOptions options = {})
    {
        options.quiet = true;
        Session session(host.model, host.driver, filter, [this] { return makeReader(form); });
        return session.run(inputs, options, sink);
    }

    std::string converted(const std::string& lines, const CopyOptions& options)
    {
        Output output;
        EXPECT_TRUE(output.open(path("out")));
        CopySink sink(output, options);
        run({file("in", lines)}, sink);
        EXPECT_TRUE(output.close());
        std::ifstream written(path("out"), std::ios::binary);
        return {std::istreambuf_iterator<char>(written), {}};
    }

    Host host;
    MessageFilter filter{host.model, {}, host.parts.station};
    InputForm form = InputForm::hex;
    std::filesystem::path directory;
};

TEST_F(SessionTest, ReadsOnBehindInputsThatCannotBeRead)
{
    Counter counter;
    const std::string good = file("good", known + "\n");
    EXPECT_EQ(run({path("missing"), good, directory, good}, counter), ExitStatus::unreadable);
    EXPECT_EQ(counter.messages, 2);
    EXPECT_EQ(counter.inputs, 2);
}

TEST_F(SessionTest, EndsAsItWasAsked)
{
    const std::string mixed = file("mixed", known + "\nzz\n" + known + "\n");
    const std::string empty = file("empty", "");
    const struct {
        std::string input;
        SessionOptions options;
        ExitStatus status;
        int messages;
        std::string troubles;
    } cases[] = {
        {empty, {}, ExitStatus::nothingFound, 0, ""},
        {mixed, {}, ExitStatus::success, 2, "no hexadecimal digit at byte 13;"},
        {mixed, {.max = 1}, ExitStatus::success, 1, ""},
        {mixed, {.max = 2}, ExitStatus::success, 2, "no hexadecimal digit at byte 13;"},
        {mixed,
         {.onError = OnError::stop},
         ExitStatus::stoppedAtTrouble,
         1,
         "no hexadecimal digit at byte 13;"},
    };
    for (const auto& test : cases) {
        Counter counter;
        EXPECT_EQ(run({test.input}, counter, test.options), test.status);
        EXPECT_EQ(counter.messages, test.messages);
        EXPECT_EQ(counter.troubles, test.troubles);
    }
}

// A pipe that stays open: what is asked for must not wait for its end, or for more than is there.
TEST_F(SessionTest, ReadsNoFurtherThanItMust)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const std::string line = known + "\n";
    ASSERT_EQ(::write(ends[1], line.data(), line.size()), static_cast<ssize_t>(line.size()));
    Counter counter;
    EXPECT_EQ(run({"/dev/fd/" + std::to_string(ends[0])}, counter, {.max = 1}),
              ExitStatus::success);
    EXPECT_EQ(counter.messages, 1);
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(SessionTest, RecordedMessagesAreReadInTheirMode)
{
    // A type 1 message of station 70.
    form = InputForm::words;
    const std::string recorded("\x80\x11\x81\x19\0\0\0\0", 8);
    for (const unsigned char mode : {std::uint8_t{0}, std::uint8_t{3}}) {
        Counter counter;
        EXPECT_EQ(run({file("recorded", recorded)}, counter, {.mode = mode}), ExitStatus::success);
        EXPECT_EQ(counter.messages, mode == 3 ? 0 : 1);
        EXPECT_EQ(counter.troubles, "");
    }
}

TEST_F(SessionTest, MessagesAreCopiedAsFarAsWanted)
{
    const std::string all = known + "\n" + unreported + "\nzz\n" + unknown + "\n" + misfit + "\n";
    const struct {
        CopyOptions options;
        std::string written;
    } cases[] = {
        {{}, known + "\n" + unreported + "\n" + unknown + "\n"},
        {{.copiesUnknown = false}, known + "\n"},
        {{.copiesMisfits = true},
         known + "\n" + unreported + "\n" + unknown + "\n" + misfit + "\n"},
        {{.copiesUnknown = false, .copiesMisfits = true}, known + "\n" + misfit + "\n"},
        {{.max = 2}, known + "\n" + unreported + "\n"},
    };
    for (const auto& test : cases) {
        CopyOptions options = test.options;
        options.form = InputForm::hex;
        EXPECT_EQ(converted(all, options), test.written);
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

}    // namespace
