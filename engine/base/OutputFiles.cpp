#include "base/OutputFiles.h"

#include <filesystem>

Output& OutputFiles::file(const std::string& name)
{
    if (++kept == mostKept) {
        flush();
    }
    const auto [entry, isNew] = files.try_emplace(name);
    Output& file = entry->second;
    if (isNew) {
        std::error_code ignored;    // opening the file fails then, and says why
        std::filesystem::create_directories(directory, ignored);
        if (file.open((std::filesystem::path(directory) / name).string())) {
            file.rest();
        }
    }
    if (last != nullptr) {
        note(*last);
    }
    last = &file;
    return file;
}

void OutputFiles::note(const Output& file)
{
    if (file.failed() && problemText.empty()) {
        problemText = file.problem();
    }
}

void OutputFiles::flush()
{
    for (auto& [name, file] : files) {
        file.flush();
        note(file);
    }
    kept = 0;
}

bool OutputFiles::close()
{
    flush();
    for (auto& [name, file] : files) {
        if (!failed() && !file.close()) {
            note(file);
        }
    }
    return !failed();
}
