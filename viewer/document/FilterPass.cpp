#include "viewer/document/FilterPass.h"

#include "plugin/Decoding.h"
#include "session/Session.h"
#include "session/SwitchKinds.h"

namespace {

class SelectionSink : public Sink {
public:
    SelectionSink(Selection& filled, bool withTroubles)
        : places(filled), takesTroubles(withTroubles)
    {
    }
    void take(const Found& found) override
    {
        if (found.hasRecord() || takesTroubles) {
            full = !places.append(static_cast<std::uint32_t>(found.number - 1));
        }
    }
    bool isDone() const override { return full; }

private:
    Selection& places;
    bool takesTroubles;
    bool full = false;
};

}    // namespace

FilterPass::FilterPass(const FormatModel& model, const Input& file, const Options& options)
    : filter(model, {.where = options.where})
{
    pass.begin([this, &model, file, options] { read(model, file, options); });
}

void FilterPass::read(const FormatModel& model, const Input& file, const Options& options)
{
    Decoding decoding;
    switchKinds(*decoding.decoder, model, filter);
    Session session(model, decoding.driver, filter, {.form = file.form});
    SelectionSink sink(places, options.withTroubles);
    SessionOptions reading{
        .onError = OnError::skip, .quiet = true, .mode = file.mode, .follows = options.follows};
    reading.tell = [](const std::string&) {};    // the document has heard of it
    reading.isAskedToEnd = [this] { return pass.isAskedToEnd(); };
    reading.keep = [this](std::span<const std::uint8_t> some) { bytes += some.size(); };
    session.run({file.name}, reading, sink);
}
