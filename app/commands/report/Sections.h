// The parts of a report's chapter, as HTML. Each is empty where there is nothing to tell.
#pragma once

#include "commands/report/InputReport.h"

#include <string>

std::string verdictSection(const InputReport& input, std::optional<double> age);
std::string trafficSection(const InputReport& input, const std::string& name);
std::string rateSection(const InputReport& input, const std::string& name);
std::string stationsSection(const InputReport& input, const std::string& name);
std::string satellitesSection(const InputReport& input, const std::string& name);
std::string positionSection(const InputReport& input, const std::string& name);
std::string textsSection(const InputReport& input, const std::string& name);
std::string damageSection(const InputReport& input, const std::string& name);
std::string countsSection(const InputReport& input, const std::string& name);

// Stations whose pictures are shown: those with the most messages, in their order.
std::vector<StationId> shownStations(const InputReport& input);
// Said where there are others; empty where all are shown.
std::string notShownText(const InputReport& input);
