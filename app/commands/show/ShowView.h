// The full content of every message as a tree.
#pragma once

#include "session/Sink.h"

#include <string>

class ShowView : public PrintingSink {
public:
    ShowView(Output& out, bool withColour) : PrintingSink(out), colour(withColour) {}

private:
    void print(const Found& found, Text& target) override;
    void printHead(const Found& found, Text& target) const;
    void printFields(const KindModel& kind, const void* record, const std::string& indent,
                     Text& target) const;
    void printField(const FieldModel& field, const void* record, Text& target) const;
    void printElements(const FieldModel& field, const void* record, const std::string& indent,
                       Text& target) const;
    void paint(const char* code, std::string_view shown, Text& target) const;

    bool colour;
};
