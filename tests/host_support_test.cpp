#include "MemLeakTracer.h"
#include "dbg.h"

#include <QtGlobal>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

namespace {

int lateCount = 0;

// Stands for a descriptor of a library: constructed before the tracer is first used, hence
// destroyed after everything that the tracer may have constructed on its first use.
struct LateReporter {
    ~LateReporter()
    {
        MemLeakTracer::deallocateObject(QStringLiteral("Late"));
        if (MemLeakTracer::liveObjects(QStringLiteral("Late")) != lateCount - 1) {
            std::fputs("MemLeakTracer lost its counts at process exit\n", stderr);
            std::abort();
        }
    }
} lateReporter;

TEST(MemLeakTracer, KeepsItsCountsUntilTheEndOfTheProcess)
{
    MemLeakTracer::allocateObject(QStringLiteral("Late"));
    lateCount = MemLeakTracer::liveObjects(QStringLiteral("Late"));
    EXPECT_EQ(lateCount, 1);
}

TEST(MemLeakTracer, CountsByClassAndBelowZero)
{
    const int totalBefore = MemLeakTracer::liveObjects();
    for (const char* name : {"Balanced", "Leaked", "Leaked"}) {
        MemLeakTracer::allocateObject(QString::fromLatin1(name));
    }
    for (const char* name : {"Balanced", "Overfreed", "Overfreed", "Overfreed"}) {
        MemLeakTracer::deallocateObject(QString::fromLatin1(name));
    }
    EXPECT_EQ(MemLeakTracer::liveObjects(QStringLiteral("Leaked")), 2);
    EXPECT_EQ(MemLeakTracer::liveObjects(QStringLiteral("Overfreed")), -3);
    EXPECT_EQ(MemLeakTracer::liveObjects(QStringLiteral("Never seen")), 0);
    EXPECT_EQ(MemLeakTracer::liveObjects() - totalBefore, -1);
    EXPECT_FALSE(MemLeakTracer::liveObjectsByClass().contains(QStringLiteral("Balanced")));
}

// A class name is often a literal in a library that is unloaded before the counts are asked for.
TEST(MemLeakTracer, OwnsTheClassNames)
{
    std::vector<QChar> characters = {QLatin1Char('G'), QLatin1Char('o'), QLatin1Char('n'),
                                     QLatin1Char('e')};
    MemLeakTracer::allocateObject(QString::fromRawData(characters.data(), 4));
    characters.assign(4, QLatin1Char('#'));
    MemLeakTracer::allocateObject(QString::fromRawData(characters.data(), 4));
    EXPECT_EQ(MemLeakTracer::liveObjects(QStringLiteral("Gone")), 1);
    EXPECT_EQ(MemLeakTracer::liveObjects(QStringLiteral("####")), 1);
}

TEST(MemLeakTracer, CountsFromManyThreads)
{
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([number] {
            const QString own = QStringLiteral("Own%1/").arg(number);
            for (int round = 0; round < 5000; ++round) {
                MemLeakTracer::allocateObject(QStringLiteral("Shared"));
                MemLeakTracer::allocateObject(own + QString::number(round % 50));
                MemLeakTracer::deallocateObject(QStringLiteral("Shared"));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(MemLeakTracer::liveObjects(QStringLiteral("Shared")), 0);
    EXPECT_EQ(MemLeakTracer::liveObjects(QStringLiteral("Own3/49")), 100);
}

// One test, because the variable is read once in a process.
TEST(DbgSubModActive, FollowsTheEnvironmentReadOnce)
{
    qputenv("DBG_SUBMODULES", " whole ,,part/one,part/two ");
    EXPECT_EQ(dbg_SubModActive("whole", "anything"), 1);
    EXPECT_EQ(dbg_SubModActive("part", "two"), 1);
    EXPECT_EQ(dbg_SubModActive("part", "on"), 0);
    EXPECT_EQ(dbg_SubModActive("who", "le"), 0);
    EXPECT_EQ(dbg_SubModActive("", ""), 0);
    qputenv("DBG_SUBMODULES", "*");
    EXPECT_EQ(dbg_SubModActive("part", "three"), 0);
}

}    // namespace
