#include "Expression.h"
#include "MessageFilter.h"
#include "NearestName.h"
#include "Number.h"
#include "Plugin.h"
#include "support/MessageHelpers.h"

#include "AbstractDecoder.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <stdexcept>
#include <utility>

namespace {

using Bytes = std::vector<std::uint8_t>;
using Bits = std::vector<std::pair<unsigned, std::int64_t>>;    // width and value

// A message of station 5, Z-count 4500 and health 0 in whole words.
Bytes messageOf(unsigned type, const Bits& content)
{
    Bytes payload;
    unsigned used = 0;
    for (const auto& [width, value] : content) {
        for (unsigned bit = width; bit-- > 0; ++used) {
            if (used % 24 == 0) {
                payload.resize(payload.size() + 3);
            }
            const auto one = static_cast<std::uint64_t>(value) >> bit & 1U;
            payload[used / 8] |= static_cast<std::uint8_t>(one << (7 - used % 8));
        }
    }
    return packed(type, static_cast<unsigned>(payload.size() / 3), payload);
}

Bytes textMessage(std::string_view text)
{
    Bits content;
    for (const char c : text) {
        content.push_back({8, c});
    }
    return messageOf(16, content);
}

constexpr std::int64_t farthest = (std::int64_t{1} << 37) - 1;    // of 38 bits

// Satellite 12 with PRC -100, RRC 5 and satellite 7 with what means "error".
const Bytes corrections = messageOf(1, {{1, 0},
                                        {2, 1},
                                        {5, 12},
                                        {16, -100},
                                        {8, 5},
                                        {8, 42},
                                        {1, 1},
                                        {2, 3},
                                        {5, 7},
                                        {16, -32768},
                                        {8, -1},
                                        {8, 165}});
const Bytes noCorrections = packed(9, 0);
const Bytes ionosphere = messageOf(15, {{2, 0}, {1, 1}, {5, 3}, {14, 9}, {14, -8192}});
const Bytes special = textMessage({"GALE \xE9t\xE9 12\0x", 13});
const Bytes pseudoranges = messageOf(
    21, {{2, 2}, {2, 3}, {20, 599999}, {8, 0x25}, {4, 7}, {1, 1}, {3, 0}, {8, 1}, {24, 0}});
const Bytes antenna =
    messageOf(24, {{38, -1}, {2, 0}, {38, farthest}, {2, 0}, {38, -farthest - 1}, {1, 1}, {1, 0}});
const Bytes antennaWithHeight =
    messageOf(24, {{38, 0}, {2, 0}, {38, 0}, {2, 0}, {38, 0}, {1, 0}, {1, 1}, {18, 0}, {6, 63}});
const Bytes proprietary = messageOf(59, {{8, 0x41}, {8, 0x42}, {8, 0x10}, {8, 0xFE}});

class FilterTest : public testing::Test {
protected:
    FilterTest()
    {
        for (const auto& kind : model.kinds()) {
            if (kind->isMain) {
                mainKinds.push_back(kind.get());
            }
        }
        QObject::connect(decoder.get(), &MessageSource::newMessage, [this](const Message* message) {
            message->addReference();
            latest = message;
        });
    }

    ~FilterTest() override { forget(); }

    void forget()
    {
        if (latest != nullptr) {
            std::exchange(latest, nullptr)->removeReference();
        }
    }

    // The message, kept until the next one.
    const Message& decode(const Bytes& bytes)
    {
        forget();
        const int result =
            decoder->decodeMessage(bytes.data(), static_cast<unsigned>(bytes.size()));
        if (latest == nullptr) {
            throw std::runtime_error("not decoded: " + std::to_string(result));
        }
        return *latest;
    }

    bool holds(const std::string& expression, const Bytes& bytes)
    {
        const Message& message = decode(bytes);
        return Expression(expression, mainKinds).holds(message, *model.kindOf(message));
    }

    std::string errorOf(const std::string& expression)
    {
        try {
            const Expression parsed(expression, mainKinds);
        } catch (const FilterError& error) {
            return error.text;
        }
        return "";
    }

    std::vector<std::string> kindsOf(const FilterOptions& options)
    {
        std::vector<std::string> names;
        const MessageFilter filter(model, options, plugin::fieldParts().station);
        for (const KindModel* kind : filter.kinds()) {
            names.push_back(std::to_string(kind->typeNumber));
        }
        return names;
    }

