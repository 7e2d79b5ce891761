// Values through rows: by a field's descriptor, against a descriptor written for that field alone;
// and by the functions of the codec's table, with the decoding before them.
#include "FieldInfo.h"
#include "Measured.h"
#include "MessageInfo.h"
#include "RTCM2_DGNSS_Message.h"
#include "RTCM2_DGNSS_MessageInfo.h"
#include "RTCM2_format.h"

#include <memory>

namespace bench {

namespace {

// What a careful programmer writes for one field.
template <auto accessor, auto factory>
class FieldAlone : public FieldInfo {
public:
    FieldAlone() : FieldInfo(QStringLiteral("alone"), FieldType::byte()) {}

    bool isPresent(const ::Message*) const override { return true; }
    unsigned int getCount(const ::Message*) const override { return 1; }
    const FieldValue getValue(const ::Message* message, unsigned int index) const override
    {
        return getValueUnchecked(message, index);
    }
    const FieldValue getValueUnchecked(const ::Message* message, unsigned int) const override
    {
        return factory((static_cast<const RTCM2_DGNSS_Message*>(message)->*accessor)());
    }
    QString getInterpretedString(const ::Message*, unsigned int, bool) const override { return {}; }
};

template <unsigned width>
FieldValue unsignedValue(unsigned value)
{
    return FieldValue::u(value, width);
}

template <unsigned width>
FieldValue signedValue(int value)
{
    return FieldValue::i(value, width);
}

using Element = RTCM2_DGNSS_Message;

std::vector<const FieldInfo*> fieldsAlone()
{
    static const FieldAlone<&Element::getScale_Factor, FieldValue::byte> scaleFactor;
    static const FieldAlone<&Element::getUDRE, FieldValue::byte> udre;
    static const FieldAlone<&Element::getSatellite_Id, unsignedValue<5>> satellite;
    static const FieldAlone<&Element::getPRC, signedValue<16>> prc;
    static const FieldAlone<&Element::getRRC, signedValue<8>> rrc;
    static const FieldAlone<&Element::getIssue_Of_Data, FieldValue::byte> issue;
    static const FieldAlone<&Element::getChange_Bit, unsignedValue<1>> change;
    static const FieldAlone<&Element::getTime_Of_Day, unsignedValue<7>> time;
    return {&scaleFactor, &udre, &satellite, &prc, &rrc, &issue, &change, &time};
}

std::vector<const FieldInfo*> fieldsOfThePlugin()
{
    const auto& fields = RTCM2_DGNSS_MessageInfo::getInstance()->getFieldInfos();
    return {fields.begin(), fields.end()};
}

std::uint64_t sumOf(const FieldValue& value)
{
    return value.toUnsigned() + static_cast<std::uint64_t>(value.toSigned());
}

template <auto fieldsOf>
void readFields(benchmark::State& state)
{
    const std::vector<const FieldInfo*> fields = fieldsOf();
    std::vector<RTCM2_DGNSS_s> records(64);
    std::vector<std::unique_ptr<Element>> elements;
    std::uint8_t next = 0;
    for (RTCM2_DGNSS_s& record : records) {
        record = {};
        record.Satellite_Id = next++ % 32;
        record.PRC = static_cast<std::int16_t>(-100 * next);
        record.Time_Of_Day = next % 128;
        elements.push_back(std::make_unique<Element>(&record, nullptr, false));
    }
    const auto sums = [&](const std::vector<const FieldInfo*>& of) {
        std::uint64_t sum = 0;
        for (const auto& element : elements) {
            for (const FieldInfo* field : of) {
                sum = 31 * sum + sumOf(field->getValueUnchecked(element.get(), 0));
            }
        }
        return sum;
    };
    if (sums(fields) != sums(fieldsAlone())) {
        state.SkipWithError("reads something else");
    }
    std::uint64_t sum = 0;
    for (auto _ : state) {
        sum += sums(fields);
    }
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(state.iterations() *
                            static_cast<std::int64_t>(elements.size() * fields.size()));
}

// Adds up all values of a record and of its elements.
std::uint64_t sumOf(const void* record, const RTCM2_kind_s& kind, std::int64_t& values)
{
    std::uint64_t sum = 0;
    for (std::uint32_t m = 0; m < kind.member_count; ++m) {
        const RTCM2_member_s& member = kind.members[m];
        const std::uint32_t count = member.length != nullptr ? RTCM2_count(record, &member) : 1;
        for (std::uint32_t i = 0; i < count; ++i) {
            std::int64_t value = 0;
            if (member.role == RTCM2_ROLE_ARRAY) {
                sum += sumOf(RTCM2_element(record, &member, i), *member.elements, values);
            } else if (RTCM2_read_integer(record, &member, i, &value) == RTCM2_ACCESS_DONE) {
                sum += static_cast<std::uint64_t>(value);
                ++values;
            }
        }
    }
    return sum;
}

void readTable(benchmark::State& state, unsigned type, unsigned words)
{
    const std::vector<Message> messages = messagesOfType(type, words);
    RTCM2_message_s message;
    message.kind = RTCM2_MESSAGE_NULL;
    std::uint64_t sum = 0;
    std::int64_t values = 0;
    for (auto _ : state) {
        for (const Message& packed : messages) {
            RTCM2_decode(nullptr, packed.data(), static_cast<std::uint16_t>(packed.size()),
                         &message);
            sum += sumOf(&message, *RTCM2_kind(message.kind), values);
            RTCM2_free_message(&message);
        }
    }
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(values);
}

const bool registered = [] {
    benchmark::RegisterBenchmark("field/DGNSS/rtcm2", readFields<fieldsOfThePlugin>);
    benchmark::RegisterBenchmark("field/DGNSS/field_alone", readFields<fieldsAlone>);
    benchmark::RegisterBenchmark("table/type 1, 18 corrections/rtcm2", readTable, 1, 30);
    benchmark::RegisterBenchmark("table/type 18, 15 satellites/rtcm2", readTable, 18, 31);
    benchmark::RegisterBenchmark("table/type 22/rtcm2", readTable, 22, 3);
    return true;
}();

}    // namespace

}    // namespace bench
