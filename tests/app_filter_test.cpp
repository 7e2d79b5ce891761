#include "commands/Host.h"
#include "filter/MessageFilter.h"
#include "support/MessageHelpers.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

// Satellite 12 with PRC -100, RRC 5 and satellite 7 with what means "error".
const Bytes corrections =
    packed(1, 4, {0x2C, 0xFF, 0x9C, 0x05, 0x2A, 0xE7, 0x80, 0x00, 0xFF, 0xA5, 0x00, 0x00});
const Bytes noCorrections = packed(9, 0);
// GLONASS satellite 3 with delay 9 and a rate not to be used.
const Bytes ionosphere = packed(15, 2, {0x23, 0x00, 0x26, 0x00, 0x00, 0x00});
const std::string_view gale("GALE \xE9t\xE9 12\0x\0\0", 15);
const Bytes special = packed(16, 5, {gale.begin(), gale.end()});
const Bytes pseudoranges = packed(21, 3, {0xB9, 0x27, 0xBF, 0x25, 0x78, 0x01, 0, 0, 0});
// Coordinates of -1 and the two farthest, and no height; coordinates of 0 and a height of 0.
const Bytes antenna =
    packed(24, 5, {0xFF, 0xFF, 0xFF, 0xFF, 0xFC, 0x7F, 0xFF, 0xFF, 0xFF, 0xFC, 0x80, 0, 0, 0, 2});
const Bytes antennaWithHeight =
    packed(24, 6, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0x3F});
const Bytes proprietary = packed(59, 2, {0x41, 0x42, 0x10, 0xFE, 0x00, 0x00});

class FilterTest : public testing::Test {
protected:
    MessageFilter filterOf(const FilterOptions& options) const
    {
        return MessageFilter(host.model, options);
    }

    bool takes(const FilterOptions& options, const Bytes& bytes)
    {
        const Outcome outcome = host.driver.decode(bytes);
        return filterOf(options).takes({outcome.record}, *host.model.kindOf(outcome.record));
    }

    bool holds(const std::string& expression, const Bytes& bytes)
    {
        return takes({.where = expression}, bytes);
    }

    std::string errorOf(const FilterOptions& options) const
    {
        try {
            filterOf(options);
        } catch (const FilterError& error) {
            return error.text;
        }
        return "";
    }

    std::vector<int> kindsOf(const FilterOptions& options) const
    {
        std::vector<int> numbers;
        const MessageFilter filter = filterOf(options);
        for (const KindModel* kind : filter.kinds()) {
            numbers.push_back(kind->isUnknown ? -1 : kind->typeNumber);
        }
        return numbers;
    }

    Host host;
};

