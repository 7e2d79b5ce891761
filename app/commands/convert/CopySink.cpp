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

void CopySink::take(const Batch& batch, Text&)
{
    bytes.clear();
    for (const Found& found : batch.found) {
        if (counts(found)) {
            // What has just been read is whole.
            static_cast<void>(writer->append(found.packed(), bytes));
        }
    }
    output.write({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}
