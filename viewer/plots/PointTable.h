// The points of a plot as separated values, none of them left out.
#pragma once

#include "viewer/plots/FieldReading.h"

#include "base/Output.h"
#include "curves/FieldCurves.h"

// Names of the columns of key and value; without a key there is no column for it.
struct PointTable {
    std::vector<FollowedFields> fields;
    std::string keyName;
    std::string valueName;

    // Writes what is read. What went wrong, for people; empty where nothing did.
    std::string write(const FieldReading& reading, const FieldReading::Stop& isAskedToStop,
                      std::atomic<double>& done, Output& out) const;
};
