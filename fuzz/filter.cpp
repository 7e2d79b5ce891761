// Filter expressions, asked about some messages.
#include "fuzz.h"

#include "commands/Host.h"
#include "filter/MessageFilter.h"
#include "plugin/DecoderDriver.h"

#include <algorithm>
#include <optional>
#include <string>

using namespace fuzz;

namespace {

// A host with a message of every kind that is reported and whose zeros are good.
struct Filtered {
    Filtered()
    {
        for (const auto& kind : host.model.kinds()) {
            if (kind->info != nullptr) {
                keep(static_cast<unsigned>(kind->typeNumber));
            }
        }
    }

    Filtered(const Filtered&) = delete;
    Filtered& operator=(const Filtered&) = delete;

    void keep(unsigned type)
    {
        Bytes packed(99);
        packed[0] = 0x66;
        packed[1] = static_cast<std::uint8_t>(type << 2);
        packed[2] = 5;
        packed[5] = 5 << 3;
        messages.push_back(host.driver.decode(packed));
        promise(4, messages.back().record != nullptr, "a message of zeros is rejected");
    }

    Host host;
    std::vector<Outcome> messages;
};

const Filtered& filtered()
{
    static const Filtered made;
    return made;
}

// Which of the messages fulfil the expression; nothing when it cannot be understood.
std::optional<std::vector<bool>> answers(const std::string& text)
{
    try {
        const Host& host = filtered().host;
        const MessageFilter filter(host.model, {.where = text});
        std::vector<bool> result;
        for (const Outcome& message : filtered().messages) {
            result.push_back(filter.takes({message.record}, *host.model.kindOf(message.record)));
        }
        return result;
    } catch (const FilterError& error) {
        promise(3, !error.text.empty(), "refused without a reason");
        return {};
    }
}

// Of a condition in brackets, each element must give the answer for itself that they give together.
void askElements(const std::string& text)
try {
    const Host& host = filtered().host;
    const MessageFilter filter(host.model, {.where = text});
    for (const Outcome& message : filtered().messages) {
        const KindModel& kind = *host.model.kindOf(message.record);
        for (const FieldModel& field : kind.fields) {
            const bool anyElement =
                field.element != nullptr && field.anyElement(message.record, [&](const void* one) {
                    return filter.takes({message.record, one}, kind);
                });
            promise(4,
                    field.element == nullptr || anyElement == filter.takes({message.record}, kind),
                    "elements answer otherwise than their message");
        }
    }
} catch (const FilterError&) {
    return;
}

}    // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto plain = answers(text);
    if (text.find(']') == text.npos) {
        askElements("Corrections[" + text + "]");
        askElements("Data[" + text + "]");
    }
    const auto negated = answers("not (" + text + ")");
    if (plain && negated) {
        for (std::size_t i = 0; i < plain->size(); ++i) {
            promise(4, (*plain)[i] != (*negated)[i], "a condition and its negation agree");
        }
    }
    return 0;
}
