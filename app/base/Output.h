// Where results go: a file or standard output.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

// Buffered. After the first failed write nothing more is written, and failed() says so.
class Output {
public:
    // Standard output.
    Output();
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    // Writes to a file instead, which is created or emptied. False when that is not possible.
    [[nodiscard]] bool open(const std::string& path);

    void write(std::string_view text);
    Output& operator<<(std::string_view text)
    {
        write(text);
        return *this;
    }

    // Makes what was written so far visible to the reader.
    void flush();

    // Writes out and closes. False when anything could not be written.
    [[nodiscard]] bool close();

    bool failed() const { return error != 0; }
    // The reader went away: no error, but there is no point in going on.
    bool readerIsGone() const;
    // What failed, for people.
    std::string problem() const;

    // Whether a person reads along on a terminal and has not asked for plain text by NO_COLOR.
    bool wantsColour() const;

private:
    void check(bool succeeded);

    std::FILE* file;
    std::string name = "standard output";
    int error = 0;
};
