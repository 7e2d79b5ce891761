#include "export/CopySink.h"

CopySink::CopySink(Output& out, const CopyOptions& copyOptions)
    : output(out), options(copyOptions), writer(makeWriter(copyOptions.form))
{
}

bool CopySink::counts(const Found& found) const
{
    return isWanted(found) && hasSender(found);
}

// Where the form needs one.
bool CopySink::hasSender(const Found& found) const
{
    return options.form != InputForm::aivdm || options.sender.mmsi || found.envelope->sender;
}

bool CopySink::isWanted(const Found& found) const
{
    switch (found.what) {
    case Found::What::message:
        return true;
    case Found::What::unreported:
    case Found::What::unknownType:
        return options.copiesUnknown;
    case Found::What::misfit:
        return options.copiesMisfits;
    case Found::What::damaged:
    case Found::What::truncated:
        break;
    }
    return false;
}

void CopySink::take(const Found& found)
{
    if (!isWanted(found)) {
        return;
    }
    if (!hasSender(found)) {
        *options.withoutSender += 1;
        return;
    }
    Envelope envelope = *found.envelope;
    envelope.sender = options.sender.complete(envelope.sender);
    if (!options.copiesTimes) {
        envelope.received.reset();
    }
    writer->setEnvelope(envelope);
    bytes.clear();
    // What has just been read is whole, so that the form can hold it.
    if (writer->append(found.bytes, bytes)) {
        output.write({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }
}
