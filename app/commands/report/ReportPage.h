// The page of a report: its head and what stands around the chapters.
#pragma once

#include "check/Finding.h"
#include "commands/report/InputReport.h"

#include <optional>
#include <string>
#include <vector>

// One input, when it has ended.
struct Chapter {
    std::string input;
    Severity verdict = Severity::good;
    std::uint64_t messages = 0;
    std::string html{};
};

// `age`: seconds since the last message, of an input that is waited for. Without pictures it is
// short.
Chapter chapterOf(const InputReport& input, std::size_t number, std::optional<double> age,
                  bool hasPictures);

std::string pageOf(const std::vector<Chapter>& chapters);
