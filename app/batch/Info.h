// What a table holds and how it would be read: the facts behind `tavin info` and the report of `tavin clean`.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "app/table/Series.h"
#include "app/table/Table.h"

namespace app {

// The spacing of x over all rows, in real units (seconds for times).
struct Spacing {
    struct Gap {
        std::int32_t from;  // stored x of the points on either side
        std::int32_t to;
    };
    double step = 0;  // the middle one; 0 with fewer than two different x
    double least = 0;
    double most = 0;
    std::int64_t gaps = 0;  // steps of more than one and a half times the middle one
    std::vector<Gap> widest;
    std::int64_t duplicates = 0;  // rows at the x of another one
};
Spacing FindSpacing(const XAxis& axis);

// x for people and reports: an ISO 8601 time, or the number with its decimals.
std::string RealX(const Table& table, const XAxis& axis, std::int32_t stored);

nlohmann::ordered_json InfoJson(const Table& table, const XAxis& axis);
std::string InfoText(const Table& table, const XAxis& axis);

// Indented; bytes that are no UTF-8 are replaced.
std::string JsonText(const nlohmann::ordered_json& json);
// The parts of both that say how the file was read.
nlohmann::ordered_json TableJson(const Table& table);
nlohmann::ordered_json ExactnessJson(const Exactness& exactness, const AxisScale& scale);
// A note and the option that decides otherwise.
std::string NoteText(const ReadNote& note);
// What people call the form of the times, or the custom form.
std::string TimeFormText(const Table& table);

}  // namespace app
