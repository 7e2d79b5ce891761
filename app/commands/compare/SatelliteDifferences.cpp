#include "commands/compare/SatelliteDifferences.h"

#include "format/Decimal.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

bool isCompared(const FieldModel& quantity)
{
    return quantity.isScaled() && (quantity.row->meaning == RTCM2_MEANS_CORRECTION ||
                                   quantity.row->meaning == RTCM2_MEANS_RATE);
}

bool read(const FieldModel& quantity, const void* record, RTCM2_decimal_s& value)
{
    return quantity.isPresent(record) &&
           RTCM2_reader_quantity(&*quantity.quantity, record, &value) == RTCM2_ACCESS_DONE;
}

double valueOf(const FieldModel& quantity, const void* record)
{
    RTCM2_decimal_s value;
    return read(quantity, record, value) ? realOf(value) : std::nan("");
}

// Its number, or what stands in the message for it.
std::int64_t satelliteOf(const FieldModel& satellite, const void* record)
{
    RTCM2_decimal_s value;
    return satellite.isQuantity() && read(satellite, record, value)
               ? value.digits
               : RTCM2_reader_integer(&satellite.reader, record, 0);
}

}    // namespace

void Spread::add(double number)
{
    ++count;
    const double step = number - mean;
    mean += step / static_cast<double>(count);
    squares += step * (number - mean);
    largest = std::max(largest, std::abs(number));
}

double Spread::deviation() const
{
    return count > 1 ? std::sqrt(squares / static_cast<double>(count - 1)) : 0;
}

SatelliteDifferences::SatelliteDifferences(const FormatModel& model)
{
    for (const auto& kind : model.kinds()) {
        if (Plan plan = planOf(*kind); kind->typeNumber >= 0 && !plan.quantities.empty()) {
            plans.emplace(static_cast<unsigned>(kind->typeNumber), std::move(plan));
        }
    }
}

SatelliteDifferences::Plan SatelliteDifferences::planOf(const KindModel& kind)
{
    for (const FieldModel& field : kind.fields) {
        const KindModel* const element = field.element;
        const FieldModel* const satellite =
            element != nullptr ? element->field(RTCM2_MEANS_SATELLITE) : nullptr;
        if (satellite == nullptr) {
            continue;
        }
        const FieldModel* const named = element->quantityOf(*satellite);
        Plan plan{.elements = &field,
                  .satellite = named != nullptr ? named : satellite,
                  .issue = element->field(RTCM2_MEANS_ISSUE)};
        for (const FieldModel& quantity : element->quantities) {
            if (isCompared(quantity)) {
                plan.quantities.push_back(&quantity);
            }
        }
        return plan;
    }
    return {};
}

const SatelliteDifferences::Plan* SatelliteDifferences::planOf(unsigned type) const
{
    const auto known = plans.find(type);
    return known != plans.end() ? &known->second : nullptr;
}

void SatelliteDifferences::add(const StoredMessage& message, const void* inA, const void* inB)
{
    if (message.group != group || message.time != time) {
        finish();
        group = message.group;
        time = message.time;
    }
    const Plan& plan = *planOf(message.group.type);
    read(plan, inA, a);
    read(plan, inB, b);
}

std::string SatelliteDifferences::nameOf(const Key& key, std::int64_t satellite) const
{
    const FieldModel& field = *planOf(key.first.type)->satellite;
    if (!field.isQuantity()) {
        return std::to_string(satellite);
    }
    const RTCM2_decimal_s number{satellite, 0};
    char name[RTCM2_QUANTITY_ROOM];
    return {name, RTCM2_quantity_text(field.row->quantity, key.second, &number, name)};
}

void SatelliteDifferences::read(const Plan& plan, const void* record, Epoch& epoch)
{
    plan.elements->eachElement(record, [&](const void* element) {
        epoch.samples.push_back(
            {.system = RTCM2_system_of(element),
             .satellite = satelliteOf(*plan.satellite, element),
             .issue =
                 plan.issue != nullptr ? RTCM2_reader_integer(&plan.issue->reader, element, 0) : 0,
             .values = epoch.values.size()});
        for (const FieldModel* quantity : plan.quantities) {
            epoch.values.push_back(valueOf(*quantity, element));
        }
    });
}

// Compares what the epoch has collected, system by system.
void SatelliteDifferences::finish()
{
    const auto bySystem = [](const Sample& x, const Sample& y) {
        return std::less<>()(x.system, y.system);
    };
    for (Epoch* epoch : {&a, &b}) {
        std::sort(epoch->samples.begin(), epoch->samples.end(),
                  [](const Sample& x, const Sample& y) {
                      return std::tuple(x.system, x.satellite, x.values) <
                             std::tuple(y.system, y.satellite, y.values);
                  });
    }
    for (std::size_t i = 0; i < a.samples.size();) {
        const Sample& first = a.samples[i];
        const auto [beginA, endA] =
            std::equal_range(a.samples.begin(), a.samples.end(), first, bySystem);
        const auto [beginB, endB] =
            std::equal_range(b.samples.begin(), b.samples.end(), first, bySystem);
        compareSystem({beginA, endA}, {beginB, endB});
        i += static_cast<std::size_t>(endA - beginA);
    }
    for (Epoch* epoch : {&a, &b}) {
        epoch->samples.clear();
        epoch->values.clear();
    }
}

void SatelliteDifferences::compareSystem(std::span<const Sample> inA, std::span<const Sample> inB)
{
    const std::size_t fieldCount = planOf(group.type)->quantities.size();
    System& system = found[{group, inA.front().system}];
    system.common.resize(fieldCount);
    differences.resize(fieldCount);
    for (auto& ofField : differences) {
        ofField.clear();
    }
    for (std::size_t i = 0, j = 0; i < inA.size() && j < inB.size();) {
        if (inA[i].satellite != inB[j].satellite) {
            ++(inA[i].satellite < inB[j].satellite ? i : j);
            continue;
        }
        SatelliteSpread& satellite = system.satellites[inA[i].satellite];
        satellite.fields.resize(fieldCount);
        compareSatellite(satellite, inA[i++], inB[j++]);
    }
    for (std::size_t field = 0; field < fieldCount; ++field) {
        addDifferences(system, differences[field], field);
    }
}

void SatelliteDifferences::compareSatellite(SatelliteSpread& satellite, const Sample& inA,
                                            const Sample& inB)
{
    if (inA.issue != inB.issue) {
        ++satellite.otherIssues;
        return;
    }
    for (std::size_t field = 0; field < differences.size(); ++field) {
        const double difference = b.values[inB.values + field] - a.values[inA.values + field];
        if (!std::isnan(difference)) {
            differences[field].push_back({inA.satellite, difference});
        }
    }
}

double SatelliteDifferences::medianOf(const std::vector<Difference>& all)
{
    std::vector<double> numbers;
    for (const Difference& difference : all) {
        numbers.push_back(difference.value);
    }
    std::sort(numbers.begin(), numbers.end());
    const std::size_t middle = numbers.size() / 2;
    return numbers.size() % 2 == 1 ? numbers[middle] : (numbers[middle - 1] + numbers[middle]) / 2;
}

// What is common to all satellites is not told apart from what a single one has.
void SatelliteDifferences::addDifferences(System& system, const std::vector<Difference>& all,
                                          std::size_t field)
{
    if (all.size() < 2) {
        system.alone += all.size();
        return;
    }
    const double common = medianOf(all);
    system.common[field].add(common);
    for (const auto& [satellite, difference] : all) {
        system.satellites[satellite].fields[field].add(difference - common);
    }
}
