// The messages of one kind as rows of comma-separated values.
#pragma once

#include "format/CodedTexts.h"
#include "format/FieldChoice.h"
#include "session/Session.h"

#include <string>
#include <vector>

struct CsvOptions {
    bool withTexts = false;    // beside each coded field a column with what its values mean
    bool withHex = false;      // the packed message in the last column
    bool withInput = false;    // the input's name in the first column
    std::vector<std::string> fields{};    // names in column order; empty for all
    std::string rows{};    // name of the sub-message field whose elements are rows; empty for none
};

class CsvTable {
public:
    // Throws FieldChoiceError when `rows` is no sub-message field of the kind, or when fields of
    // sub-messages are chosen that are not rows.
    CsvTable(const KindModel& tableKind, const CsvOptions& csvOptions);

    // With its line end.
    std::string header() const;

    // Appends the rows of a message: one, or one for each element.
    void appendRows(std::string& text, const Place& place, const Decoded& decoded);

private:
    struct Column {
        const FieldModel* field;
        bool ofElement;    // a field of the elements that are rows
        CodedTexts texts;
    };

    void addColumn(const FieldModel& field, bool ofElement);
    void addAll(const KindModel& kind, bool ofElement);
    void chooseColumns(const std::vector<std::string>& names);
    void appendRow(std::string& text, const Place& place, const Decoded& decoded,
                   const Message* element);
    void appendCells(std::string& text, Column& column, const Message& message);
    void appendField(std::string& text, const FieldModel& field, const Message& message);
    void appendNumbers(std::string& text, const FieldModel& field, const Message& message);

    const KindModel& kind;
    const CsvOptions& options;
    const FieldModel* rowField = nullptr;
    std::vector<Column> columns;
    std::string characters;
    std::string cell;
};
