#include "commands/report/ReportPage.h"

#include "base/PlainText.h"
#include "commands/check/CheckText.h"
#include "commands/report/Page.h"
#include "commands/report/Sections.h"

// What stands in report.css and report.js.
std::string_view reportStyle();
std::string_view reportScript();

namespace {

using Part = std::string (*)(const InputReport&, const std::string&);

struct NamedPart {
    const char* name;
    const char* title;
    Part write;
    bool isPicture;
};

constexpr NamedPart parts[] = {
    {"messages", "Messages over time", trafficSection, true},
    {"rates", "Rates and gaps", rateSection, false},
    {"stations", "Stations", stationsSection, false},
    {"positions", "Positions", positionSection, false},
    {"satellites", "Satellites", satellitesSection, true},
    {"texts", "Special messages", textsSection, false},
    {"damage", "Damage", damageSection, true},
    {"counts", "Counts", countsSection, false},
};

std::string link(const std::string& target, const std::string& text)
{
    return element("a", text, "href=\"#" + target + "\"");
}

std::string classOfVerdict(Severity severity, std::uint64_t messages)
{
    constexpr const char* classes[] = {"good", "warn", "bad"};
    return messages == 0 ? "unknown" : classes[static_cast<std::size_t>(severity)];
}

std::string formText(const ReaderCounters& counters)
{
    const std::string form = counters.form;
    return form.empty()
               ? ""
               : "Form: " + form + (counters.certainty == Certainty::likely ? ", likely" : "");
}

// Of several inputs: which of them are good.
std::string overview(const std::vector<Chapter>& chapters)
{
    std::string html = "<ol class=\"inputs\">\n";
    for (std::size_t i = 0; i < chapters.size(); ++i) {
        const Chapter& chapter = chapters[i];
        html += "<li class=\"" + classOfVerdict(chapter.verdict, chapter.messages) +
                "\"><a href=\"#input" + std::to_string(i + 1) + "\">" +
                element("strong", verdictText(chapter.verdict, chapter.messages)) +
                element("span", chapter.input + ", " + countText(chapter.messages, "message")) +
                "</a></li>\n";
    }
    return html + "</ol>\n";
}

std::string head(const std::string& title)
{
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
           "style-src 'unsafe-inline'; script-src 'unsafe-inline'\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
           element("title", title) + "<style>\n" + std::string(pictureStyle()) +
           std::string(reportStyle()) + "</style>\n</head>\n<body>\n";
}

}    // namespace

Chapter chapterOf(const InputReport& input, std::size_t number, std::optional<double> age,
                  bool hasPictures)
{
    const std::string name = "input" + std::to_string(number);
    std::string links;
    std::string content;
    for (const NamedPart& part : parts) {
        const std::string html =
            part.isPicture && !hasPictures ? "" : part.write(input, name + "-" + part.name);
        links += html.empty() ? "" : link(name + "-" + part.name, part.title);
        content += html;
    }
    Chapter chapter{.input = input.check.name,
                    .verdict = input.check.findings.worst(),
                    .messages = input.check.messages};
    chapter.html = "<article id=\"" + name + "\">\n" + element("h2", input.check.name) +
                   element("p", formText(input.counters), "class=\"note\"") +
                   verdictSection(input, age) + "<nav>" + links + "</nav>\n" +
                   (hasPictures ? ""
                                : element("p",
                                          "There are so many inputs that this one is without "
                                          "pictures; a report of its own has them.",
                                          "class=\"note\"")) +
                   content + "</article>\n";
    return chapter;
}

std::string pageOf(const std::vector<Chapter>& chapters)
{
    const std::string title =
        "Report on " +
        (chapters.size() == 1 ? chapters.front().input : countText(chapters.size(), "input"));
    std::string html = head(title) + "<header>" + element("h1", title) +
                       element("button", "Light or dark", "type=\"button\" id=\"theme\"") +
                       "</header>\n<main>\n";
    html += chapters.size() == 1 ? "" : overview(chapters);
    for (const Chapter& chapter : chapters) {
        html += chapter.html;
    }
    return html + "</main>\n<script>\n" + std::string(reportScript()) +
           "</script>\n</body>\n</html>\n";
}
