// The messages of one kind as rows of separated values.
#pragma once

#include "base/Text.h"
#include "filter/MessageFilter.h"
#include "format/EnvelopeColumns.h"
#include "format/FieldPath.h"
#include "session/Found.h"

#include <string>
#include <vector>

struct CsvOptions {
    char separator = ',';
    char decimal = '.';        // differs from the separator
    bool isShown = false;      // on a terminal, where texts must be printable
    bool withTexts = false;    // beside each coded field a column with what its values mean
    bool withHex = false;      // the packed message in the last column
    bool withInput = false;    // the input's name in the first column
    std::vector<std::string> fields{};    // names in column order; empty for all
    Values values = Values::raw;          // of those that are not named
    std::string rows{};    // name of the sub-message field whose elements are rows; empty for none
    const MessageFilter* filter = nullptr;    // chooses among these elements; null: all are rows
};

class CsvTable {
public:
    // The options must outlive the table. Throws FieldPathError when `rows` is no sub-message field
    // of the kind, or when fields of sub-messages are chosen that are not rows.
    CsvTable(const KindModel& tableKind, const CsvOptions& csvOptions);

    // With its line end.
    std::string header(const EnvelopeColumns& envelopes) const;

    // Appends the rows of a message: one, or one for each element that the filter takes.
    void appendRows(Text& text, const std::string& input, const EnvelopeColumns& envelopes,
                    const Found& found) const;

private:
    struct Column {
        const FieldModel* field;
        bool ofElement;    // a field of the elements that are rows
        // The common ones are a number and a quantity of a number that every record has.
        bool isPlainNumber;
        bool isPlainQuantity;
    };

    void addColumn(const FieldModel& field, bool ofElement);
    void addAll(const KindModel& of, bool ofElement);
    void chooseColumns(const std::vector<std::string>& names);
    void appendBegin(Text& text, const std::string& input, const EnvelopeColumns& envelopes,
                     const Found& found) const;
    void appendRow(Text& text, const Found& found, const void* element) const;
    void appendCell(Text& text, const FieldModel& field, const void* record) const;
    void appendMeanings(Text& text, const FieldModel& field, const void* record) const;
    void appendNumbers(Text& text, const FieldModel& field, const void* record) const;
    char* putQuantityCell(char* out, const FieldModel& field, const void* record) const;
    void appendRealCell(Text& text, double value) const;
    void appendTextCell(Text& text, std::string_view cell) const;

    const KindModel& kind;
    const CsvOptions& options;
    bool withHex;
    const FieldModel* rowField = nullptr;
    std::vector<Column> columns;
};
