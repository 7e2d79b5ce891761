// What a command does with what is found.
#pragma once

#include "base/Output.h"
#include "base/Text.h"
#include "forms/PacketReader.h"
#include "session/Found.h"

#include <string>

class Sink {
public:
    virtual ~Sink() = default;

    // Whether what was found counts for --max, and as chosen: what the sink shows. It is told
    // nowhere else then.
    virtual bool counts(const Found& found) const { return found.hasRecord(); }

    // What was found, in its order. Messages have passed the filter.
    virtual void take(const Found& found) = 0;

    // Before the first message of an input.
    virtual void beginInput(const std::string&) {}
    // After the last message of an input.
    virtual void endOfInput(const std::string&, const ReaderCounters&) {}
    // After everything, whatever ended it.
    virtual void finish() {}
    // Between two reads of an input whose bytes arrive slowly.
    virtual void pause() {}
    // Now and then while such an input is waited for.
    virtual void idle() {}

    // Whether no more of this input is wanted.
    virtual bool hasEnough() const { return false; }
    // Whether there is no point in going on.
    virtual bool isDone() const { return false; }
    // Whether results are written while inputs are read, so that progress must not be shown on the
    // same terminal.
    virtual bool writesAlong() const { return true; }
};

// A sink that prints messages one by one to an output.
class PrintingSink : public Sink {
public:
    explicit PrintingSink(Output& out) : output(out) {}

    void take(const Found& found) final
    {
        if (found.hasRecord()) {
            print(found, text);
            if (text.size() >= bytesAtOnce) {
                writeOut();
            }
        }
    }
    void finish() override { writeOut(); }
    void pause() override
    {
        writeOut();
        output.flush();
    }
    bool isDone() const override { return output.failed(); }

protected:
    // A message of a kind that was announced, or of the unknown kind.
    virtual void print(const Found& message, Text& target) = 0;

    Output& output;
    Text text;    // what is not yet written

private:
    static constexpr std::size_t bytesAtOnce = std::size_t{1} << 16;

    void writeOut()
    {
        output.write(text.view());
        text.clear();
    }
};
