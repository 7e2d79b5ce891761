// The full content of every message as a tree.
#pragma once

#include "session/Sink.h"

#include <string>

class ShowView : public PrintingSink {
public:
    // With `all` also fields that mean nothing with the system of their record.
    ShowView(Output& out, bool withColour, bool all = false)
        : PrintingSink(out), colour(withColour), showsAll(all)
    {
    }

private:
    void print(const Found& found, Text& target) override;
    void printHead(const Found& found, Text& target) const;
    static void printEnvelope(const Envelope& envelope, Text& target);
    void printFields(const KindModel& kind, const void* record, const std::string& indent,
                     Text& target) const;
    void printField(const KindModel& kind, const FieldModel& field, const void* record,
                    Text& target) const;
    void printValue(const FieldModel& field, const void* record, Text& target) const;
    void printQuantity(const FieldModel& quantity, const void* record, Text& target) const;
    void printBytes(const FieldModel& field, const void* record, const std::string& indent,
                    Text& target) const;
    void printElements(const FieldModel& field, const void* record, const std::string& indent,
                       Text& target) const;
    void paint(const char* code, std::string_view shown, Text& target) const;

    bool colour;
    bool showsAll;
};
