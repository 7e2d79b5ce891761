#include "viewer/document/RowText.h"

#include "viewer/document/BriefLines.h"

#include "base/Terminal.h"
#include "session/Troubles.h"

RowText::RowText(const FormatModel& model) : formatModel(model), lines(briefLines(model)) {}

void RowText::append(Text& text, const Found& found) const
{
    if (found.hasRecord()) {
        lines[found.kind->number()].appendContent(text, found.record, found.bytes);
    }
    if (!found.hasRecord() || found.isShort) {
        text.append(found.hasRecord() ? "; " : "");
        text.append(printable(Troubles::reasonOf(formatModel, found)));
    }
}
