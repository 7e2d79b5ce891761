// The singletons of the format, whichever of them a process touches first: each case runs in a
// process of its own. This program stands in for the host's tracer and records its reports.
#include "FieldInfo.h"
#include "MessageInfo.h"
#include "RTCM2Decoder.h"
#include "RTCM2_DGNSS_MessageInfo.h"
#include "RTCM2_Message_Type_1_MessageInfo.h"
#include "RTCM2_Type_15_MessageInfo.h"
#include "support/MessageHelpers.h"

#include <QSet>
#include <QStringList>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace {

// Never destroyed: the descriptors report until the end of the process.
QStringList& constructed = *new QStringList;
QStringList& destroyed = *new QStringList;
QString& completedLast = *new QString;

}    // namespace

void MemLeakTracer::allocateObject(QString className)
{
    constructed << className;
}

void MemLeakTracer::deallocateObject(QString className)
{
    destroyed << className;
}

namespace {

void demand(bool met, const char* what)
{
    if (!met) {
        std::fprintf(stderr, "failed: %s\n", what);
        _exit(1);
    }
}

// Whatever was touched first, every kind is registered once, with all its fields.
void demandRegistry()
{
    const RTCM2_FormatInfo* format = RTCM2_FormatInfo::getInstance();
    qsizetype fields = 0;
    for (const MessageInfo* info : allKinds()) {
        fields += info->getFieldInfos().size();
        demand(info->getFormatInfo() == format, "every kind has the format");
    }
    demand(format->getName() == QLatin1String("RTCM2"), "name of the format");
    demand(format->getSubMessageInfos().size() == 15, "number of sub-message kinds");
    demand(format->getMessageInfos().size() == 15, "number of main kinds");
    demand(fields == 259, "number of fields");
}

// Runs when every descriptor is gone: what was completed last goes first.
void demandReverseDestruction()
{
    demand(QSet<QString>(destroyed.begin(), destroyed.end()) ==
                   QSet<QString>(constructed.begin(), constructed.end()) &&
               destroyed.size() == constructed.size(),
           "each is destroyed once");
    demand(destroyed.first() == completedLast, "what was touched first is completed last");
    demand(destroyed.last() == QLatin1String("RTCM2_FormatInfo"), "the format is completed first");
    for (const QString& kind : destroyed.filter(QStringLiteral("_MessageInfo"))) {
        // A kind is completed after its fields, of which one may have been touched first.
        const QString prefix = kind.chopped(11);
        for (const QString& name : destroyed.mid(0, destroyed.indexOf(kind))) {
            demand(!name.startsWith(prefix) || name == completedLast, "a kind before its fields");
        }
    }
    std::fprintf(stderr, "all met\n");
}

struct FirstTouch {
    const char* name;
    void (*touch)();
    const char* completedLast;
};

void PrintTo(const FirstTouch& touch, std::ostream* out)
{
    *out << touch.name;
}

[[noreturn]] void runProcess(const FirstTouch& first)
{
    demand(constructed.isEmpty(), "nothing exists before it is asked for");
    std::atexit(demandReverseDestruction);
    for (int round = 0; round < 2; ++round) {
        first.touch();
        demandRegistry();
    }
    completedLast = QLatin1String(first.completedLast);
    demand(constructed.size() == 1 + 30 + 259, "number of objects");
    demand(!constructed.removeDuplicates(), "each constructed once");
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
        FirstTouch{"Registry", touch<RTCM2_FormatInfo>, "RTCM2_Message_Type_59_MessageInfo"},
        FirstTouch{"SubMessageKind", touch<RTCM2_Type_15_MessageInfo>, "RTCM2_Type_15_MessageInfo"},
        FirstTouch{"Decoder", touchDecoder, "RTCM2_Type_15_MessageInfo"},
        FirstTouch{"MainKind", touch<RTCM2_Message_Type_1_MessageInfo>,
                   "RTCM2_Message_Type_1_MessageInfo"},
        FirstTouch{"SubField", touch<RTCM2_DGNSS_Time_Of_Day_FieldInfo>,
                   "RTCM2_DGNSS_Time_Of_Day_FieldInfo"},
        FirstTouch{"FieldWithSubFields", touch<RTCM2_DGNSS_Issue_Of_Data_FieldInfo>,
                   "RTCM2_DGNSS_Issue_Of_Data_FieldInfo"},
        FirstTouch{"FieldOfSubMessages", touch<RTCM2_Message_Type_1_Corrections_FieldInfo>,
                   "RTCM2_Message_Type_1_Corrections_FieldInfo"}),
    [](const auto& touched) { return std::string(touched.param.name); });

}    // namespace