    bool takes(const FilterOptions& options, const Bytes& bytes)
    {
        const MessageFilter filter(model, options, plugin::fieldParts().station);
        const Message& message = decode(bytes);
        return filter.takes(message, *model.kindOf(message));
    }

    std::string filterErrorOf(const FilterOptions& options)
    {
        try {
            const MessageFilter filter(model, options, plugin::fieldParts().station);
        } catch (const FilterError& error) {
            return error.text;
        }
        return "";
    }

    FormatModel model{plugin::format()};
    std::unique_ptr<AbstractDecoder> decoder = plugin::makeDecoder();
    const Message* latest = nullptr;
    std::vector<const KindModel*> mainKinds;
};

struct Case {
    const char* expression;
    const Bytes& message;
    bool expected;
};

TEST_F(FilterTest, ExpressionsHoldOrNot)
{
    const Case cases[] = {
        // names
        {"\"Modified Z-Count\" == 4500", corrections, true},
        {"'modified z-count' = 4500", corrections, true},
        {"modified_z_count==4500", corrections, true},
        {"Sequence_No == 3 && \"Sequence No.\" == 3", corrections, true},
        {"Corrections.PRC < -99", corrections, true},
        {"corrections . \"satellite id\" == 7", corrections, true},
        {"Corrections.Satellite_Id == 8", corrections, false},
        // any element, each comparison for itself
        {"Corrections.PRC == -100 and Corrections.Satellite_Id == 7", corrections, true},
        {"Corrections.PRC != -100", corrections, true},
        {"Corrections.PRC != -100", noCorrections, false},
        {"not Corrections.PRC == -100", corrections, false},
        {"Data == 254", proprietary, true},
        {"Data == 0x10 and Data < 0x11", proprietary, true},
        {"Data == 0x11", proprietary, false},
        // numbers
        {"Corrections.PRC<=-32768", corrections, true},
        {"Corrections.PRC < -32768", corrections, false},
        {"Modified_Z_Count > 4499.5 and Modified_Z_Count < 4500.5", corrections, true},
        {"Modified_Z_Count == 4500.5", corrections, false},
        {"Modified_Z_Count == 45e2 and Modified_Z_Count == 4500.0", corrections, true},
        {"Modified_Z_Count < -1", corrections, false},
        {"Modified_Z_Count < 99999999999999999999999", corrections, true},
        {"ECEF_X == -1 and ECEF_X < 0 and ECEF_X > -1.5 and ECEF_X < -0.5", antenna, true},
        {"ECEF_X == 18446744073709551615", antenna, false},
        {"ECEF_Y == 137438953471 and ECEF_Z == -137438953472", antenna, true},
        {"ECEF_Y > 137438953471 or ECEF_Z > -137438953472", antenna, false},
        {"Data.PSF == 0.32 and Data.PSF > 0.31 and Data.PSF < 1", pseudoranges, true},
        {"Data.PSF >= 1 or Data.PSF != 0.32", pseudoranges, false},
        // what is absent or unknown to the kind
        {"Corrections.PRC < 0", special, false},
        {"not Corrections.PRC < 0", special, true},
        {"Antenna_Height == 0", antenna, false},
        {"Antenna_Height != 0", antenna, false},
        {"not Antenna_Height == 0", antenna, true},
        {"Antenna_Height == 0 and Reserved3 == 63", antennaWithHeight, true},
        {"present(Antenna_Height)", antenna, false},
        {"PRESENT ( \"Antenna Height\" )", antennaWithHeight, true},
        {"present(Corrections)", noCorrections, false},
        {"present(Corrections) and present(Corrections.PRC)", corrections, true},
        {"present(Corrections.PRC)", special, false},
        // coded values by their texts
        {"\"Station Health\" == 'udre scale factor = 1'", corrections, true},
        {"\"Station Health\" == \"Not Working\"", corrections, false},
        {"\"Station Health\" != \"Not Working\"", corrections, true},
        {"Station_Health ~ 'scale factor' and not Station_Health ~ work", corrections, true},
        {"Constellation == GLONASS", antenna, true},
        {"Constellation == GPS", antennaWithHeight, true},
        {"\"Height Indicator\" == Absent", antenna, true},
        {"Corrections.PRC == error", corrections, true},
        {"Corrections.\"Rate Of Change\" == 'Do not use'", ionosphere, true},
        {"Corrections.\"Rate Of Change\" == DoNotUse", ionosphere, true},
        {"Corrections.G == glonass", ionosphere, true},
        {"Data.\"Data Quality\" == 'GT 5.00 m'", pseudoranges, true},
        // text fields
        {"Message == 'GALE \xC3\xA9t\xC3\xA9 12'", special, true},
        {"Message == 'gale \xC3\xA9t\xC3\xA9 12'", special, false},
        {"Message != 'GALE'", special, true},
        {"Message ~ gale and Message contains \"t\xC3\xA9 1\"", special, true},
        {"Message ~ storm", special, false},
        {"Message ~ '12x'", special, false},
        {"Message ~ gale", corrections, false},
        {"Message ~ 'a\\'b' or Message ~ \"\\\\\"", special, false},
        // connections
        {"Message_Type == 1 or Message_Type == 9 and Ns == 7", corrections, true},
        {"(Message_Type == 1 or Message_Type == 9) and Ns == 7", corrections, false},
        {"not Ns == 7 and Ns == 2", corrections, true},
        {"not (Ns == 7 or Ns == 2)", corrections, false},
        {"! ! Ns == 2 && !(Ns == 3) || Ns == 9", corrections, true},
        {"Ns==2 AND NOT Ns==3", corrections, true},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(holds(c.expression, c.message), c.expected) << c.expression;
    }
}

struct ErrorCase {
    const char* expression;
    int column;           // of the caret, from 0
    const char* piece;    // of the text
};

TEST_F(FilterTest, ErrorsPointAtThePlace)
{
    const ErrorCase cases[] = {
        {"", 0, "ends too early"},
        {"   ", 3, "expected a condition"},
        {"Ns", 2, "expected ==, !="},
        {"Ns ==", 5, "expected a number or a text"},
        {"Ns == 5 6", 8, "expected 'and', 'or' or the end"},
        {"Ns == 5)", 7, "no '(' for this ')'"},
        {"(Ns == 5", 8, "expected ')'"},
        {"Ns == 5 and", 11, "expected a condition"},
        {"Ns < > 5", 5, "expected a number or a text"},
        {"5 == Ns", 0, "expected the field first"},
        {"== 5", 0, "expected a condition"},
        {"present(Ns", 10, "expected ')'"},
        {"present()", 8, "expected the name of a field"},
        {"Corrections. == 1", 13, "expected the name of a field"},
        {"Station Health == 7", 8, "\"Station Health\""},
        {"Modified_Z-Count == 7", 10, "stand in quotes"},
        {"Ns == 'open", 6, "expected another '"},
        {"Ns == 0x", 6, "'0x' is no number"},
        {"Ns == 1.", 6, "'1.' is no number"},
        {"Ns == 12abc", 6, "'12abc' is no number"},
        {"Ns == 1 & Ns == 2", 8, "expected &&"},
        {"Ns == 1 # 2", 8, "no meaning"},
        {"Statoin_Health == 7", 0, "did you mean \"Station Health\"?"},
        {"Ns == 1 or Z_Count == 7", 11, "did you mean \"Modified Z-Count\"?"},
        {"PRC < 0", 0, "did you mean Corrections.PRC?"},
        {"Corrections.PCR < 0", 12, "expected one of "},
        {"Ns.PRC < 0", 3, "'Ns' has no parts"},
        {"present(Nonsense)", 8, "no message that can pass has a field 'Nonsense'"},
        {"Corrections == 5", 12, "PRC, RRC"},
        {"Message == 5", 11, "expected a text in quotes: \"5\""},
        {"Message < 'a'", 8, "texts have no order"},
        {"Ns == Message_Type", 6, "a comparison of two fields is not possible"},
        {"Ns ~ 5", 3, "only texts contain something"},
        {"'Station Health' == Working", 20, "\"Not Working\""},
        {"'Station Health' < 'Not Working'", 17, "texts have no order"},
        {"\xC3\xA9\xC3\xA9\xC3\xA9 == 5 )", 9, "no '('"},
        {"Ns\t==\n5 )", 8, "no '('"},
    };
    for (const ErrorCase& c : cases) {
        const std::string error = errorOf(c.expression);
        EXPECT_NE(error.find(c.piece), std::string::npos) << c.expression << "\n" << error;
        const std::size_t lineBegin = error.find('\n') + 1;
        const std::size_t caretBegin = error.find('\n', lineBegin) + 1;
        const std::string line = error.substr(lineBegin, caretBegin - 1 - lineBegin);
        EXPECT_EQ(line.size(), std::string_view(c.expression).size() + 2) << error;
        EXPECT_EQ(error.find('^'), caretBegin + 2 + static_cast<std::size_t>(c.column)) << error;
    }
}

TEST_F(FilterTest, LongExpressionsAreShownInPart)
{
    std::string expression;
    for (int i = 0; i < 300; ++i) {
        expression += "Ns == 1 or ";
    }
    const std::string error = errorOf(expression + "Nn == 2 or " + expression + "Ns == 3");
    EXPECT_NE(error.find("  ... 1 or Ns == 1 or "), std::string::npos) << error;
    EXPECT_NE(error.find("...\n" + std::string(2 + 3 + 50, ' ') + "^\n"), std::string::npos)
        << error;
    EXPECT_TRUE(holds(expression + "Ns == 2", corrections));
}

TEST_F(FilterTest, DeepAndEndlessExpressionsAreRefusedOrHeld)
{
    const auto nested = [](std::size_t depth) {
        return std::string(depth, '(') + "Ns == 2" + std::string(depth, ')');
    };
    EXPECT_TRUE(holds(nested(100), corrections));
    EXPECT_NE(errorOf(nested(101)).find("nested too deeply"), std::string::npos);
    EXPECT_NE(errorOf(nested(5000)).find("nested too deeply"), std::string::npos);
    EXPECT_NE(errorOf(std::string(100000, '(')).find("too long"), std::string::npos);
    EXPECT_NE(errorOf(std::string(100000, '!')).find("too long"), std::string::npos);
    EXPECT_NE(errorOf(std::string(16000, '(')).find("nested too deeply"), std::string::npos);
    EXPECT_TRUE(holds(std::string(16000, '!') + "Ns == 2", corrections));
    EXPECT_FALSE(holds(std::string(15999, '!') + "Ns == 2", corrections));
    EXPECT_NE(errorOf("Ns == " + std::string(16000, '9') + "x").find("is no number"),
              std::string::npos);
    EXPECT_FALSE(holds("Ns == " + std::string(16000, '9'), corrections));
    EXPECT_TRUE(holds("Ns == 2." + std::string(16000, '0'), corrections));
}

// Pieces at random: whatever comes of them is an error or a condition that can be asked.
TEST_F(FilterTest, NoExpressionDoesHarm)
{
    const char* pieces[] = {
        "Ns",   "Corrections", "PRC",  "Message", "present", "(",   ")",
        ".",    "==",          "<",    "!",       "~",       "and", "or",
        "not",  "5",           "-1e9", "0x",      "'",       "\"",  "\\",
        "\xC3", "\xFF",        " ",    "error",   "\n",      "&&",  "99999999999999999999",
        "\x01"};
    std::mt19937 random(4);
    std::uniform_int_distribution<std::size_t> piece(0, std::size(pieces) - 1);
    const Message& message = decode(corrections);
    int understood = 0;
    for (int i = 0; i < 3000; ++i) {
        std::string expression;
        for (std::size_t length = piece(random) / 2 + 1; length > 0; --length) {
            expression += pieces[piece(random)];
            expression += i % 2 == 0 ? " " : "";
        }
        try {
            const Expression parsed(expression, mainKinds);
            parsed.holds(message, *model.kindOf(message));
            ++understood;
        } catch (const FilterError& error) {
            ASSERT_NE(error.text.find("^"), std::string::npos) << expression;
        }
    }
    EXPECT_GT(understood, 0);
}

TEST_F(FilterTest, KindsThatCannotPassAreLeftOut)
{
    using Names = std::vector<std::string>;
    EXPECT_EQ(kindsOf({}).size(), mainKinds.size());
    EXPECT_EQ(kindsOf({.kinds = {"9", "Message Type 1", "message_type_1", "9"}}),
              (Names{"1", "9"}));
    EXPECT_EQ(kindsOf({.kinds = {"1", "9"}, .excludedKinds = {"9", "16"}}), (Names{"1"}));
    EXPECT_EQ(kindsOf({.where = "Corrections.PRC < 0"}), (Names{"1", "9", "31"}));
    EXPECT_EQ(kindsOf({.where = "Message_Type == 9 or Message_Type > 50"}), (Names{"9", "59"}));
    EXPECT_EQ(kindsOf({.where = "not Message_Type == 9"}).size(), mainKinds.size() - 1);
    EXPECT_EQ(kindsOf({.where = "not present(Corrections)"}).size(), mainKinds.size());
    EXPECT_EQ(kindsOf({.kinds = {"1"}, .where = "Message_Type == 9"}), Names());
}

TEST_F(FilterTest, TakesByKindStationAndExpressionTogether)
{
    EXPECT_TRUE(
        takes({.kinds = {"1"}, .stations = {"7", "5", "5"}, .where = "Ns == 2"}, corrections));
    EXPECT_FALSE(takes({.stations = {"7"}}, corrections));
    EXPECT_FALSE(takes({.stations = {"5"}, .where = "Ns == 3"}, corrections));
    EXPECT_FALSE(takes({.excludedKinds = {"1"}}, corrections));
}

TEST_F(FilterTest, WrongFiltersAreRefused)
{
    const std::pair<FilterOptions, const char*> cases[] = {
        {{.kinds = {"Mesage Type 1"}}, "did you mean 'Message Type 1'"},
        {{.kinds = {"77"}}, "'rtcm2 describe' lists them"},
        {{.kinds = {"DGNSS"}}, "a part of messages"},
        {{.kinds = {"1"}, .excludedKinds = {"1"}}, "leave no kind"},
        {{.stations = {"5x"}}, "'5x' is not a number"},
        {{.stations = {"-1"}}, "'-1' is not a number"},
        {{.kinds = {"16"}, .where = "Ns == 1"}, "no message that can pass has a field 'Ns'"},
    };
    for (const auto& [options, piece] : cases) {
        EXPECT_NE(filterErrorOf(options).find(piece), std::string::npos) << filterErrorOf(options);
    }
    EXPECT_THROW(MessageFilter(model, {.stations = {"1"}}, "No Such Field"), FilterError);
}

TEST(NumberTest, ComparesWithoutLoss)
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    const auto number = [](const char* text) { return *where::Number::parse(text); };
    EXPECT_TRUE(number("18446744073709551615").orderOf(most) == 0);
    EXPECT_TRUE(number("0xFFFFFFFFFFFFFFFF").orderOf(most) == 0);
    EXPECT_TRUE(number("18446744073709551614").orderOf(most) > 0);
    EXPECT_TRUE(number("18446744073709551614.9").orderOf(most) > 0);
    EXPECT_TRUE(number("18446744073709551615.1").orderOf(most) < 0);
    EXPECT_TRUE(number("18446744073709551616").orderOf(most) < 0);
    EXPECT_TRUE(number("1e99").orderOf(most) < 0);
    EXPECT_TRUE(number("-9223372036854775808").orderOf(least) == 0);
    EXPECT_TRUE(number("-9223372036854775807").orderOf(least) < 0);
    EXPECT_TRUE(number("-9223372036854775808.5").orderOf(least) > 0);
    EXPECT_TRUE(number("-99999999999999999999").orderOf(least) > 0);
    EXPECT_TRUE(number("9007199254740993").orderOf(std::uint64_t{9007199254740992}) < 0);
    EXPECT_TRUE(number("-0").orderOf(std::uint64_t{0}) == 0);
    EXPECT_TRUE(number("-0.5").orderOf(std::uint64_t{0}) > 0);
    EXPECT_TRUE(number("-0.5").orderOf(std::int64_t{-1}) < 0);
    EXPECT_TRUE(number("0.5").orderOf(std::int64_t{0}) < 0);
    EXPECT_TRUE(number("1e-400").orderOf(std::int64_t{0}) < 0);
    EXPECT_TRUE(number("120e-1").orderOf(std::int64_t{12}) == 0);
    EXPECT_TRUE(number("0.0012e4").orderOf(std::int64_t{12}) == 0);
    EXPECT_TRUE(number("-2.5").orderOf(-2.5) == 0);
    EXPECT_TRUE(number("1e999").orderOf(1e308) < 0);
    for (const char* text : {"", "-", "0x", "0xg", "1e", "1e+", ".5", "5.", "1.2.3", "1 ", "--1"}) {
        EXPECT_FALSE(where::Number::parse(text)) << text;
    }
}

}    // namespace
