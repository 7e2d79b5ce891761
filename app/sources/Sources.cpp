#include "sources/Sources.h"

#include "sources/FileSource.h"

#include <chrono>

void Source::stampTime()
{
    receiveTime = std::chrono::duration_cast<std::chrono::microseconds>(
                      std::chrono::system_clock::now().time_since_epoch())
                      .count();
}

void Source::seek(std::uint64_t, std::uint64_t)
{
    problemText = "cannot read a part of " + displayName + ": its bytes come one after another";
}

std::unique_ptr<Source> openSource(const std::string& name, const SourceOptions& options)
{
    return std::make_unique<FileSource>(name, options.follows);
}

bool isLiveInput(const std::string& name)
{
    return comesSlowly(name);
}
