#include "commands/describe/DescribeView.h"

#include "base/PlainText.h"

#include <algorithm>
#include <sstream>

namespace describe {

namespace {

constexpr std::size_t lineWidth = 100;

using Row = std::vector<std::string>;

// Aligned columns two blanks apart; numbers in the first column stand to the right. Columns without
// any content are left out.
std::string table(const Row& heads, const std::vector<Row>& rows)
{
    std::vector<std::size_t> widths(heads.size(), 0);
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < heads.size(); ++i) {
            widths[i] = std::max({widths[i], row[i].size(), row[i].empty() ? 0 : heads[i].size()});
        }
    }
    const auto line = [&](const Row& row) {
        std::string text = "  " + std::string(widths[0] - row[0].size(), ' ') + row[0];
        for (std::size_t i = 1; i < row.size(); ++i) {
            if (widths[i] != 0) {
                text += "  " + row[i] + std::string(widths[i] - row[i].size(), ' ');
            }
        }
        return text.substr(0, text.find_last_not_of(' ') + 1) + "\n";
    };
    std::string result = line(heads);
    for (const Row& row : rows) {
        result += line(row);
    }
    return result;
}

// Broken at blanks; every line after the first is indented further.
std::string paragraph(const std::string& text, std::size_t indent = 2)
{
    std::string result;
    std::string line(indent - 1, ' ');
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (line.size() + 1 + word.size() > lineWidth) {
            result += line + "\n";
            line.assign(indent + 1, ' ');
        }
        line += " " + word;
    }
    return result + line + "\n";
}

std::string fieldTable(const KindModel& kind)
{
    std::vector<Row> rows;
    for (const FieldModel& field : kind.fields) {
        const std::string flags = flagsText(field);
        const std::string meaning = meaningName(field);
        rows.push_back({std::to_string(field.index), field.name, field.identifier, typeText(field),
                        field.unit,
                        flags + (flags.empty() || meaning.empty() ? "" : ", ") + meaning});
    }
    return table({"No.", "Field", "Identifier", "Type", "Unit", "Flags, meaning"}, rows);
}

// What a line of the table has no room for.
std::string remarks(const KindModel& kind, const FieldModel& field)
{
    std::string result;
    std::size_t width = 0;
    for (const RTCM2_text_s& coded : codedValues(field)) {
        width = std::max(width, valueText(field, coded.value).size());
    }
    for (const RTCM2_text_s& coded : codedValues(field)) {
        const std::string value = valueText(field, coded.value);
        result +=
            "    " + std::string(width - value.size(), ' ') + value + "  " + coded.text + "\n";
    }
    if (field.row->has_do_not_use != 0) {
        result += "    not to be used when " + valueText(field, field.row->do_not_use) + "\n";
    }
    const auto parts = partNames(kind, field);
    if (!parts.empty()) {
        result += "    parts of it are shown as " + joined(parts) + "\n";
    }
    for (const std::string& text : quantityTexts(kind, field)) {
        result += paragraph(text, 4);
    }
    return result.empty() ? result : "\n  " + field.name + "\n" + result;
}

std::string kindText(const FormatModel& format, const KindModel& kind)
{
    std::string result = kind.name + (kind.text.empty() ? "" : ": " + kind.text) + "\n";
    for (const std::string& statement : statements(format, kind)) {
        result += paragraph(statement);
    }
    result += "\n" + fieldTable(kind);
    for (const FieldModel& field : kind.fields) {
        result += remarks(kind, field);
    }
    return result;
}

}    // namespace

std::string textOverview(const FormatModel& format)
{
    std::vector<Row> messages;
    std::string parts;
    for (const KindModel* kind : allKinds(format)) {
        if (kind->isMain) {
            messages.push_back({kind->typeNumber < 0 ? "" : std::to_string(kind->typeNumber),
                                kind->name, std::to_string(kind->fields.size()), kind->text});
        } else {
            const std::string carriers = carriersText(format, *kind);
            parts += paragraph(kind->name + ", " + countText(kind->fields.size(), "field") +
                               (carriers.empty() ? "" : ", in " + carriers));
        }
    }
    return format.name() + " messages\n\n" +
           table({"Type", "Kind", "Fields", "Description"}, messages) +
           (parts.empty() ? "" : "\nParts of messages\n\n" + parts);
}

std::string text(const FormatModel& format, const Kinds& kinds)
{
    std::string result;
    for (const KindModel* kind : kinds) {
        result += (result.empty() ? "" : "\n\n") + kindText(format, *kind);
    }
    return result;
}

}    // namespace describe
