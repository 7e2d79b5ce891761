// The options that all commands share that read messages: what to read, which messages to take,
// what to do about trouble, where to write.
#pragma once

#include "base/Output.h"
#include "commands/Host.h"
#include "commands/PartOptions.h"
#include "filter/MessageFilter.h"
#include "session/Session.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <memory>
#include <string>
#include <vector>

struct ReadingOptions {
    std::vector<std::string> inputs{"-"};
    std::string form = "auto";
    unsigned mode = 0;
    PartOptions part;
    bool hasProgress = true;    // to be shown where there is a place for it
    FilterOptions filter;
    SessionOptions session;
    std::string output;       // empty for standard output
    bool endsEach = false;    // an input, so that also one without an end may come before others

    void declare(CLI::App& command);
    // All of them but the one that says where to write.
    void declareReading(CLI::App& command);
    // Those that say what is read.
    void declareInput(CLI::App& command);

    // Whether bytes of an input come in their own time.
    bool isLive() const;

private:
    void declareFilter(CLI::App& command);
};

// Makes a sink that writes to the output. The filter tells which kinds can occur.
using SinkFactory = std::function<std::unique_ptr<Sink>(Output&, const MessageFilter&)>;

// Reads what the options name and hands it to the sink; tells on standard error what ended it.
ExitStatus runSession(Host& host, const ReadingOptions& options, const SinkFactory& makeSink);
