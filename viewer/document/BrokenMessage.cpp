#include "viewer/document/BrokenMessage.h"

#include "framing/Header.h"
#include "session/ShortMessage.h"

#include <algorithm>

namespace {

// Fields that did not come would seem to be there with the number of words that it declares.
bool hidesWhatIsMissing(const KindModel& kind)
{
    const FieldModel* const words = kind.field(RTCM2_MEANS_WORDS);
    return words == nullptr || kind.decidesPresence(*words);
}

// Decodes it as if it declared the words that came, and puts the number back that it declares.
bool decodeWhatCame(MessageDetail& detail)
{
    const std::span<const std::uint8_t> packed(detail.packed);
    ShortMessage shortMessage;
    const std::size_t words = std::min(packed.size() / framing::bytesPerWord, framing::maxWords);
    const std::int32_t bits =
        detail.table->decode(*detail.kind->row, shortMessage.cutTo(words, packed));
    if (bits < 0) {
        return false;
    }
    detail.bits = static_cast<std::size_t>(bits);
    RTCM2_write_integer(detail.table->get(), detail.kind->field(RTCM2_MEANS_WORDS)->row, 0,
                        shortMessage.declared());
    return true;
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
    if (detail.kind == nullptr || hidesWhatIsMissing(*detail.kind) || !decodeWhatCame(detail)) {
        detail.kind = &model.unknownKind();
        detail.table->decode(*detail.kind->row, packed.first(framing::headerBytes));
    }
}
