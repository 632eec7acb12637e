// Names and result texts of the edits, registered while the library is loaded. A host that registers a text
// of its own for one of these numbers keeps its conversions and their order.
#include "platform/core/StringTable.h"

namespace {

constexpr StringResource kStrings[] = {
    {40001, "Points translated (%.3f %s, %.3f %s) "},
    {40002, "Points scaled with factor %.3f about origin %.3f %s"},
    {40003, "Wave length: %.3lf %s\r\nWindow: %.3lf %s"},
    {40004, "Deleted %d points. (%.2lf %%)."},
    {40005, "Deleted marked points"},
    {40006, "Wave length %.3f %s"},
    {40007, "Interpolated %d points"},
    {40008, "Filter length: %d samples\r\nReject distance: %.3lf"},
    {40009, "%d point(s) affected"},
    {40100, "Smooth points"},
    {40101, "Interpolate points"},
    {40102, "Translate points"},
    {40103, "Scale points"},
    {40104, "Spike detection"},
    {40105, "Delete marked spikes"},
    {40106, "Delete points"},
    {40107, "Median spike detection"},
    {40108, "Reject points"},
    {40109, "Clear all rejections"},
    {40110, "Reject points"},
    {40111, "Clear all rejections"},
};

const StringTable strings(kStrings);

}  // namespace
