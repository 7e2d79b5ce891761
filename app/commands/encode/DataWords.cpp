#include "commands/encode/DataWords.h"

#include <cstddef>

namespace dataWords {
namespace {

// Whether an array with a computed length has the elements that were given, or room for them.
bool agreesWithArray(const RecordDraft& draft, int array, bool exactly)
{
    const int length = draft.lengthOf(array);
    return exactly ? draft.agreesWithLength(array) && !draft.checkDerived(length)
                   : draft.givenCount(array) <= draft.value(length).bits;
}

bool agrees(const RecordDraft& draft, bool exactly)
{
    for (int i = 0; i < draft.memberCount(); ++i) {
        const RTCM2_member_s& row = draft.member(i);
        if (row.when == &draft.member(member(draft)) && draft.isGiven(i) && !draft.isPresent(i)) {
            return false;
        }
        const bool hasCount = row.length != nullptr && row.length->role == RTCM2_ROLE_COUNT;
        if (hasCount && draft.isPresent(i) && !agreesWithArray(draft, i, exactly)) {
            return false;
        }
    }
    return true;
}

}    // namespace

int member(const RecordDraft& draft)
{
    int i = 0;
    while (draft.member(i).offset != offsetof(RTCM2_header_s, No_Of_Data_Words)) {
        ++i;
    }
    return i;
}

void choose(RecordDraft& draft, unsigned elementsBits)
{
    for (const bool exactly : {true, false}) {
        for (unsigned words = 0; words <= most; ++words) {
            draft.store(member(draft), Integer{words});
            draft.derive();
            const bool hasRoom =
                draft.contentBits() + elementsBits <= headerBits + bitsPerWord * words;
            if (hasRoom && agrees(draft, exactly)) {
                return;
            }
        }
    }
}

}    // namespace dataWords
