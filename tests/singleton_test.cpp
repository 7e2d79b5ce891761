// The singletons of the format, whichever of them a process touches first: each case runs in a
// process of its own. This program stands in for the host's tracer and records its reports.
#include "MemLeakTracer.h"
#include "RTCM2Decoder.h"
#include "RTCM2_DGNSS_MessageInfo.h"
#include "RTCM2_Message_Type_1_MessageInfo.h"
#include "RTCM2_Type_15_MessageInfo.h"
#include "dbg.h"
#include "support/CompletionOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace {

// Never destroyed: the descriptors report until the end of the process.
QStringList& constructed = *new QStringList;
QStringList& destroyed = *new QStringList;
QStringList& completed = *new QStringList;
QStringList& asked = *new QStringList;

}    // namespace

void MemLeakTracer::allocateObject(QString className)
{
    constructed << className;
}

void MemLeakTracer::deallocateObject(QString className)
{
    destroyed << className;
}

// Whether a unit is traced: an answer that a cache must not take for none.
int dbg_SubModActive(const char*, const char* unit)
{
    asked << QString::fromLatin1(unit);
    return -1;
}

namespace {

void demand(bool met, const char* what)
{
    if (!met) {
        std::fprintf(stderr, "failed: %s\n", what);
        _exit(1);
    }
}

void demandRegistry()
{
    const RTCM2_FormatInfo* format = RTCM2_FormatInfo::getInstance();
    QStringList subNames, mainNames;
    int fields = 0;
    for (const MessageInfo* info : allKinds()) {
        (info->isMain() ? mainNames : subNames) << info->getName();
        fields += static_cast<int>(info->getFieldInfos().size());
        demand(info->getFormatInfo() == format, "every kind has the format");
    }
    demand(format->getName() == QLatin1String("RTCM2"), "name of the format");
    demand(subNames.join(QLatin1Char(',')) ==
               QLatin1String("Type 15,DGNSS,RTK 18,RTK 19,RTK 20,RTK 21,WACorrection,JPL 46,"
                             "JPL 47,JPL 48,JPL 49,OCDS 39,OCDS 40,OCDS 51,OCDS 52"),
           "sub-message kinds in order");
    demand(mainNames.replaceInStrings(QStringLiteral("Message Type "), QString()).join(u',') ==
               QLatin1String("1,3,9,15,16,18,19,20,21,22,23,24,31,32,59"),
           "main kinds in order");
    demand(format->getSubMessageInfos().size() == 15 && fields == 259, "numbers of descriptors");
}

// Runs when every descriptor is gone.
void demandReverseDestruction()
{
    std::reverse(completed.begin(), completed.end());
    for (int i = 0; destroyed != completed && i < destroyed.size(); ++i) {
        std::fprintf(stderr, "%s destroyed, %s expected\n", qPrintable(destroyed[i]),
                     qPrintable(completed.value(i)));
    }
    demand(destroyed == completed, "reverse order of completed constructions");
    std::fprintf(stderr, "all met\n");
}

struct FirstTouch {
    const char* name;
    void (*touch)();
    QStringList late;
};

void PrintTo(const FirstTouch& touch, std::ostream* out)
{
    *out << touch.name;
}

[[noreturn]] void runProcess(const FirstTouch& first)
{
    demand(constructed.isEmpty(), "nothing exists before it is asked for");
    std::atexit(demandReverseDestruction);
    first.touch();
    demandRegistry();
    const auto* format = RTCM2_FormatInfo::getInstance();
    first.touch();
    demand(RTCM2_FormatInfo::getInstance() == format, "one registry");
    demandRegistry();
    completed = completionOrder(first.late);
    demand(constructed.size() == 1 + 30 + 259, "number of objects");
    demand(!constructed.removeDuplicates(), "each constructed once");
    demand(asked.size() > 30 && !asked.removeDuplicates(), "each unit asks once");
    std::exit(0);
}

class Singletons : public testing::TestWithParam<FirstTouch> {};

TEST_P(Singletons, AreCompleteAndGoInReverse)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(runProcess(GetParam()), testing::ExitedWithCode(0), "all met");
}

template <class Descriptor>
void touch()
{
    demand(Descriptor::getInstance() == Descriptor::getInstance(), "one instance");
}

void touchDecoder()
{
    {
        const RTCM2Decoder decoder(nullptr);
    }
    const QString name = QStringLiteral("RTCM2Decoder");
    demand(constructed.removeAll(name) == 1 && destroyed.removeAll(name) == 1, "decoder reported");
    demand(destroyed.isEmpty(), "descriptors outlive a decoder");
}

INSTANTIATE_TEST_SUITE_P(
    FirstTouched, Singletons,
    testing::Values(
        FirstTouch{"Registry", touch<RTCM2_FormatInfo>, {}},
        FirstTouch{"FirstSubMessageKind", touch<RTCM2_Type_15_MessageInfo>, {"RTCM2_Type_15_"}},
        FirstTouch{"Decoder", touchDecoder, {"RTCM2_Type_15_"}},
        FirstTouch{"MainKind", touch<RTCM2_Message_Type_1_MessageInfo>, {"RTCM2_Message_Type_1_"}},
        FirstTouch{"Field", touch<RTCM2_DGNSS_PRC_FieldInfo>, {"RTCM2_DGNSS_PRC_FieldInfo"}},
        FirstTouch{"SubField",
                   touch<RTCM2_DGNSS_Time_Of_Day_FieldInfo>,
                   {"RTCM2_DGNSS_Time_Of_Day_FieldInfo"}},
        FirstTouch{"FieldWithSubFields",
                   touch<RTCM2_DGNSS_Issue_Of_Data_FieldInfo>,
                   {"RTCM2_DGNSS_Issue_Of_Data_FieldInfo"}},
        FirstTouch{"FieldOfSubMessages",
                   touch<RTCM2_Message_Type_1_Corrections_FieldInfo>,
                   {"RTCM2_DGNSS_", "RTCM2_Message_Type_1_Corrections_FieldInfo"}}),
    [](const auto& touched) { return std::string(touched.param.name); });

}    // namespace
