#include "commands/convert/CopySink.h"

#include "base/Output.h"

CopySink::CopySink(Output& out, const CopyOptions& copyOptions)
    : output(out), options(copyOptions), writer(makeWriter(copyOptions.form))
{
}

void CopySink::message(const Place& place, const Decoded&)
{
    copy(place);
}

void CopySink::unreported(const Place& place)
{
    if (options.copiesUnknown) {
        copy(place);
    }
}

void CopySink::trouble(const Place& place, Trouble trouble, const std::string&)
{
    if ((trouble == Trouble::unknownType && options.copiesUnknown) ||
        (trouble == Trouble::misfit && options.copiesMisfits)) {
        copy(place);
    }
}

void CopySink::pause()
{
    output.flush();
}

bool CopySink::isDone() const
{
    return output.failed() || (options.max != 0 && written >= options.max);
}

void CopySink::copy(const Place& place)
{
    bytes.clear();
    if (writer->append(place.frame.bytes(), bytes)) {
        output.write({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        ++written;
    }
}
