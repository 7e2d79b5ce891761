// Where results go: a file or standard output.
#pragma once

#include "base/NewFile.h"

#include <string>
#include <string_view>

#include <sys/stat.h>

// Buffered. After the first failed write nothing more is written, and failed() says so.
//
// A file takes the place of an older one when it is closed; until then that is what it was, and if
// it is never closed or could not be written, nothing remains of it. Devices and pipes are written
// directly.
class Output {
public:
    // Standard output.
    Output();
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    // Writes to a file instead. False when that is not possible.
    [[nodiscard]] bool open(const std::string& path);

    // From now on the file is open only while it is written to. Not for standard output.
    void rest();

    void write(std::string_view text);
    Output& operator<<(std::string_view text)
    {
        write(text);
        return *this;
    }

    // Passes on what was written so far.
    void flush();

    // Writes out and closes. False when anything could not be written.
    [[nodiscard]] bool close();

    // Gives up a file that would take its place when it is closed. False when the output is none:
    // what was written cannot be taken back then.
    bool discard();

    // As it was given, or words for standard output.
    const std::string& fileName() const { return name; }
    bool failed() const { return error != 0; }
    // The reader went away: no error, but there is no point in going on.
    bool readerIsGone() const;
    // It could not be opened before the program was asked to end.
    bool wasInterrupted() const;
    // What failed, for people.
    std::string problem() const;

    // Whether a person reads along on a terminal and has not asked for plain text by NO_COLOR.
    bool wantsColour() const;
    // Of the terminal on which a person reads along; 0 where it is none.
    std::size_t columns() const;

private:
    void replace(const struct stat& old);
    void openAgain();
    void closeDescriptor();
    void check(bool succeeded);

    int descriptor;
    std::string name = "standard output";
    std::string buffer;
    NewFile newFile;
    bool isTerminal;
    bool rests = false;
    int error = 0;
};
