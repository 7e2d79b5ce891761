// Files for programs that are measured.
#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace bench {

// Quoted for the shell.
inline std::string quotedPath(const std::filesystem::path& path)
{
    std::string quoted(1, '\'');
    return quoted.append(path).append(quoted, 0, 1);
}

// A file of its own, gone at the end.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& name)
        : path_(std::filesystem::temp_directory_path() /
                ("rtcm2-bench-" + std::to_string(std::random_device()()) + "-" + name))
    {
    }
    ~TemporaryFile() { std::filesystem::remove(path_); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

}    // namespace bench
