#include "forms/RTCM2_forms.h"

#include "forms/InputForm.h"

#include <new>

struct RTCM2_form_reader_s {
    std::unique_ptr<PacketReader> reader;
    bool isUsedUp = true;    // what was pushed
    bool hasEnded = false;
    bool hasFailed = false;
    std::string damage;
    std::string problem;
};

struct RTCM2_form_writer_s {
    std::unique_ptr<PacketWriter> writer;
    std::vector<std::uint8_t> bytes;
};

namespace {

// What `make` gives, or null where memory runs out.
template <class Make>
auto orNull(Make make) -> decltype(make())
{
    try {
        return make();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

RTCM2_found_enum kindOf(framing::Frame::Kind kind)
{
    switch (kind) {
    case framing::Frame::Kind::message:
        return RTCM2_FOUND_MESSAGE;
    case framing::Frame::Kind::truncated:
        return RTCM2_FOUND_TRUNCATED;
    case framing::Frame::Kind::damaged:
        break;
    }
    return RTCM2_FOUND_DAMAGED;
}

RTCM2_certainty_enum certaintyOf(Certainty certainty)
{
    switch (certainty) {
    case Certainty::given:
        return RTCM2_CERTAINTY_GIVEN;
    case Certainty::vouched:
        return RTCM2_CERTAINTY_VOUCHED;
    case Certainty::likely:
        return RTCM2_CERTAINTY_LIKELY;
    case Certainty::unsure:
        break;
    }
    return RTCM2_CERTAINTY_UNSURE;
}

std::string damageOf(const framing::Frame& frame, const PacketReader& reader)
{
    switch (frame.kind) {
    case framing::Frame::Kind::message:
        return {};
    case framing::Frame::Kind::truncated:
        return "the input ends inside it";
    case framing::Frame::Kind::damaged:
        break;
    }
    return reader.damage();
}

RTCM2_envelope_s envelopeOf(const Envelope& envelope)
{
    const AisSender sender = envelope.sender.value_or(AisSender{});
    return {.received = envelope.received.value_or(RTCM2_FORMS_NO_TIME),
            .has_sender = envelope.sender ? 1 : 0,
            .mmsi = sender.mmsi,
            .longitude = sender.longitude,
            .latitude = sender.latitude};
}

Envelope envelopeOf(const RTCM2_envelope_s& given)
{
    Envelope envelope;
    if (given.received != RTCM2_FORMS_NO_TIME) {
        envelope.received = given.received;
    }
    if (given.has_sender != 0) {
        envelope.sender =
            AisSender{.mmsi = given.mmsi, .longitude = given.longitude, .latitude = given.latitude};
    }
    return envelope;
}

void fill(RTCM2_found_s& found, const framing::Frame& frame, const RTCM2_form_reader_s& reader)
{
    const std::span<const std::uint8_t> packed = frame.bytes();
    const std::span<const std::uint8_t> recorded = reader.reader->recorded();
    const Envelope* const told = reader.reader->envelope();
    static const Envelope nothing;
    const Envelope& envelope = told != nullptr ? *told : nothing;
    found = {.kind = kindOf(frame.kind),
             .number = frame.number,
             .begin = frame.beginOffset,
             .end = frame.endOffset,
             .packed = packed.data(),
             .packed_size = packed.size(),
             .recorded = recorded.empty() ? nullptr : recorded.data(),
             .recorded_size = recorded.size(),
             .damage = reader.damage.c_str(),
             .bits_heard = envelope.bitsHeard.value_or(packed.size() * 8),
             .envelope = envelopeOf(envelope)};
}

}    // namespace

const char* RTCM2_form_name(int32_t index)
{
    return index >= 0 && index < inputFormCount ? nameOf(static_cast<InputForm>(index)) : nullptr;
}

RTCM2_form_reader_s* RTCM2_form_reader_new(const char* form)
{
    const std::optional<InputForm> wanted = inputFormOf(form);
    return orNull([&]() -> RTCM2_form_reader_s* {
        if (!wanted) {
            return nullptr;
        }
        auto reader = std::make_unique<RTCM2_form_reader_s>();
        reader->reader = makeReader(*wanted);
        return reader.release();
    });
}

void RTCM2_form_reader_free(RTCM2_form_reader_s* reader)
{
    delete reader;
}

int32_t RTCM2_form_reader_push(RTCM2_form_reader_s* reader, const uint8_t* bytes, size_t size)
{
    if (!reader->isUsedUp || reader->hasEnded) {
        return 0;
    }
    reader->reader->push({bytes, size});
    reader->isUsedUp = size == 0;
    return 1;
}

void RTCM2_form_reader_finish(RTCM2_form_reader_s* reader)
{
    reader->hasEnded = true;
    reader->reader->finish();
}

int32_t RTCM2_form_reader_next(RTCM2_form_reader_s* reader, RTCM2_found_s* found)
{
    try {
        const framing::Frame* const frame = reader->hasFailed ? nullptr : reader->reader->next();
        if (frame != nullptr) {
            reader->damage = damageOf(*frame, *reader->reader);
            fill(*found, *frame, *reader);
            return 1;
        }
        reader->isUsedUp = !reader->hasFailed;
    } catch (const std::bad_alloc&) {
        reader->hasFailed = true;
    }
    return reader->hasFailed ? -1 : 0;
}

const char* RTCM2_form_reader_problem(RTCM2_form_reader_s* reader)
{
    const char* const text = orNull([&] {
        reader->problem = reader->reader->problem();
        return reader->problem.c_str();
    });
    return text != nullptr ? text : "no memory";
}

void RTCM2_form_reader_counters(const RTCM2_form_reader_s* reader, RTCM2_form_counters_s* counters)
{
    const ReaderCounters seen = reader->reader->counters();
    *counters = {.bytes_read = seen.bytesRead,
                 .bytes_skipped = seen.bytesSkipped,
                 .form = seen.form,
                 .certainty = certaintyOf(seen.certainty)};
}

RTCM2_form_writer_s* RTCM2_form_writer_new(const char* form)
{
    const std::optional<InputForm> wanted = inputFormOf(form);
    if (!wanted || *wanted == InputForm::automatic) {
        return nullptr;
    }
    return orNull([&]() -> RTCM2_form_writer_s* {
        auto writer = std::make_unique<RTCM2_form_writer_s>();
        writer->writer = makeWriter(*wanted);
        return writer.release();
    });
}

void RTCM2_form_writer_free(RTCM2_form_writer_s* writer)
{
    delete writer;
}

void RTCM2_form_writer_set_envelope(RTCM2_form_writer_s* writer, const RTCM2_envelope_s* envelope)
{
    writer->writer->setEnvelope(envelope != nullptr ? envelopeOf(*envelope) : Envelope{});
}

const uint8_t* RTCM2_form_writer_write(RTCM2_form_writer_s* writer, const uint8_t* packed,
                                       size_t packed_size, size_t* written)
{
    const uint8_t* const bytes = orNull([&]() -> const uint8_t* {
        writer->bytes.clear();
        // Enough for every form, so that a writer does not lose its place where there is no memory.
        writer->bytes.reserve(4 * RTCM2_FORMS_MAX_PACKED);
        return writer->writer->append({packed, packed_size}, writer->bytes) ? writer->bytes.data()
                                                                            : nullptr;
    });
    *written = bytes != nullptr ? writer->bytes.size() : 0;
    return bytes;
}
