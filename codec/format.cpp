// Kinds and members by number and by name, contexts, and what a header tells.
#include "RTCM2_version.h"
#include "codec_support.h"
#include "record_values.h"
#include "table.h"

#include <algorithm>
#include <string_view>

using namespace rtcm2;

namespace {

// The row of this name: in code, or else for people, where rows without such a name have none.
template <class Row>
const Row* findByName(std::span<const Row> rows, std::string_view name)
{
    for (const char* Row::*const names : {&Row::name, &Row::display}) {
        const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& row) {
            return !name.empty() && name == row.*names;
        });
        if (found != rows.end()) {
            return &*found;
        }
    }
    return nullptr;
}

}    // namespace

const char* RTCM2_version(void)
{
    return RTCM2_VERSION;
}

int32_t RTCM2_last_kind(void)
{
    return static_cast<int32_t>(kindRows.size());
}

const RTCM2_kind_s* RTCM2_kind(int32_t kind)
{
    return rowOf(kind);
}

const RTCM2_kind_s* RTCM2_kind_of(const void* record)
{
    return rowOf(headOf(record).kind);
}

const RTCM2_kind_s* RTCM2_kind_of_type(int32_t type)
{
    const auto found = std::find_if(kindRows.begin(), kindRows.end(), [type](const auto& kind) {
        return kind.type >= 0 && kind.type == type;
    });
    return found != kindRows.end() ? &*found : nullptr;
}

const RTCM2_kind_s* RTCM2_find_kind(const char* name)
{
    return findByName(kindRows, name);
}

const RTCM2_member_s* RTCM2_find_member(const RTCM2_kind_s* kind, const char* name)
{
    return findByName(membersOf(*kind), name);
}

const char* RTCM2_text_of(const RTCM2_member_s* member, int64_t value)
{
    const RTCM2_text_s* const end = member->texts + member->text_count;
    const RTCM2_text_s* const found = std::find_if(
        member->texts, end, [value](const RTCM2_text_s& text) { return text.value == value; });
    return found != end ? found->text : nullptr;
}

void RTCM2_enable_kind(RTCM2_context_s* context, int32_t kind, int enabled)
{
    if (rowOf(kind) == nullptr) {
        return;
    }
    const EnableFlag flag(static_cast<unsigned>(kind));
    enabled != 0 ? flag.set(*context) : flag.clear(*context);
}

int RTCM2_is_kind_enabled(const RTCM2_context_s* context, int32_t kind)
{
    return rowOf(kind) != nullptr && EnableFlag(static_cast<unsigned>(kind)).test(*context) ? 1 : 0;
}

int32_t RTCM2_packed_length(const uint8_t* data, uint16_t data_size)
{
    constexpr int headerSize = 6;
    constexpr int wordSize = 3;
    return data_size < headerSize ? static_cast<int32_t>(RTCM2_ERR_INVALID_MESSAGE)
                                  : headerSize + wordSize * quarn::read<std::uint8_t, 40, 5>(data);
}
