#include "commands/convert/CopySink.h"

CopySink::CopySink(Output& out, const CopyOptions& copyOptions)
    : output(out), options(copyOptions), writer(makeWriter(copyOptions.form))
{
}

bool CopySink::counts(const Found& found) const
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
    bytes.clear();
    // What has just been read is whole, so that the form can hold it.
    if (counts(found) && writer->append(found.bytes, bytes)) {
        output.write({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }
}
