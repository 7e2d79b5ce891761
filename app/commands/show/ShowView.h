// The full content of every message as a tree.
#pragma once

#include "base/Output.h"
#include "session/Sink.h"

#include <string>

class ShowView : public Sink {
public:
    ShowView(Output& out, bool withColour) : output(out), colour(withColour) {}

    void print(const Batch& batch, Text& text) const override;
    void take(const Batch&, Text& printed) override { output.write(printed.view()); }
    void pause() override { output.flush(); }
    bool isDone() const override { return output.failed(); }

private:
    void printHead(const Found& found, Text& text) const;
    void printFields(const KindModel& kind, const void* record, const std::string& indent,
                     Text& text) const;
    void printField(const FieldModel& field, const void* record, Text& text) const;
    void printElements(const FieldModel& field, const void* record, const std::string& indent,
                       Text& text) const;
    void paint(const char* code, std::string_view shown, Text& text) const;

    Output& output;
    bool colour;
};
