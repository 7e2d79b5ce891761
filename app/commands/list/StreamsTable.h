// The streams of a caster, for people.
#pragma once

#include "sources/SourceTable.h"

#include <string>
#include <vector>

std::string streamsTable(const std::vector<CasterStream>& streams);
