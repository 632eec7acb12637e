// What the flags of a status word are called, in files, options and reports.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "sources/PointStatus.h"

struct PointFlagName {
    unsigned short flag;
    const char* name;
};

inline constexpr PointFlagName kPointFlagNames[] = {
    {PS_DELETED, "deleted"},   {PS_REJECTED, "rejected"},         {PS_SPIKE, "spike"},  {PS_MOVED, "moved"},
    {PS_SMOOTHED, "smoothed"}, {PS_INTERPOLATED, "interpolated"}, {PS_EDITED, "edited"}};

// The flag of that name, or 0.
constexpr unsigned short PointFlagNamed(std::string_view name) {
    for (const auto& row : kPointFlagNames)
        if (name == row.name) return row.flag;
    return 0;
}
