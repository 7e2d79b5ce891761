#include "commands/describe/DescribeView.h"

#include "base/Names.h"

namespace describe {

namespace {

using Row = std::vector<std::string>;

// Text that stands for itself in a cell.
std::string plain(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        const bool isMark = std::string_view("\\|`*_<>[]").find(c) != std::string_view::npos;
        result += isMark ? std::string{'\\', c} : std::string{c};
    }
    return result;
}

std::string line(const Row& row)
{
    std::string result = "|";
    for (const std::string& cell : row) {
        result += " " + cell + (cell.empty() ? "|" : " |");
    }
    return result + "\n";
}

std::string head(const Row& row)
{
    return line(row) + line(Row(row.size(), "---"));
}

std::string notes(const KindModel& kind, const FieldModel& field)
{
    Row notes;
    for (const RTCM2_text_s& coded : codedValues(field)) {
        notes.push_back(valueText(field, coded.value) + ": " + plain(coded.text));
    }
    if (field.row->has_do_not_use != 0) {
        notes.push_back("not to be used when " + valueText(field, field.row->do_not_use));
    }
    const auto parts = partNames(kind, field);
    if (!parts.empty()) {
        notes.push_back("parts: " + plain(joined(parts)));
    }
    for (const std::string& text : quantityTexts(kind, field)) {
        notes.push_back(plain(text));
    }
    return joined(notes, "<br>");
}

std::string section(const FormatModel& format, const KindModel& kind)
{
    std::string result = "## " + plain(kind.name) + "\n\n";
    if (!kind.text.empty()) {
        result += plain(kind.text) + ".\n\n";
    }
    for (const std::string& statement : statements(format, kind)) {
        result += plain(statement) + ".\n\n";
    }
    result += head({"No.", "Field", "Identifier", "Type", "Unit", "Flags", "Meaning", "Values"});
    for (const FieldModel& field : kind.fields) {
        result += line({std::to_string(field.index), plain(field.name),
                        "`" + field.identifier + "`", plain(typeText(field)), plain(field.unit),
                        flagsText(field), meaningName(field), notes(kind, field)});
    }
    return result;
}

}    // namespace

std::string markdownOverview(const FormatModel& format)
{
    std::string result = "# " + plain(format.name()) + "\n\n" +
                         head({"Type", "Kind", "Identifier", "Fields", "Description"});
    for (const KindModel* kind : allKinds(format)) {
        const std::string carriers = carriersText(format, *kind);
        const std::string about = carriers.empty() ? kind->text : "Part of " + carriers;
        result += line({kind->typeNumber < 0 ? "" : std::to_string(kind->typeNumber),
                        plain(kind->name), "`" + identifierOf(kind->name) + "`",
                        std::to_string(kind->fields.size()), plain(about)});
    }
    return result;
}

std::string markdown(const FormatModel& format, const Kinds& kinds)
{
    std::string result = "# " + plain(format.name()) + "\n";
    for (const KindModel* kind : kinds) {
        result.append("\n").append(section(format, *kind));
    }
    return result;
}

}    // namespace describe