TEST_F(FilterTest, ExpressionsHoldOrNot)
{
    const struct {
        const char* expression;
        const Bytes& message;
        bool expected;
    } cases[] = {
        // names
        {"\"Modified Z-Count\" == 4500", corrections, true},
        {"'modified z-count' = 4500", corrections, true},
        {"Sequence_No == 3 && \"Sequence No.\" == 3", corrections, true},
        {"corrections . \"satellite id\" == 7", corrections, true},
        // elements: any, or one and the same in brackets
        {"Corrections[PRC == -100 and Satellite_Id == 12]", corrections, true},
        {"Corrections[PRC == -100 and Satellite_Id == 7]", corrections, false},
        {"Corrections[PRC == -100] and 'corrections' [Satellite_Id == 7]", corrections, true},
        {"Corrections[not (PRC == -100 or Satellite_Id == 7)]", corrections, false},
        {"Corrections[present(PRC) and not Change_Bit == 0]", corrections, true},
        {"Corrections[not PRC == 5]", noCorrections, false},
        {"Corrections.PRC == -100 and not Corrections.RRC == -100", corrections, true},
        {"not Corrections.PRC == 3 and not Corrections.UDRE == 3", corrections, false},
        {"Corrections.PRC == 3 or Corrections.UDRE == 3", corrections, true},
        {"Corrections.PRC != -100", corrections, true},
        {"Corrections.PRC != -100", noCorrections, false},
        {"not Corrections.PRC == -100", corrections, false},
        {"Data == 0x10 and Data < 0x11 and Data == 254", proprietary, true},
        // numbers
        {"Modified_Z_Count>=4500 and Modified_Z_Count <= 45e2", corrections, true},
        {"Modified_Z_Count > 4500 or Modified_Z_Count<0x1194", corrections, false},
        {"Modified_Z_Count > 4499.9 and Modified_Z_Count < 4500.1", corrections, true},
        {"Modified_Z_Count == 45000e-1 and Modified_Z_Count == 0.045e5", corrections, true},
        {"Modified_Z_Count < 18446744073709556116 and Modified_Z_Count < 1e99", corrections, true},
        {"Modified_Z_Count < 0x10000000000001194", corrections, true},
        {"Station_Health == -0 and Station_Health > -0.5", corrections, true},
        {"Station_Health < 1e-400 and Station_Health < 0.5", corrections, true},
        {"ECEF_X < -0.5 and ECEF_X > -1.5 and ECEF_X < 0", antenna, true},
        {"ECEF_X == 18446744073709551615 or ECEF_X == -18446744073709551617", antenna, false},
        {"ECEF_Y == 137438953471 and ECEF_Z == -137438953472", antenna, true},
        {"ECEF_Y > 137438953471 or ECEF_Z > -137438953472", antenna, false},
        {"Data[PSF == 0.32 and PSF > 0.31 and PSF < 1e999]", pseudoranges, true},
        {"Data.PSF == -0.32", pseudoranges, false},
        // quantities, exactly
        {"Modified_Z_Count_s == 2700.0 and Modified_Z_Count_s < 270000000001e-8", corrections,
         true},
        {"Corrections[Satellite == g12 and PRC_m == -2 and RRC_m_per_s == 1e-2]", corrections,
         true},
        {"Corrections[PRC_m > -2.00000000000000000000001 and PRC_m > -1e999]", corrections, true},
        {"Corrections[Satellite ~ 'G0' and Satellite != G12]", corrections, true},
        {"Corrections.PRC_m != -2 or Corrections[Satellite == G07 and present(PRC_m)]", corrections,
         false},
        {"present(Corrections.Time_Of_Day) and not present(Corrections.Time_Of_Day_s)", corrections,
         true},
        {"ECEF_X_m == -0.0001 and ECEF_Y_m == 13743895.3471 and ECEF_Y_m > 0xD1B717", antenna,
         true},
        {"ECEF_Y_m < 0xD1B718 and ECEF_Y_m < 0x10000000000000001", antenna, true},
        {"ECEF_Y_m < 13743895.3471 or present(Antenna_Height_m)", antenna, false},
        // what is absent or unknown to the kind
        {"Corrections.PRC < 0", special, false},
        {"not Corrections.PRC < 0", special, true},
        {"Antenna_Height == 0 or Antenna_Height != 0", antenna, false},
        {"not Antenna_Height == 0", antenna, true},
        {"Antenna_Height == 0 and Reserved3 == 63", antennaWithHeight, true},
        {"present(Antenna_Height)", antenna, false},
        {"PRESENT ( \"Antenna Height\" )", antennaWithHeight, true},
        {"present(Corrections)", noCorrections, false},
        {"present(Corrections) and present(Corrections.PRC)", corrections, true},
        // coded values by their texts
        {"\"Station Health\" == 'udre scale factor = 1'", corrections, true},
        {"\"Station Health\" != \"Not Working\"", corrections, true},
        {"Station_Health ~ 'scale factor' and not Station_Health ~ work", corrections, true},
        {"Corrections.\"Rate Of Change\" == 'Do not use'", ionosphere, true},
        {"Corrections.\"Rate Of Change\" == DoNotUse", ionosphere, true},
        // text fields
        {"Message == 'GALE \xC3\xA9t\xC3\xA9 12'", special, true},
        {"Message == 'gale \xC3\xA9t\xC3\xA9 12'", special, false},
        {"Message != 'GALE'", special, true},
        {"Message ~ gale and Message contains \"t\xC3\xA9 1\"", special, true},
        {"Message ~ '12x'", special, false},
        {"Message ~ 'G\\ALE' and not Message ~ \"\\\\\"", special, true},
        // connections
        {"Message_Type == 1 or Message_Type == 9 and Ns == 7", corrections, true},
        {"(Message_Type == 1 or Message_Type == 9) and Ns == 7", corrections, false},
        {"not Ns == 7 and Ns == 2", corrections, true},
        {"not (Ns == 7 or Ns == 2)", corrections, false},
        {"! ! Ns == 2 && !(Ns >= 3) || Ns == 9", corrections, true},
        {"Ns==2 AND NOT Ns==3", corrections, true},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(holds(test.expression, test.message), test.expected) << test.expression;
    }
}

