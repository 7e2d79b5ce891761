#include "commands/encode/RecordDraft.h"

#include "commands/encode/MemberValue.h"

#include <algorithm>
#include <cstring>

using memberValue::fits;
using memberValue::lowMask;
using memberValue::misfitText;

namespace {

bool isRepeated(const RTCM2_member_s& row)
{
    return row.role == RTCM2_ROLE_RUN || row.role == RTCM2_ROLE_ARRAY;
}

bool isDerived(const RTCM2_member_s& row)
{
    return row.of != nullptr || row.role == RTCM2_ROLE_CONSTANT;
}

std::string limitText(const RTCM2_member_s& row)
{
    return "more than " + std::to_string(row.limit) +
           (row.type == RTCM2_TYPE_CHARACTER ? " characters" : " bytes");
}

}    // namespace

RecordDraft::RecordDraft(const RTCM2_kind_s& kindRow, const Names& memberNames, void* targetRecord)
    : row(&kindRow), names(&memberNames), target(targetRecord), given(kindRow.member_count)
{
}

RecordDraft::Result RecordDraft::take(int member)
{
    Given& slot = given[index(member)];
    if (slot.isGiven) {
        return Problem{member, "stands twice"};
    }
    slot.isGiven = true;
    return {};
}

RecordDraft::Result RecordDraft::set(int member, Integer value)
{
    if (Result problem = take(member)) {
        return problem;
    }
    const RTCM2_member_s& target_ = this->member(member);
    if (!fits(target_, value)) {
        return Problem{member, misfitText(target_, value)};
    }
    given[index(member)].number = value;
    if (!isDerived(target_)) {
        store(member, value);
    }
    return {};
}

RecordDraft::Result RecordDraft::set(int member, double value)
{
    given[index(member)].real = value;
    return take(member);
}

RecordDraft::Result RecordDraft::setText(int member, std::string_view characters)
{
    if (Result problem = take(member)) {
        return problem;
    }
    const RTCM2_member_s& text = this->member(member);
    if (characters.size() > text.limit) {
        return Problem{member, limitText(text)};
    }
    std::memcpy(place(member), characters.data(), characters.size());
    given[index(member)].count = static_cast<unsigned>(characters.size());
    return {};
}

RecordDraft::Result RecordDraft::setByte(int member, Integer value)
{
    const RTCM2_member_s& run = this->member(member);
    unsigned& count = given[index(member)].count;
    if (count == run.limit) {
        return Problem{member, limitText(run)};
    }
    if (!fits(run, value)) {
        return Problem{member, misfitText(run, value)};
    }
    memberValue::store(run, place(member) + count, value);
    ++count;
    return {};
}

RecordDraft::Result RecordDraft::beginArray(int member)
{
    return take(member);
}

Integer RecordDraft::value(int member) const
{
    return memberValue::load(this->member(member), place(member));
}

void RecordDraft::store(int member, Integer value)
{
    memberValue::store(this->member(member), place(member), value);
}

bool RecordDraft::isPresent(int member) const
{
    return RTCM2_is_present(target, &this->member(member)) != 0;
}

RecordDraft::Result RecordDraft::complete()
{
    for (int i = 0; i < memberCount(); ++i) {
        if (member(i).role == RTCM2_ROLE_WIRE && !isGiven(i)) {
            if (Result problem = completeFromSlices(i)) {
                return problem;
            }
        }
    }
    derive();
    for (int i = 0; i < memberCount(); ++i) {
        if (isRepeated(member(i)) && member(i).length->role == RTCM2_ROLE_WIRE) {
            if (Result problem = completeLength(i)) {
                return problem;
            }
        }
    }
    derive();
    return {};
}

// A member whose every bit stands in one of its parts need not be given.
RecordDraft::Result RecordDraft::completeFromSlices(int member)
{
    std::uint64_t known = 0;
    std::uint64_t whole = 0;
    for (int i = 0; i < memberCount(); ++i) {
        const RTCM2_member_s& slice = this->member(i);
        if (slice.role == RTCM2_ROLE_SLICE && slice.of == &this->member(member) && isGiven(i)) {
            known |= lowMask(slice.bits) << slice.low;
            whole |= given[index(i)].number.bits << slice.low;
        }
    }
    return known == lowMask(this->member(member).bits) ? set(member, Integer{whole}) : Result{};
}

