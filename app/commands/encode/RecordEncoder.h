// Makes packed messages by filling the codec's records through the table of members.
#pragma once

#include "RTCM2.h"
#include "commands/encode/MessageEncoder.h"
#include "commands/encode/RecordDraft.h"

#include <array>
#include <vector>

class RecordEncoder : public MessageEncoder {
public:
    RecordEncoder();
    ~RecordEncoder() override;
    RecordEncoder(const RecordEncoder&) = delete;
    RecordEncoder& operator=(const RecordEncoder&) = delete;

    bool begin(std::string_view kindName) override;
    const std::string& kindName() const override { return currentKind; }
    std::optional<Member> member(std::string_view name) override;
    void set(Member member, Integer value) override;
    void set(Member member, double value) override;
    void setText(Member member, std::string_view characters) override;
    void beginBytes(Member member) override;
    void addByte(Member member, Integer value) override;
    void beginElements(Member member) override;
    void beginElement(Member member) override;
    void endElement() override;
    std::span<const std::uint8_t> finish(std::optional<std::string_view> fill) override;
    void fail(Member member, const std::string& reason) override;
    void failUnknown(std::string_view name) override;
    void fail(const std::string& reason) override;
    bool failed() const override { return !problemText.empty(); }
    const std::string& problem() const override { return problemText; }

private:
    struct Kind {
        const RTCM2_kind_s* row;
        std::string name;
        RecordDraft::Names members;
    };

    const RTCM2_kind_s* findKind(std::string_view name);
    const Kind& namesOf(RTCM2_message_enum kind) const;
    void release();
    void note(const RecordDraft::Result& problem);
    std::string pathTo(std::string_view name) const;
    bool isImplied(int member) const;
    std::span<const std::uint8_t> encode(std::optional<std::string_view> fill);
    bool writeFill(unsigned begin, unsigned end, std::optional<std::string_view> fill);

    std::vector<Kind> kinds;    // by kind value less 1
    RTCM2_message_s message = {};
    RecordDraft main;
    RecordDraft element;
    RecordDraft* current = &main;
    int elementsMember = 0;       // while an element is being filled
    unsigned elementsBits = 0;    // of the elements so far
    int hint = 0;                 // the member that will probably be asked for next
    bool wordsGiven = false;
    std::string currentKind;
    std::string problemText;
    // The longest message that the header can announce.
    std::array<std::uint8_t, RTCM2_PACKED_ROOM> packed = {};
    std::vector<std::uint8_t> spare;
};