TEST_F(FilterTest, ErrorsPointAtThePlace)
{
    const struct {
        const char* expression;
        std::size_t column;    // of the caret, from 0
        const char* piece;     // of the text
    } cases[] = {
        {"   ", 3, "the expression ends too early"},
        {"Ns", 2, "expected ==, !="},
        {"Ns ==", 5, "expected a number or a text"},
        {"Ns == 5 6", 8, "expected 'and', 'or' or the end"},
        {"Ns == 5)", 7, "no '(' for this ')'"},
        {"(Ns == 5", 8, "expected ')'"},
        {"5 == Ns", 0, "expected the field first"},
        {"== 5", 0, "expected a condition"},
        {"Corrections. == 1", 13, "expected the name of a field"},
        {"Station Health == 7", 8, "\"Station Health\""},
        {"Modified_Z-Count == 7", 10, "stand in quotes"},
        {"Ns == 'open", 6, "expected another '"},
        {"Ns == 1 & Ns == 2", 8, "expected &&"},
        {"Ns == 1 # 2", 8, "no meaning"},
        {"Statoin_Health == 7", 0, "did you mean \"Station Health\"?"},
        {"Ns == 1 or Z_Count == 7", 11, "did you mean \"Modified Z-Count\" or "},
        {"PRC < 0", 0, "did you mean Corrections.PRC?"},
        {"Corrections.PCR < 0", 12, "did you mean PRC?"},
        {"Corrections[PCR < 0]", 12, "'Corrections' has no part 'PCR'"},
        {"Corrections[PRC < 0", 19, "expected ']'"},
        {"Ns == 5]", 7, "no '[' for this ']'"},
        {"Ns[PRC < 0]", 2, "'Ns' has no parts"},
        {"Corrections.PRC<0 and Corrections.UDRE == 'GT 8 m'", 22,
         "Corrections[PRC < 0 and UDRE == \"GT 8 m\"]"},
        {"(Ns == 1 or Corrections.PRC < 0) and (Ns == 2 or Corrections[RRC < 0])", 49,
         "Corrections[PRC < 0] and Corrections[...]"},
        {"not (not Corrections.PRC < 0 or not present(corrections.RRC))", 44,
         "not Corrections[PRC < 0] or not Corrections[present(RRC)]"},
        {"Corrections[Satellite == G5]", 25, "'G5' is no name of a satellite"},
        {"Corrections.Satellite < G05", 22, "texts have no order"},
        {"Corrections.PRC_m == G05", 21, "are numbers"},
        {"PRC_m < 0", 0, "did you mean Corrections.PRC_m?"},
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
    for (const auto& test : cases) {
        const std::string error = errorOf({.where = test.expression});
        EXPECT_NE(error.find(test.piece), std::string::npos) << test.expression << "\n" << error;
        const std::size_t lineBegin = error.find('\n') + 1;
        const std::size_t caretBegin = error.find('\n', lineBegin) + 1;
        EXPECT_EQ(caretBegin - 1 - lineBegin, std::string_view(test.expression).size() + 2)
            << error;
        EXPECT_EQ(error.find('^'), caretBegin + 2 + test.column) << error;
    }
}

TEST_F(FilterTest, NumbersAreWhole)
{
    for (const std::string text : {"0x", "0xg", "1e", "1e+", "5.", "1.2.3", "12abc"}) {
        const std::string error = errorOf({.where = "Ns == " + text});
        EXPECT_TRUE(error.starts_with("'" + text + "' is no number")) << error;
    }
}

TEST_F(FilterTest, LongExpressionsAreShownInPart)
{
    std::string expression;
    for (int i = 0; i < 300; ++i) {
        expression += "Ns == 1 or ";
    }
    const std::string error =
        errorOf({.where = expression + "Nn == 2 or " + expression + "Ns == 3"});
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
    EXPECT_TRUE(holds(std::string(16000, '!') + "Ns == 2", corrections));
    EXPECT_FALSE(holds("Ns == " + std::string(16000, '9'), corrections));
    EXPECT_TRUE(holds("Ns == 2." + std::string(16000, '0'), corrections));
    const std::pair<std::string, const char*> refused[] = {
        {nested(101), "nested too deeply"},
        {std::string(16385, '!'), "too long"},
    };
    for (const auto& [expression, piece] : refused) {
        EXPECT_NE(errorOf({.where = expression}).find(piece), std::string::npos) << piece;
    }
}

TEST_F(FilterTest, KindsThatCannotPassAreLeftOut)
{
    using Numbers = std::vector<int>;
    const std::size_t all = kindsOf({}).size() - 1;    // for the unknown ones no condition holds
    EXPECT_EQ(kindsOf({.kinds = {"9", "Message Type 1", "message_type_1", "9"}}), (Numbers{1, 9}));
    EXPECT_EQ(kindsOf({.kinds = {"1", "9"}, .excludedKinds = {"9", "16"}}), Numbers{1});
    EXPECT_EQ(kindsOf({.kinds = {"14", "63", "9"}, .stations = {"1"}}), (Numbers{9, -1}));
    EXPECT_EQ(kindsOf({.kinds = {"14", "9"}, .excludedKinds = {"14"}}), Numbers{9});
    EXPECT_EQ(kindsOf({.where = "Corrections.PRC < 0"}), (Numbers{1, 9, 31}));
    EXPECT_EQ(kindsOf({.where = "Message_Type == 9 or Message_Type > 50"}),
              (Numbers{9, 51, 52, 59}));
    EXPECT_EQ(kindsOf({.where = "not Message_Type == 9"}).size(), all - 1);
    EXPECT_EQ(kindsOf({.where = "not present(Corrections)"}).size(), all);
    EXPECT_EQ(kindsOf({.kinds = {"1"}, .where = "Message_Type == 9"}), Numbers{});
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
        {{.kinds = {"64"}}, "'rtcm2 describe' lists them"},
        {{.kinds = {"014"}}, "'rtcm2 describe' lists them"},
        {{.kinds = {"14"}, .where = "Ns == 1"}, "holds for no message of an unknown type"},
        {{.kinds = {"DGNSS"}}, "a part of messages"},
        {{.kinds = {"1"}, .excludedKinds = {"1"}}, "leave no kind"},
        {{.stations = {"5x"}}, "'5x' is not a number"},
        {{.stations = {"-1"}}, "'-1' is not a number"},
        {{.kinds = {"16"}, .where = "Ns == 1"}, "no message that can pass has a field 'Ns'"},
    };
    for (const auto& [options, piece] : cases) {
        EXPECT_NE(errorOf(options).find(piece), std::string::npos) << errorOf(options);
    }
}

}    // namespace
