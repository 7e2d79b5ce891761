// Pieces of a page: text, tables, pictures.
#pragma once

#include "pictures/SvgCanvas.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

// What stands in a cell, and the number by which rows are sorted where that is another one.
struct Cell {
    std::string text;
    std::optional<double> order{};
};

struct Table {
    std::string name;       // for programs: an attribute of the table
    std::string caption;    // for people
    // A column of numbers stands at the right; only prose takes more than one line.
    struct Column {
        std::string title;
        bool isNumber = false;
        bool isProse = false;
    };
    std::vector<Column> columns{};
    std::vector<std::vector<Cell>> rows{};
};

// Nothing where it has no rows. Rows beyond the first ones are left out, which is said.
std::string htmlOf(const Table& table);

// An element with a text that is escaped; `attributes` is markup.
std::string element(const char* tag, std::string_view text, std::string_view attributes = {});

// Sections have names of their own to be found by, in small letters.
std::string section(const std::string& name, const std::string& title, const std::string& content);

// A picture of this size with everything that is drawn onto it.
std::string picture(const SvgCanvas::Picture& what, const std::function<void(SvgCanvas&)>& draw);

// Wide enough for a page.
inline constexpr double pageWidth = 1040;
