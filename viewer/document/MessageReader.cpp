#include "viewer/document/MessageReader.h"

#include "framing/Header.h"
#include "session/Session.h"
#include "sources/Sources.h"
#include "viewer/document/AirWords.h"
#include "viewer/document/BrokenMessage.h"

#include <algorithm>

namespace {

class ReadingSink : public Sink {
public:
    explicit ReadingSink(std::function<void(const Found&)> taker) : taken(std::move(taker)) {}
    void take(const Found& found) override { taken(found); }

private:
    std::function<void(const Found&)> taken;
};

// A copy that holds its record itself.
void keepRecord(MessageDetail& detail, const Found& found)
{
    detail.kind = found.kind;
    detail.table = std::make_unique<TableRecord>();
    const std::span<const std::uint8_t> content =
        found.kind->isUnknown ? found.bytes.first(framing::headerBytes) : found.bytes;
    detail.table->decode(*found.kind->row, content);
    detail.record = detail.table->get();
    // A message that came short says more words than there are.
    const FieldModel* const words = found.kind->field(RTCM2_MEANS_WORDS);
    if (found.isShort && words != nullptr) {
        RTCM2_write_integer(detail.table->get(), words->row, 0,
                            RTCM2_reader_integer(&words->reader, found.record, 0));
    }
}

void keep(MessageDetail& detail, const Found& found, const FormatModel& model)
{
    detail.what = found.what;
    detail.packed.assign(found.bytes.begin(), found.bytes.end());
    detail.bits = found.hasRecord() ? found.bits : 0;
    detail.envelope = *found.envelope;
    detail.text =
        found.text.empty() && !found.isShort ? std::string() : Troubles::reasonOf(model, found);
    detail.isShort = found.isShort;
    if (found.hasRecord()) {
        keepRecord(detail, found);
    } else {
        decodeBroken(detail, model);
    }
}

}    // namespace

MessageReader::MessageReader(const FormatModel& model, Input readAgain, const MessageIndex& read)
    : formatModel(model), input(std::move(readAgain)), index(read), all(model, {})
{
    input.follows = false;
}

// The form is looked for once.
const FormSearch* MessageReader::search()
{
    if (formSearch == nullptr && input.form == InputForm::automatic) {
        formSearch = std::make_unique<FormSearch>();
        searchForm(*openSource(input.name), *formSearch);
    }
    return formSearch.get();
}

void MessageReader::read(std::size_t from, std::size_t until, const Take& take, const Stop& stop)
{
    problemText.clear();
    ByteRange range{.begin = UINT64_MAX, .end = 0, .firstNumber = from + 1};
    for (std::size_t place = from; place < until; ++place) {
        range.begin = std::min<std::uint64_t>(range.begin, index[place].begin);
        range.end = std::max<std::uint64_t>(range.end, index[place].begin + 1);
    }
    std::size_t expected = from;
    ReadingSink sink([&](const Found& found) {
        const std::size_t place = placeOf(found, expected, until);
        if (place < until) {
            expected = place + 1;
            take(place, found);
        }
    });
    Session session(formatModel, decoding.driver, all,
                    {.form = input.form, .range = range, .search = search()});
    SessionOptions options{.onError = OnError::skip, .mode = input.mode};
    options.tell = [this](const std::string& text) { problemText = text; };
    options.isAskedToEnd = stop;
    session.run({input.name}, options, sink);
}

// Where the index has what was found; `until` where it has not.
std::size_t MessageReader::placeOf(const Found& found, std::size_t from, std::size_t until) const
{
    for (std::size_t place = from; place < until; ++place) {
        const IndexEntry& entry = index[place];
        if (entry.begin == found.begin && entry.kindOfFind() == found.what) {
            return place;
        }
    }
    return until;
}

// Those that follow each other at once. Messages in sentences that are mixed with others' stand in
// the index in another order than in the input.
void MessageReader::read(const std::vector<std::size_t>& places, const Take& take, const Stop& stop)
{
    for (std::size_t i = 0; i < places.size() && !stop();) {
        const std::size_t first = places[i];
        std::size_t behind = first + 1;
        for (++i; i < places.size() && places[i] == behind && index[behind].mmsi == 0; ++i) {
            ++behind;
        }
        read(first, behind, take, stop);
    }
}

MessageDetail MessageReader::detail(std::size_t place)
{
    const IndexEntry& entry = index[place];
    MessageDetail detail;
    bool isThere = false;
    const auto take = [&](std::size_t, const Found& found) {
        keep(detail, found, formatModel);
        isThere = true;
    };
    read(place, place + 1, take, {});
    detail.number = place + 1;
    detail.begin = entry.begin;
    detail.end = entry.end();
    if (isThere) {
        detail.words = wordsOf(entry);
    } else {
        detail.what = Found::What::damaged;
        detail.text = problemText.empty() ? "it is not in " + input.name +
                                                " any more, which has changed: open it again"
                                          : problemText;
    }
    return detail;
}

std::vector<AirWord> MessageReader::wordsOf(const IndexEntry& entry)
{
    const std::unique_ptr<Source> source = openSource(input.name);
    const std::unique_ptr<PacketReader> reader =
        readerFor(*source, {.form = input.form,
                            .range = ByteRange{.begin = entry.begin, .end = entry.begin + 1},
                            .search = search()});
    const framing::Frame* frame = reader->next();
    while (frame == nullptr && !reader->isComplete()) {
        const std::span<const std::uint8_t> bytes = source->read();
        if (bytes.empty()) {
            reader->finish();
            frame = reader->next();
            break;
        }
        reader->push(bytes);
        frame = reader->next();
    }
    std::vector<AirWord> words;
    for (const framing::WordFacts& word :
         frame != nullptr ? reader->words() : std::vector<framing::WordFacts>()) {
        words.push_back(airWordOf(word));
    }
    return words;
}
