#include "viewer/document/BrokenMessage.h"

#include "framing/Header.h"
#include "session/ShortMessage.h"

#include <algorithm>

namespace {

// With the number of words that it declares, though fewer came.
void setDeclaredWords(MessageDetail& detail, unsigned declared)
{
    if (const FieldModel* const words = detail.kind->field(RTCM2_MEANS_WORDS)) {
        RTCM2_write_integer(detail.table->get(), words->row, 0, declared);
    }
}

}    // namespace

void decodeBroken(MessageDetail& detail, const FormatModel& model)
{
    const std::span<const std::uint8_t> packed(detail.packed);
    if (packed.size() < framing::headerBytes) {
        return;
    }
    const auto type = static_cast<std::int32_t>(framing::headerOf(packed).type);
    detail.kind = model.modelOf(RTCM2_kind_of_type(type));
    detail.table = std::make_unique<TableRecord>();
    detail.record = detail.table->get();
    ShortMessage shortMessage;
    const std::span<const std::uint8_t> came = shortMessage.cutTo(
        std::min(packed.size() / framing::bytesPerWord, framing::maxWords), packed);
    const std::int32_t bits =
        detail.kind != nullptr ? detail.table->decode(*detail.kind->row, came) : -1;
    if (bits >= 0) {
        detail.bits = static_cast<std::size_t>(bits);
        setDeclaredWords(detail, shortMessage.declared());
        return;
    }
    detail.kind = &model.unknownKind();
    detail.table->decode(*detail.kind->row, packed.first(framing::headerBytes));
}