RecordDraft::Result RecordDraft::completeLength(int member)
{
    const int length = lengthOf(member);
    if (isGiven(length)) {
        return {};
    }
    if (!isGiven(member) && isPresent(member)) {
        return Problem{member, "is missing" + conditionText(member)};
    }
    const Result problem = set(length, Integer{givenCount(member)});
    return problem ? Problem{member, problem->text} : problem;
}

void RecordDraft::derive()
{
    for (int i = 0; i < memberCount(); ++i) {
        double value = 0;
        if (RTCM2_derive(target, &member(i), &value) != RTCM2_ACCESS_DONE) {
            continue;
        }
        if (member(i).type == RTCM2_TYPE_REAL) {
            std::memcpy(place(i), &value, sizeof value);
        } else {
            store(i, Integer{static_cast<std::uint64_t>(value)});
        }
    }
}

RecordDraft::Result RecordDraft::check(const std::function<bool(int)>& isImplied) const
{
    for (int i = 0; i < memberCount(); ++i) {
        Result problem = isDerived(member(i)) ? checkDerived(i) : checkWire(i, isImplied);
        if (problem) {
            return problem;
        }
    }
    return {};
}

RecordDraft::Result RecordDraft::checkWire(int member,
                                           const std::function<bool(int)>& isImplied) const
{
    if (!isPresent(member)) {
        return isGiven(member) ? Problem{member, "must be absent" + conditionText(member)}
                               : Result{};
    }
    if (!isGiven(member) && !isImplied(member)) {
        return Problem{member, "is missing" + conditionText(member)};
    }
    const RTCM2_member_s& source = this->member(member);
    if (!isRepeated(source) || agreesWithLength(member)) {
        return {};
    }
    const std::string expected = " where " + name(lengthOf(member)) + " is " +
                                 value(lengthOf(member)).text() + sourceText(lengthOf(member));
    if (!isGiven(member)) {
        return Problem{member, "is missing" + expected};
    }
    return Problem{member, "has " + std::to_string(givenCount(member)) +
                               (source.type == RTCM2_TYPE_CHARACTER ? " characters" : " elements") +
                               expected};
}

RecordDraft::Result RecordDraft::checkDerived(int member) const
{
    if (!isGiven(member)) {
        return {};
    }
    const RTCM2_member_s& source = this->member(member);
    const Given& slot = given[index(member)];
    if (source.type == RTCM2_TYPE_REAL) {
        double expected = 0;
        std::memcpy(&expected, place(member), sizeof expected);
        const bool agrees = !(slot.real < expected) && !(slot.real > expected);
        return agrees ? Result{} : Problem{member, "contradicts what follows" + sourceText(member)};
    }
    const Integer expected = value(member);
    if (slot.number == expected) {
        return {};
    }
    return Problem{member, slot.number.text() + " contradicts " + expected.text() +
                               (source.role == RTCM2_ROLE_CONSTANT
                                    ? ", which it always is"
                                    : ", which follows" + sourceText(member))};
}

std::string RecordDraft::sourceText(int member) const
{
    const int of = indexOf(this->member(member).of);
    return of < 0 ? std::string() : " (" + name(of) + ": " + value(of).text() + ")";
}

std::string RecordDraft::conditionText(int member) const
{
    const int when = indexOf(this->member(member).when);
    return when < 0 ? std::string() : " where " + name(when) + " is " + value(when).text();
}

bool RecordDraft::agreesWithLength(int member) const
{
    const RTCM2_member_s& source = this->member(member);
    const std::uint64_t length = value(lengthOf(member)).bits;
    const std::uint64_t count = givenCount(member);
    if (source.type != RTCM2_TYPE_CHARACTER || length > source.limit) {
        return count == length;
    }
    const bool mayBePadded = source.length->role == RTCM2_ROLE_COUNT;
    return count == length || count + 1 == length || (mayBePadded && count < length);
}

unsigned RecordDraft::contentBits() const
{
    unsigned bits = 0;
    for (int i = 0; i < memberCount(); ++i) {
        const RTCM2_member_s& source = member(i);
        if (source.role == RTCM2_ROLE_WIRE && isPresent(i)) {
            bits += source.bits;
        } else if (source.role == RTCM2_ROLE_RUN && isPresent(i)) {
            bits += source.bits * static_cast<unsigned>(value(lengthOf(i)).bits);
        }
    }
    return bits;
}
