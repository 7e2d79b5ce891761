#include "FieldValue.h"
#include "FloatRepresentation.h"
#include "Message.h"
#include "MessageInfo.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

class Counted : public ReferenceCountedObject {
public:
    explicit Counted(int& destructors, bool dropInDestructor = false)
        : count(destructors), drop(dropInDestructor)
    {
    }
    ~Counted() override
    {
        ++count;
        if (drop) {
            removeReference();
        }
    }

private:
    int& count;
    bool drop;
};

// Otherwise a process without terminal may log to the system's journal.
void logToStandardError()
{
    qputenv("QT_FORCE_STDERR_LOGGING", "1");
}

TEST(ReferenceCountedObject, LastDropFromAnyThreadDestroysOnce)
{
    int destructors = 0;
    const auto* object = new Counted(destructors);
    EXPECT_EQ(object->getReferenceCount(), 0);
    object->addReference();
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        object->addReference();
        threads.emplace_back([object] {
            for (int round = 0; round < 2000; ++round) {
                object->addReference();
                object->removeReference();
            }
            object->removeReference();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(object->getReferenceCount(), 1);
    EXPECT_EQ(destructors, 0);
    object->removeReference();
    EXPECT_EQ(destructors, 1);
}

TEST(ReferenceCountedObjectDeathTest, DroppingWhatNobodyHoldsIsFatal)
{
    int destructors = 0;
    Counted fresh(destructors);
    EXPECT_DEATH((logToStandardError(), fresh.removeReference()), "without references");

    const auto* droppedTwice = new Counted(destructors, true);
    droppedTwice->addReference();
    EXPECT_DEATH((logToStandardError(), droppedTwice->removeReference()), "without references");
    ::operator delete(const_cast<Counted*>(droppedTwice));
}

class TestKind : public MessageInfo {
public:
    TestKind() : MessageInfo(QStringLiteral("Test")) {}
    ~TestKind() override = default;
    using MessageInfo::addFieldInfo;
};

TEST(MessageInfoDeathTest, FieldsAreAddedInOrder)
{
    // Kinds keep the addresses of fields that may not have been constructed yet.
    auto* field = reinterpret_cast<FieldInfo*>(quintptr{64});
    TestKind kind;
    kind.addFieldInfo(field, 0, true);
    EXPECT_EQ(kind.getFieldInfos(), QVector<const FieldInfo*>{field});
    EXPECT_DEATH((logToStandardError(), kind.addFieldInfo(field, 2, false)), "out of order");
}

TEST(FieldValue, EqualOnlyWithSameKindWidthAndContent)
{
    const auto* one = reinterpret_cast<const Message*>(quintptr{64});
    const auto* other = reinterpret_cast<const Message*>(quintptr{128});
    const std::vector<FieldValue> different = {FieldValue(),
                                               FieldValue::byte(0),
                                               FieldValue::byte(200),
                                               FieldValue::ch('\0'),
                                               FieldValue::ch('\xC8'),
                                               FieldValue::u(200, 8),
                                               FieldValue::u(200, 9),
                                               FieldValue::i(200, 9),
                                               FieldValue::i(-1, 64),
                                               FieldValue::u(~quint64{0}, 64),
                                               FieldValue::f64(0.0),
                                               FieldValue::f64(200.0),
                                               FieldValue::subMessage(nullptr),
                                               FieldValue::subMessage(one),
                                               FieldValue::subMessage(other)};
    for (std::size_t a = 0; a < different.size(); ++a) {
        for (std::size_t b = 0; b < different.size(); ++b) {
            EXPECT_EQ(different[a] == different[b], a == b) << a << " and " << b;
            EXPECT_EQ(different[a] != different[b], a != b) << a << " and " << b;
        }
    }
}

TEST(FieldValue, AccessorsRefuseOtherKinds)
{
    EXPECT_EQ(FieldValue::ch('\xC8').toCharacter(), '\xC8');
    EXPECT_EQ(FieldValue::i(-5, 8).toSigned(), -5);
    EXPECT_EQ(FieldValue::i(-5, 8).toUnsigned(), 0U);
    EXPECT_EQ(FieldValue::u(5, 8).toSigned(), 0);
    EXPECT_EQ(FieldValue::u(65, 8).toCharacter(), '\0');
    EXPECT_EQ(FieldValue::u(5, 8).toDouble(), 0.0);
    EXPECT_EQ(FieldValue::u(5, 64).toSubMessage(), nullptr);
}

TEST(FloatRepresentation, UsesTheDefaultLocaleOnlyWhenLocalized)
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(FloatRepresentation::getString(12345.5, 'f', 2, false).toStdString(), "12345.50");
    EXPECT_EQ(FloatRepresentation::getString(12345.5, 'f', 2, true).toStdString(), "12.345,50");
    QLocale::setDefault(QLocale::c());
}

}    // namespace
