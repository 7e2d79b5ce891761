// A file that takes its place among the others when it is complete.
#pragma once

#include <string>

#include <sys/types.h>

// Until then it has a name of its own in the same directory, and what stands in its place stays.
class NewFile {
public:
    NewFile() = default;
    ~NewFile() { discard(); }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    // Creates the file. A descriptor for writing, which the caller closes, or -1 with errno.
    [[nodiscard]] int create(const std::string& wanted, mode_t mode);

    // False, with errno, when the file cannot take its place; it is gone then.
    [[nodiscard]] bool takePlace();
    void discard();

    bool exists() const { return !name.empty(); }
    // Where it is until it takes its place.
    const std::string& path() const { return name; }

private:
    void forget();

    std::string name;     // until it takes its place
    std::string place;    // where links lead from the name that was given
};
