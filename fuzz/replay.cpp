// Runs a fuzz target on files, or on all files of directories, where there is no fuzzer to do so.
#include "fuzz.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

unsigned replayed = 0;

void replay(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> content{std::istreambuf_iterator<char>(file), {}};
    const fuzz::Bytes bytes(content.begin(), content.end());
    std::fprintf(stderr, "%s\n", path.c_str());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    ++replayed;
}

}    // namespace

int main(int argc, char** argv)
{
    for (const std::filesystem::path path :
         std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
        if (!std::filesystem::is_directory(path)) {
            replay(path);
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            replay(entry.path());
        }
    }
    std::fprintf(stderr, "%u inputs replayed\n", replayed);
    return replayed > 0 ? 0 : 1;
}
