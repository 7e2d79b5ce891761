// The full content of every message as a tree.
#pragma once

#include "base/Output.h"
#include "session/Session.h"

#include <string>

class ShowView : public Sink {
public:
    ShowView(Output& out, bool withColour);

    void message(const Place& place, const Decoded& decoded) override;
    void pause() override { output.flush(); }
    bool isDone() const override { return output.failed(); }

private:
    void writeFields(const KindModel& kind, const Message& message, const std::string& indent);
    void writeField(const FieldModel& field, const Message& message, const std::string& indent,
                    std::size_t width);
    void writeElements(const FieldModel& field, const Message& message, const std::string& indent);
    std::string painted(const char* colour, const std::string& text) const;

    Output& output;
    bool colour;
};
