// The options of the commands that write messages: in which form, and who is said to send them.
#pragma once

#include "commands/ReadingOptions.h"
#include "export/SenderDefaults.h"
#include "forms/InputForm.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

struct WritingOptions {
    std::string form;

    // --to, with this default if it is not empty.
    void declareForm(CLI::App& command, const std::string& defaultForm = {});
    // --position
    void declarePosition(CLI::App& command);
    // --position, and what --mmsi means for a command that writes what it reads.
    void declareSender(CLI::App& command);

    InputForm to() const { return *inputFormOf(form); }
    bool needsSender() const { return to() == InputForm::aivdm; }

    // What --mmsi, as it was given, and --position say. Throws UsageError.
    SenderDefaults defaults(const std::vector<std::string>& mmsi) const;
    // Likewise where messages are written that are read; the options of reading change so that what
    // has no sender is read as well.
    SenderDefaults defaultsFor(ReadingOptions& reading) const;

private:
    std::string position;
};

// What is said of messages that the form needs a sender for and that have none.
std::string withoutSenderText(std::uint64_t messages);
