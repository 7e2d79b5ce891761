#include "forms/AisReader.h"

#include "forms/AisBroadcast.h"
#include "forms/TimeLabel.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace {

// What is looked at of a line: so much before the ! and from there on. The longest broadcast in a
// single sentence has about 160 characters, a tag block 80.
constexpr std::size_t longestBefore = 256;
constexpr std::size_t longestBehind = 512;

bool isLineEnd(std::uint8_t byte)
{
    return byte == '\n' || byte == '\r';
}

std::string missingText(const AisMessage& message, const Envelope& envelope)
{
    return "sentence " + std::to_string(message.firstMissing()) + " of " +
           std::to_string(message.parts.size()) + " of the AIS message" +
           aisBroadcast::ofSender(envelope) + " did not come";
}

}    // namespace

void AisReader::push(std::span<const std::uint8_t> bytes)
{
    assert(pending.empty() && "bytes pushed before are still unread");
    pending = bytes;
}

const framing::Frame* AisReader::next()
{
    while (ready.empty()) {
        if (!search() && !refill()) {
            if (!finished) {
                return nullptr;
            }
            conclude();
            if (ready.empty()) {
                return nullptr;
            }
        }
    }
    found = std::move(ready.front());
    ready.pop_front();
    return &found.frame;
}

// Messages of several sentences may begin before the place that is looked at.
std::uint64_t AisReader::doneUpTo() const
{
    return std::min(windowBegin + at, assembly.earliestBegin());
}

ReaderCounters AisReader::counters() const
{
    const std::uint64_t looked = windowBegin + filled;
    return {
        .bytesRead = looked + pending.size(), .bytesSkipped = looked - bytesUsed, .form = "aivdm"};
}

// Keeps what may belong to the next sentence.
bool AisReader::refill()
{
    if (pending.empty()) {
        return false;
    }
    if (filled == window.size()) {
        const std::size_t keepFrom = std::max(lastEnd, at - std::min(at, longestBefore));
        std::memmove(window.data(), window.data() + keepFrom, filled - keepFrom);
        windowBegin += keepFrom;
        filled -= keepFrom;
        at -= keepFrom;
        lastEnd = 0;
    }
    const std::size_t count = std::min(pending.size(), window.size() - filled);
    std::memcpy(window.data() + filled, pending.data(), count);
    filled += count;
    pending = pending.subspan(count);
    return true;
}

// Takes the next line that counts; false when there is none in the window any more.
bool AisReader::search()
{
    while (at < filled) {
        const void* const mark = std::memchr(&window[at], '!', filled - at);
        if (mark == nullptr) {
            at = filled;
            break;
        }
        at = static_cast<std::size_t>(static_cast<const std::uint8_t*>(mark) - window.data());
        if (isOfOtherMessage(textAt(at, filled))) {
            ++at;
        } else if (const std::optional<Line> line = lineAt(at)) {
            takeLine(*line);
        } else {
            return false;
        }
        if (!ready.empty()) {
            return true;
        }
    }
    return false;
}

// Most sentences are of no interest; they are known by the first character of the payload. The
// first good one has to be read whole.
bool AisReader::isOfOtherMessage(std::string_view text)
{
    if (!sawGoodSentence) {
        return false;
    }
    const auto head = headOfSentence(text);
    const bool isOther = head && head->count == 1 && !head->payload.empty() &&
                         head->payload[0] != aisBroadcast::firstCharacter;
    if (isOther) {
        countSentence();
    }
    return isOther;
}

// With the line end; nothing as long as that may still come.
std::optional<AisReader::Line> AisReader::lineAt(std::size_t place) const
{
    const std::size_t limit = std::min(filled, place + longestBehind);
    const std::uint8_t* const end =
        std::find_if(window.data() + place + 1, window.data() + limit, [](std::uint8_t byte) {
            return isLineEnd(byte) || byte == '!' || byte == '\\';
        });
    const auto textEnd = static_cast<std::size_t>(end - window.data());
    const bool isAll = finished && pending.empty();
    const bool isCut = textEnd == limit;
    if (isCut && limit < place + longestBehind && !isAll) {
        return std::nullopt;
    }
    std::size_t next = textEnd;
    if (!isCut && *end == '\r') {
        ++next;
        if (next == filled && !isAll) {
            return std::nullopt;
        }
    }
    if (next < filled && !isCut && window[next] == '\n') {
        ++next;
    }
    return Line{.begin = beginOfLine(place), .sentence = place, .end = textEnd, .next = next};
}

