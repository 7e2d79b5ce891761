#include "commands/encode/RecordEncoder.h"

#include "base/Names.h"
#include "commands/encode/DataWords.h"
#include "format/FormatModel.h"

#include <algorithm>
#include <cstddef>

namespace {

MessageEncoder::Shape shapeOf(const RTCM2_member_s& row)
{
    switch (row.role) {
    case RTCM2_ROLE_ARRAY:
        return RecordEncoder::Shape::elements;
    case RTCM2_ROLE_RUN:
        return row.type == RTCM2_TYPE_CHARACTER ? RecordEncoder::Shape::text
                                                : RecordEncoder::Shape::bytes;
    default:
        return row.type == RTCM2_TYPE_REAL ? RecordEncoder::Shape::real
                                           : RecordEncoder::Shape::integer;
    }
}

bool isMember(const RecordDraft& draft, int member, std::size_t headerOffset)
{
    return draft.member(member).offset == headerOffset;
}

}    // namespace

std::unique_ptr<MessageEncoder> makeMessageEncoder()
{
    return std::make_unique<RecordEncoder>();
}

RecordEncoder::RecordEncoder()
{
    for (int value = 1; value <= RTCM2_last_kind(); ++value) {
        const RTCM2_kind_s& row = *RTCM2_kind(value);
        Kind kind{&row, labelOf(row), {}};
        for (std::uint32_t i = 0; i < row.member_count; ++i) {
            kind.members.push_back(identifierOf(labelOf(row.members[i])));
        }
        kinds.push_back(std::move(kind));
    }
}

RecordEncoder::~RecordEncoder()
{
    release();
}

const RecordEncoder::Kind& RecordEncoder::namesOf(RTCM2_message_enum kind) const
{
    return kinds[static_cast<std::size_t>(kind) - 1];
}

const RTCM2_kind_s* RecordEncoder::findKind(std::string_view name)
{
    const auto named = [&](auto&& matches) {
        const auto found = std::find_if(kinds.begin(), kinds.end(), [&](const Kind& kind) {
            return kind.row->type >= 0 && matches(kind);
        });
        return found != kinds.end() ? found->row : nullptr;
    };
    const RTCM2_kind_s* row = named([&](const Kind& kind) { return kind.name == name; });
    return row != nullptr ? row
                          : named([&](const Kind& kind) { return sameName(kind.name, name); });
}

bool RecordEncoder::begin(std::string_view kindName)
{
    release();
    problemText.clear();
    currentKind.clear();
    const RTCM2_kind_s* row = findKind(kindName);
    if (row == nullptr) {
        return false;
    }
    message = {};
    RTCM2_init_record(row->kind, &message);
    main = RecordDraft(*row, namesOf(row->kind).members, &message);
    current = &main;
    elementsBits = 0;
    hint = 0;
    currentKind = labelOf(*row);
    return true;
}

void RecordEncoder::release()
{
    RTCM2_free_message(&message);
}

std::optional<RecordEncoder::Member> RecordEncoder::member(std::string_view name)
{
    const int count = current->memberCount();
    for (int i = 0; i < count; ++i) {
        const int candidate = (hint + i) % count;
        if (current->name(candidate) == name) {
            hint = candidate + 1;
            return Member{candidate, shapeOf(current->member(candidate))};
        }
    }
    for (int i = 0; i < count; ++i) {
        if (sameName(current->name(i), name)) {
            return Member{i, shapeOf(current->member(i))};
        }
    }
    return {};
}

void RecordEncoder::set(Member member, Integer value)
{
    const bool isType =
        current == &main && isMember(main, member.index, offsetof(RTCM2_header_s, Message_Type));
    if (isType && value != main.value(member.index)) {
        fail(member, value.text() + " contradicts the kind");
    }
    note(current->set(member.index, value));
}

void RecordEncoder::set(Member member, double value)
{
    note(current->set(member.index, value));
}

void RecordEncoder::setText(Member member, std::string_view characters)
{
    note(current->setText(member.index, characters));
}

void RecordEncoder::beginBytes(Member member)
{
    note(current->beginArray(member.index));
}

void RecordEncoder::addByte(Member member, Integer value)
{
    note(current->setByte(member.index, value));
}

void RecordEncoder::beginElements(Member member)
{
    note(current->beginArray(member.index));
}

