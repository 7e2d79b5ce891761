// What a check says of the input, and the plain numbers.
#include "base/PlainText.h"
#include "check/CheckNumbers.h"
#include "commands/check/CheckText.h"
#include "commands/report/ReportNames.h"
#include "commands/report/Sections.h"

#include <algorithm>

namespace {

constexpr std::size_t shownFindings = 12;

const char* classOf(Severity severity)
{
    constexpr const char* classes[] = {"good", "warn", "bad"};
    return classes[static_cast<std::size_t>(severity)];
}

std::string findingItem(const Finding& finding)
{
    return element("li", lineOf(finding),
                   std::string("class=\"") + classOf(finding.severity) + '"');
}

std::string findingsText(const InputCheck& check)
{
    // What is critical comes first, so that it is among what everyone sees.
    std::vector<Finding> kept = check.findings.kept();
    std::stable_partition(kept.begin(), kept.end(), [](const Finding& finding) {
        return finding.severity == Severity::critical;
    });
    std::string first;
    std::string others;
    for (std::size_t i = 0; i < kept.size(); ++i) {
        (i < shownFindings ? first : others) += findingItem(kept[i]);
    }
    std::string html = first.empty() ? "" : "<ul class=\"findings\">" + first + "</ul>\n";
    if (!others.empty()) {
        html += "<details>" +
                element("summary", countText(kept.size() - shownFindings, "further problem")) +
                "<ul class=\"findings\">" + others + "</ul></details>\n";
    }
    return check.findings.notKept() == 0
               ? html
               : html + element("p", "and " + countText(check.findings.notKept(), "problem") +
                                         " more, which nobody kept");
}

std::string figure(const std::string& words, const std::string& key, const std::string& value)
{
    return "<div>" + element("dt", words) + element("dd", value, "data-name=\"" + key + "\"") +
           "</div>";
}

std::string figuresText(const InputReport& input)
{
    const InputCheck& check = input.check;
    struct {
        const char* words;
        const char* key;
        std::uint64_t number;
    } const numbers[] = {{"messages", "messages", check.messages},
                         {"stations", "stations", check.stations.size()},
                         {"lost", "lost", check.losses.lost},
                         {"damaged", "damaged", check.damaged},
                         {"content does not fit", "misfit", check.misfit},
                         {"out of place", "misplaced", check.misplaced},
                         {"repeated", "repeated", check.repeated},
                         {"of unknown type", "unknown_type", check.unknown},
                         {"shorter than they say", "short", check.shortened},
                         {"cut off at the end", "truncated", check.truncated}};
    std::string html =
        "<dl class=\"figures\">" +
        figure(check.seconds() < 3600 ? "from first to last, min:s" : "from first to last, h:min:s",
               "seconds", minutesText(check.seconds()));
    for (const auto& [words, key, number] : numbers) {
        const bool isAlways = key == std::string("messages") || key == std::string("stations") ||
                              key == std::string("lost") || key == std::string("damaged");
        const bool isLeast = key == std::string("lost") && number > 0 && !check.losses.isExact;
        html += number > 0 || isAlways
                    ? figure(isLeast ? "lost at least" : words, key, std::to_string(number))
                    : "";
    }
    return html + "</dl>\n";
}

}    // namespace

std::string verdictSection(const InputReport& input, std::optional<double> age)
{
    const Severity worst = input.check.findings.worst();
    const std::string verdict = verdictText(worst, input.check.messages);
    const std::string line = verdictLine(input.check);
    std::string html = std::string("<div class=\"verdict ") +
                       (input.check.messages == 0 ? "unknown" : classOf(worst)) + "\">" +
                       element("strong", verdict, "data-name=\"verdict\"") +
                       element("span", line.substr(verdict.size() + 2)) + "</div>\n";
    if (age) {
        html +=
            element("p", "The last message came " + withDecimals(*age, 0) + " s before the end");
    }
    return html + findingsText(input.check) + figuresText(input);
}
