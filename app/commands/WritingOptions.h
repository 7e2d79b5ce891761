// The options of the commands that write messages: in which form, and who is said to send them.
#pragma once

#include "commands/SenderDefaults.h"
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

    InputForm to() const { return *inputFormOf(form); }
    bool needsSender() const { return to() == InputForm::aivdm; }

    // What --mmsi, as it was given, and --position say. Throws UsageError.
    SenderDefaults defaults(const std::vector<std::string>& mmsi) const;

private:
    std::string position;
};

// "stream (...), packed (...), ...": the forms that are read, or those that are written.
std::string aboutForms(bool forReading);
// Their names.
std::vector<std::string> namesOfForms(bool forReading);
