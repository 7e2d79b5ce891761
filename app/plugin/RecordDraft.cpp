#include "RecordDraft.h"

#include "MemberValue.h"

#include <algorithm>
#include <cstring>

using memberValue::fits;
using memberValue::lowMask;
using memberValue::misfitText;
using rtcm2::MemberRole;
using rtcm2::MemberRow;
using rtcm2::MemberType;

namespace {

bool isRepeated(const MemberRow& row)
{
    return row.role == MemberRole::run || row.role == MemberRole::records;
}

bool isDerived(const MemberRow& row)
{
    return row.derive != nullptr || row.role == MemberRole::constant;
}

std::string limitText(const MemberRow& row)
{
    return "more than " + std::to_string(row.limit) +
           (row.type == MemberType::character ? " characters" : " bytes");
}

}    // namespace

RecordDraft::RecordDraft(const rtcm2::KindRow& kindRow, const Names& memberNames,
                         void* targetRecord)
    : row(&kindRow), names(&memberNames), target(targetRecord), given(kindRow.members.size())
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
    const MemberRow& target_ = this->member(member);
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
    const MemberRow& text = this->member(member);
    if (characters.size() > text.limit) {
        return Problem{member, limitText(text)};
    }
    std::memcpy(place(member), characters.data(), characters.size());
    given[index(member)].count = static_cast<unsigned>(characters.size());
    return {};
}

RecordDraft::Result RecordDraft::setByte(int member, Integer value)
{
    const MemberRow& run = this->member(member);
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
    const MemberRow& source = this->member(member);
    return source.isPresent == nullptr || source.isPresent(target);
}

RecordDraft::Result RecordDraft::complete()
{
    for (int i = 0; i < memberCount(); ++i) {
        if (member(i).role == MemberRole::wire && !isGiven(i)) {
            if (Result problem = completeFromSlices(i)) {
                return problem;
            }
        }
    }
    derive();
    for (int i = 0; i < memberCount(); ++i) {
        if (isRepeated(member(i)) && member(member(i).length).role == MemberRole::wire) {
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
        const MemberRow& slice = this->member(i);
        if (slice.role == MemberRole::slice && slice.of == member && isGiven(i)) {
            known |= lowMask(slice.bits) << slice.low;
            whole |= given[index(i)].number.bits << slice.low;
        }
    }
    return known == lowMask(this->member(member).bits) ? set(member, Integer{whole}) : Result{};
}

RecordDraft::Result RecordDraft::completeLength(int member)
{
    const int length = this->member(member).length;
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
    for (const MemberRow& source : row->members) {
        if (source.derive != nullptr) {
            source.derive(target);
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
    const MemberRow& source = this->member(member);
    if (!isRepeated(source) || agreesWithLength(member)) {
        return {};
    }
    const std::string expected = " where " + name(source.length) + " is " +
                                 value(source.length).text() + sourceText(source.length);
    if (!isGiven(member)) {
        return Problem{member, "is missing" + expected};
    }
    return Problem{member,
                   "has " + std::to_string(givenCount(member)) +
                       (source.type == MemberType::character ? " characters" : " elements") +
                       expected};
}

RecordDraft::Result RecordDraft::checkDerived(int member) const
{
    if (!isGiven(member)) {
        return {};
    }
    const MemberRow& source = this->member(member);
    const Given& slot = given[index(member)];
    if (source.type == MemberType::real) {
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
                               (source.role == MemberRole::constant
                                    ? ", which it always is"
                                    : ", which follows" + sourceText(member))};
}

std::string RecordDraft::sourceText(int member) const
{
    const int of = this->member(member).of;
    return of == MemberRow::none ? std::string() : " (" + name(of) + ": " + value(of).text() + ")";
}

std::string RecordDraft::conditionText(int member) const
{
    const int when = this->member(member).when;
    return when == MemberRow::none ? std::string()
                                   : " where " + name(when) + " is " + value(when).text();
}

bool RecordDraft::agreesWithLength(int member) const
{
    const MemberRow& source = this->member(member);
    const std::uint64_t length = value(source.length).bits;
    const std::uint64_t count = givenCount(member);
    if (source.type != MemberType::character || length > source.limit) {
        return count == length;
    }
    const bool mayBePadded = this->member(source.length).role == MemberRole::count;
    return count == length || count + 1 == length || (mayBePadded && count < length);
}

unsigned RecordDraft::contentBits() const
{
    unsigned bits = 0;
    for (int i = 0; i < memberCount(); ++i) {
        const MemberRow& source = member(i);
        if (source.role == MemberRole::wire && isPresent(i)) {
            bits += source.bits;
        } else if (source.role == MemberRole::run && isPresent(i)) {
            bits += source.bits * static_cast<unsigned>(value(source.length).bits);
        }
    }
    return bits;
}
