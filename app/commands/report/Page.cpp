#include "commands/report/Page.h"

namespace {

constexpr std::size_t mostRows = 1000;

std::string cellText(const Cell& cell, const Table::Column& column)
{
    std::string attributes = column.isNumber  ? "class=\"number\""
                             : column.isProse ? "class=\"prose\""
                                              : "";
    if (cell.order) {
        attributes += " data-order=\"" + std::to_string(*cell.order) + "\"";
    }
    return element("td", cell.text, attributes);
}

}    // namespace

std::string element(const char* tag, std::string_view text, std::string_view attributes)
{
    return "<" + std::string(tag) + (attributes.empty() ? "" : " ") + std::string(attributes) +
           ">" + escapedMarkup(text) + "</" + tag + ">\n";
}

std::string htmlOf(const Table& table)
{
    if (table.rows.empty()) {
        return "";
    }
    std::string html = "<div class=\"scroll\"><table class=\"sortable\" data-name=\"" + table.name +
                       "\">" + element("caption", table.caption) + "<thead><tr>";
    for (const Table::Column& column : table.columns) {
        html += std::string("<th scope=\"col\"") + (column.isNumber ? " class=\"number\"" : "") +
                "><button type=\"button\">" + escapedMarkup(column.title) + "</button></th>\n";
    }
    html += "</tr></thead><tbody>\n";
    for (std::size_t i = 0; i < std::min(table.rows.size(), mostRows); ++i) {
        html += "<tr>";
        for (std::size_t column = 0; column < table.rows[i].size(); ++column) {
            html += cellText(table.rows[i][column], table.columns[column]);
        }
        html += "</tr>\n";
    }
    html += "</tbody></table></div>\n";
    return table.rows.size() <= mostRows
               ? html
               : html + element("p", "and " + std::to_string(table.rows.size() - mostRows) +
                                         " further rows, which are left out here");
}

std::string section(const std::string& name, const std::string& title, const std::string& content)
{
    return content.empty() ? ""
                           : "<section id=\"" + name + "\">\n" + element("h3", title) + content +
                                 "</section>\n";
}

std::string picture(const SvgCanvas::Picture& what, const std::function<void(SvgCanvas&)>& draw)
{
    SvgCanvas canvas(what);
    draw(canvas);
    return "<div class=\"figure\">" + canvas.take() + "</div>\n";
}
