#include "commands/list/BriefView.h"

#include "base/Terminal.h"

#include <algorithm>

namespace {

constexpr std::size_t numberWidth = 7;
constexpr std::size_t byteWidth = 10;
constexpr std::size_t timeWidth = 9;
constexpr std::size_t clockWidth = 7;    // of its text
constexpr std::size_t stationWidth = 9;
constexpr std::size_t typeWidth = 6;

// To the right of a column.
void appendCell(Text& text, std::string_view cell, std::size_t width)
{
    constexpr std::string_view blanks = "                              ";
    text.append(blanks.substr(0, width - std::min(width, cell.size())));
    text.append(cell);
}

void appendCell(Text& text, std::uint64_t number, std::size_t width)
{
    char digits[numberRoom];
    appendCell(text, {digits, static_cast<std::size_t>(putUnsigned(digits, number) - digits)},
               width);
}

void appendCell(Text& text, const std::optional<std::uint64_t>& number, std::size_t width)
{
    if (number) {
        appendCell(text, *number, width);
    } else {
        appendCell(text, "-", width);
    }
}

void appendTime(Text& text, const std::optional<std::uint64_t>& milliseconds)
{
    constexpr std::string_view blanks = "         ";
    static_assert(blanks.size() == timeWidth);
    if (!milliseconds) {
        return appendCell(text, "-", timeWidth);
    }
    text.append(blanks.substr(0, timeWidth - clockWidth));
    appendClock(text, *milliseconds);
}

bool beginsCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

// Where in a text so many characters of it end; its size where it has no more.
std::size_t endOfCharacters(std::string_view utf8, std::size_t count)
{
    std::size_t end = 0;
    while (end < utf8.size() && (count > 0 || !beginsCharacter(utf8[end]))) {
        count -= beginsCharacter(utf8[end++]) ? 1U : 0U;
    }
    return end;
}

}    // namespace

BriefView::BriefView(Output& out, const BriefOptions& briefOptions,
                     const std::vector<const KindModel*>& kinds)
    : PrintingSink(out), options(briefOptions), envelopes(options.times),
      plans(static_cast<std::size_t>(RTCM2_last_kind()) + 1)
{
    for (const KindModel* kind : kinds) {
        plans[kind->number()] = BriefLine(*kind, options.all);
    }
}

void BriefView::appendHeading(Text& target) const
{
    target.append(inInputColumn("Input"));
    appendCell(target, "No.", numberWidth);
    if (options.position) {
        appendCell(target, "Byte", byteWidth);
    }
    envelopes.eachName([&](const char*, const char* label, std::size_t width) {
        appendCell(target, label, width + 2);
    });
    appendCell(target, "Time", timeWidth);
    appendCell(target, "Station", stationWidth);
    appendCell(target, "Type", typeWidth);
    target.append("  Content\n");
}

std::string BriefView::inInputColumn(const std::string& name) const
{
    std::string cell = options.inputWidth != 0 ? printable(name) : std::string();
    cell.resize(std::max(cell.size(), options.inputWidth), ' ');
    return cell;
}

void BriefView::beginInput(const std::string& name)
{
    input = inInputColumn(name);
}

void BriefView::print(const Found& found, Text& target)
{
    if (envelopes.grow(*found.envelope) || !hasHeading) {
        hasHeading = true;
        appendHeading(target);
    }
    const std::size_t begin = target.size();
    const BriefLine& plan = plans[found.kind->number()];
    target.append(input);
    appendCell(target, found.number, numberWidth);
    if (options.position) {
        appendCell(target, found.begin, byteWidth);
    }
    envelopes.eachCell(*found.envelope, [&](const std::string& cell, std::size_t width) {
        appendCell(target, cell.empty() ? "-" : cell, width + 2);
    });
    appendTime(target, plan.time(found.record));
    appendCell(target, plan.station(found.record), stationWidth);
    appendCell(target, plan.type(found.record), typeWidth);
    target.append("  ");
    const std::size_t healthBegin = target.size();
    const std::size_t healthEnd =
        healthBegin + plan.appendContent(target, found.record, found.bytes);
    if (options.columns != 0 || options.colour) {
        finishLine(target, begin, healthBegin, healthEnd);
    }
    target.append('\n');
}

// What a terminal shows: no more than a line of it, and a health that people should see.
void BriefView::finishLine(Text& target, std::size_t begin, std::size_t healthBegin,
                           std::size_t healthEnd) const
{
    constexpr std::string_view dots = "...";
    std::string line(target.view().substr(begin));
    if (options.columns != 0 && endOfCharacters(line, options.columns) < line.size()) {
        line.resize(
            endOfCharacters(line, options.columns - std::min(options.columns, dots.size())));
        line += dots;
    }
    const std::size_t first = healthBegin - begin;
    const std::size_t last = std::min(healthEnd - begin, line.size());
    if (options.colour && first < last) {
        line.insert(last, "\033[0m");
        line.insert(first, "\033[33m");
    }
    target.cut(begin);
    target.append(line);
}
