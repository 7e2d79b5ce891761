// Where messages came damaged.
#include "base/Columns.h"
#include "commands/report/Page.h"
#include "commands/report/Sections.h"
#include "pictures/Shares.h"

#include <algorithm>

namespace {

constexpr double damageHeight = 190;

std::vector<double> sharesOf(const DamageCurve& damage)
{
    std::vector<double> shares;
    for (const DamageCurve::Stretch& stretch : damage.stretches()) {
        shares.push_back(stretch.all == 0
                             ? 0
                             : static_cast<double>(stretch.bad) / static_cast<double>(stretch.all));
    }
    return shares;
}

std::string sharesPicture(const Shares& shares)
{
    return picture({.width = pageWidth,
                    .height = damageHeight,
                    .title = shares.title,
                    .description = "A column for each part, with the share of what came damaged"},
                   [&](SvgCanvas& canvas) {
                       drawShares(canvas, {0, 0, pageWidth, damageHeight}, shares);
                   });
}

std::string byTime(const InputReport& input)
{
    const InputCheck& check = input.check;
    const double each = check.secondsOf(input.damageByTime.unitsEach());
    Shares shares{.title = "Damage by time: share of each " + withDecimals(each, 0) + " s",
                  .shares = sharesOf(input.damageByTime)};
    TimeScale times = input.times();
    times.range = {0, each * static_cast<double>(shares.shares.size())};
    shares.axisTitle = times.title();
    for (const Tick& tick : times.ticks(14)) {
        shares.ticks.push_back({times.range.share(tick.value), tick.label});
    }
    return sharesPicture(shares);
}

std::string byByte(const InputReport& input)
{
    const auto each = static_cast<double>(input.damageByByte.unitsEach());
    Shares shares{.title = "Damage by position in the input: share of each " +
                           std::to_string(input.damageByByte.unitsEach()) + " bytes",
                  .shares = sharesOf(input.damageByByte)};
    const Range range{0, each * static_cast<double>(shares.shares.size())};
    const double unit = range.high >= 4e6 ? 1e6 : range.high >= 4e3 ? 1e3 : 1;
    shares.axisTitle = unit == 1     ? "Position, bytes"
                       : unit == 1e3 ? "Position, thousands of bytes"
                                     : "Position, millions of bytes";
    for (const Tick& tick : numberTicks({0, range.high / unit}, 14)) {
        shares.ticks.push_back({range.share(tick.value * unit), tick.label});
    }
    return sharesPicture(shares);
}

}    // namespace

std::string damageSection(const InputReport& input, const std::string& name)
{
    const bool hasDamage = input.check.damaged > 0 || input.check.misfit > 0;
    return hasDamage
               ? section(name, "Damage",
                         element("p",
                                 "Messages that came damaged, and those whose content does not "
                                 "fit their type, as a share of all.",
                                 "class=\"note\"") +
                             byTime(input) + byByte(input))
           : input.check.messages == 0
               ? ""
               : section(name, "Damage", element("p", "Nothing came damaged."));
}