void RecordEncoder::beginElement(Member member)
{
    const RTCM2_member_s& row = main.member(member.index);
    const RTCM2_kind_s& kind = *row.elements;
    void* record = failed() ? nullptr : RTCM2_append_element(&message);
    elementsMember = member.index;
    if (record == nullptr) {
        // Filled all the same, so that begin and end keep going together.
        fail(member, "more than " + std::to_string(main.givenCount(member.index)) + " elements");
        spare.assign(kind.size, 0);
        record = spare.data();
    }
    std::fill_n(static_cast<std::uint8_t*>(record), kind.size, std::uint8_t{0});
    RTCM2_init_record(kind.kind, record);
    element = RecordDraft(kind, namesOf(kind.kind).members, record);
    current = &element;
    hint = 0;
}

void RecordEncoder::endElement()
{
    note(element.complete());
    note(element.check([](int) { return false; }));
    elementsBits += element.contentBits();
    current = &main;
    main.addElement(elementsMember);
    hint = elementsMember + 1;
}

void RecordEncoder::fail(const std::string& reason)
{
    if (!failed()) {
        problemText = reason;
    }
}

void RecordEncoder::fail(Member member, const std::string& reason)
{
    note(Problem{member.index, reason});
}

void RecordEncoder::failUnknown(std::string_view name)
{
    fail(pathTo(name) + ": there is no such field");
}

void RecordEncoder::note(const RecordDraft::Result& problem)
{
    if (problem) {
        fail(pathTo(current->name(problem->member)) + ": " + problem->text);
    }
}

std::string RecordEncoder::pathTo(std::string_view name) const
{
    const std::string path = current == &element
                                 ? main.name(elementsMember) + "[" +
                                       std::to_string(main.givenCount(elementsMember)) + "]."
                                 : std::string();
    return path + std::string(name);
}

std::span<const std::uint8_t> RecordEncoder::finish(std::optional<std::string_view> fill)
{
    note(main.complete());
    if (failed()) {
        return {};
    }
    wordsGiven = main.isGiven(dataWords::member(main));
    if (!wordsGiven) {
        dataWords::choose(main, elementsBits);
    }
    note(main.check([this](int member) { return isImplied(member); }));
    return failed() ? std::span<const std::uint8_t>{} : encode(fill);
}

bool RecordEncoder::isImplied(int member) const
{
    const RTCM2_member_s& row = main.member(member);
    if (row.length != nullptr) {
        return main.isGiven(main.lengthOf(member)) ||
               (wordsGiven && row.length->role == RTCM2_ROLE_COUNT);
    }
    switch (row.offset) {
    case offsetof(RTCM2_header_s, Preamble):
    case offsetof(RTCM2_header_s, Message_Type):
    case offsetof(RTCM2_header_s, No_Of_Data_Words):
        return true;
    default:
        return false;
    }
}

std::span<const std::uint8_t> RecordEncoder::encode(std::optional<std::string_view> fill)
{
    const auto words = static_cast<unsigned>(main.value(dataWords::member(main)).bits);
    const unsigned end = dataWords::headerBits + dataWords::bitsPerWord * words;
    const unsigned content = main.contentBits() + elementsBits;
    if (content > end) {
        note(Problem{dataWords::member(main), std::to_string(words) + " data words hold " +
                                                  std::to_string(end - dataWords::headerBits) +
                                                  " bits, not the " +
                                                  std::to_string(content - dataWords::headerBits) +
                                                  " bits of the other members"});
        return {};
    }
    packed = {};
    std::uint32_t written = 0;
    const auto size = static_cast<std::uint16_t>(end / 8);
    const std::int32_t result = RTCM2_encode_record(&message, packed.data(), size, &written);
    if (result < 0) {
        fail(RTCM2_error_to_string(result));
        return {};
    }
    return writeFill(static_cast<unsigned>(result), end, fill)
               ? std::span<const std::uint8_t>(packed).first(size)
               : std::span<const std::uint8_t>{};
}

bool RecordEncoder::writeFill(unsigned begin, unsigned end, std::optional<std::string_view> fill)
{
    if (fill && fill->size() != end - begin) {
        fail("fill: has " + std::to_string(fill->size()) +
             " bits where the data words have room for " + std::to_string(end - begin));
        return false;
    }
    for (unsigned bit = begin; bit < end; ++bit) {
        const bool one = fill ? (*fill)[bit - begin] == '1' : (bit - begin) % 2 == 0;
        if (one) {
            packed[bit / 8] = static_cast<std::uint8_t>(packed[bit / 8] | 0x80U >> bit % 8);
        }
    }
    return true;
}
