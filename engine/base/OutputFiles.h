// Any number of files in one directory.
#pragma once

#include "base/Output.h"

#include <map>
#include <string>

// Each is open only while it is written, however many there are. They take their places together,
// when they are closed; if they are not, nothing remains of them.
class OutputFiles {
public:
    // The directory is made with the first file.
    explicit OutputFiles(std::string path) : directory(std::move(path)) {}

    // The file of this name, to write one message to; stays where it is.
    Output& file(const std::string& name);
    // Passes on what was written so far.
    void flush();

    std::size_t count() const { return files.size(); }

    // Whether something could not be written.
    bool failed() const { return !problemText.empty() || (last != nullptr && last->failed()); }
    // False when something could not be written. Then no file takes its place, unless that itself
    // failed.
    [[nodiscard]] bool close();
    // What failed first, for people.
    const std::string& problem() const { return problemText; }

private:
    void note(const Output& file);

    // So that not too much is kept in memory, all is passed on after so many messages.
    static constexpr unsigned mostKept = 1 << 16;

    std::string directory;
    std::map<std::string, Output> files;
    const Output* last = nullptr;
    unsigned kept = 0;    // messages
    std::string problemText;
};