std::size_t AisReader::beginOfLine(std::size_t place) const
{
    const std::size_t limit = std::max(lastEnd, place - std::min(place, longestBefore));
    std::size_t begin = place;
    while (begin > limit && !isLineEnd(window[begin - 1])) {
        --begin;
    }
    return begin;
}

void AisReader::takeLine(const Line& line)
{
    std::optional<AisSentence> sentence = headOfSentence(textAt(line.sentence, line.end));
    at = line.sentence + 1;
    if (!sentence) {
        return;
    }
    countSentence();
    const bool mayCount =
        sentence->count > 1 || sentence->payload.starts_with(aisBroadcast::firstCharacter);
    readTail(*sentence, textAt(line.sentence, line.end));
    sawGoodSentence = sawGoodSentence || sentence->problem.empty();
    if (mayCount) {
        takePart(*sentence, line);
        at = line.next;
        lastEnd = line.next;
    }
}

void AisReader::takePart(const AisSentence& sentence, const Line& line)
{
    const TagBlock tags = tagBlockBefore(textAt(line.begin, line.sentence));
    const std::string_view behind = textAt(line.sentence + sentence.size, line.end);
    AisPart part{.payload = std::string(sentence.payload),
                 .fillBits = sentence.fillBits,
                 .problem = sentence.problem,
                 .begin = windowBegin + line.sentence,
                 .end = windowBegin + line.sentence + sentence.size,
                 .bytes = line.next - line.begin,
                 .received = tags.received};
    if (!part.received && behind.starts_with(',')) {
        part.received = timeInLabel(behind);
    }
    const bool isCutOff = !sentence.hasChecksum && line.end == filled && finished;
    if (isCutOff && sentence.number == 1 &&
        sentence.payload.starts_with(aisBroadcast::firstCharacter)) {
        add(framing::Frame::Kind::truncated, {.parts = {std::move(part)}}, {});
    } else if (!isCutOff && sentence.count == 1) {
        deliver({.parts = {std::move(part)}});
    } else if (!isCutOff) {
        const std::optional<AisMessage> message = assembly.add(sentence, tags, std::move(part));
        if (const auto lost = assembly.takeLost()) {
            deliver(*lost);
        }
        if (message) {
            deliver(*message);
        }
    }
}

void AisReader::countSentence()
{
    if (const std::optional<AisMessage> late = assembly.advance(++sentences)) {
        deliver(*late);
    }
}

// The input has ended.
void AisReader::conclude()
{
    while (const std::optional<AisMessage> rest = assembly.takeRest()) {
        Finding finding;
        readMessage(*rest, finding);
        add(framing::Frame::Kind::truncated, *rest, std::move(finding));
    }
}

void AisReader::deliver(const AisMessage& message)
{
    Finding finding;
    finding.damage = readMessage(message, finding);
    for (const auto& part : message.parts) {
        bytesUsed += part && finding.damage.empty() ? part->bytes : 0;
    }
    const bool isGood = finding.damage.empty();
    add(isGood ? framing::Frame::Kind::message : framing::Frame::Kind::damaged, message,
        std::move(finding));
}

// What is wrong; empty for a good message.
std::string AisReader::readMessage(const AisMessage& message, Finding& finding)
{
    AisBits bits;
    finding.envelope.received = message.received();
    for (const auto& part : message.parts) {
        finding.envelope.sender = aisBroadcast::senderOf(bits);
        if (!part || !part->problem.empty()) {
            return part ? part->problem : missingText(message, finding.envelope);
        }
        if (!bits.append(part->payload, part->fillBits)) {
            return "its sentence has a character that stands for no bits";
        }
    }
    return aisBroadcast::read(bits, finding.frame, finding.envelope);
}

void AisReader::add(framing::Frame::Kind kind, const AisMessage& message, Finding finding)
{
    finding.frame.kind = kind;
    finding.frame.number = ++frames;
    finding.frame.beginOffset = message.begin();
    finding.frame.endOffset = message.end();
    ready.push_back(std::move(finding));
}
