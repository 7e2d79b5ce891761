// Collects points and writes them at the end of everything.
#pragma once

#include "base/Output.h"
#include "commands/position/Positions.h"
#include "session/Sink.h"

class PositionSink : public Sink {
public:
    using Write = std::string (*)(const Positions&);

    // What is given must outlive the sink.
    PositionSink(Output& out, Positions& target, Write writeAll)
        : output(out), positions(target), write(writeAll)
    {
    }

    void beginInput(const std::string& name) override { positions.beginInput(name); }
    void take(const Found& found) override;
    void finish() override { output << write(positions); }
    bool writesAlong() const override { return false; }

private:
    Output& output;
    Positions& positions;
    Write write;
};

// A table for people; nothing where there is no point.
std::string positionTable(const Positions& positions);
// One object.
std::string positionJson(const Positions& positions);
