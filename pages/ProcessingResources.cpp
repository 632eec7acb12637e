#include "pages/ProcessingResources.h"

#include "pages/Illustrations.h"
#include "pages/PageResources.h"

namespace {

using enum ControlKind;

constexpr ControlResource kTranslate[] = {
    {Radio, kToValue, "&Absolute value:", 13, 10, 65, 10},
    {Radio, kByOffset, "&Relative offset:", 13, 30, 59, 10},
    {Edit, kAbsoluteValue, "", 89, 7, 42, 12},
    {Edit, kRelativeOffset, "", 89, 27, 42, 12},
    {Picture, kTranslatePicture, "", 143, 7, 85, 39},
};
constexpr ControlResource kScale[] = {
    {Group, 0, "Parameters", 7, 7, 221, 44},      {Text, kScaleLabel, "&Scale", 75, 18, 19, 8},
    {Edit, kScaleFactor, "", 118, 16, 42, 12},    {Text, kOriginLabel, "&Origin", 75, 35, 19, 8},
    {Edit, kScaleOrigin, "", 118, 34, 42, 12},    {Group, 0, "Method", 7, 56, 221, 93},
    {Picture, kScalePicture, "", 75, 74, 85, 39}, {DropList, kScaleMethods, "", 31, 124, 172, 69},
};
constexpr ControlResource kSmooth[] = {
    {Text, kSmoothLabel, "&Wave length", 60, 9, 42, 8},
    {Edit, kSmoothWaveLength, "", 109, 7, 42, 12},
    {Text, kSmoothUnit, "s", 155, 8, 20, 11},
};
constexpr ControlResource kSpikes[] = {
    {Text, kWaveLengthLabel, "Wave length", 7, 9, 42, 8},
    {Edit, kSpikeWaveLength, "", 53, 7, 45, 12},
    {Text, kWaveLengthUnit, "s", 101, 9, 15, 8},
    {Text, 0, "W&indow size", 7, 26, 41, 8},
    {Edit, kWindowSize, "", 53, 24, 45, 12},
    {Text, kWindowUnit, "m", 101, 26, 29, 8},
    {Check, kShowWindow, "&Show window", 168, 26, 60, 10},
};
constexpr ControlResource kMedian[] = {
    {Group, 0, "Parameters", 7, 7, 196, 66},
    {Text, 0, "Filter &length:", 14, 20, 39, 8},
    {Edit, kFilterLength, "", 76, 17, 40, 14},
    {Text, 0, "Reject &distance:", 14, 38, 52, 8},
    {Edit, kRejectDistance, "", 76, 35, 40, 14},
    {Check, kShowMedianWindow, "&Show Window", 13, 56, 101, 10},
    {Group, 0, "Description", 7, 83, 196, 63},
    {Text, 0, "The filter length is the number of samples used in the median filter. ", 13, 96, 181, 21},
    {Text, 0, "The reject distance specifies how far away from the median a value should be to be rejected.",
     13, 119, 179, 22},
};

const DialogResource kPages[] = {
    {"Translate", 235, 55, kTranslate, TavinModule()},   {"Scale", 235, 156, kScale, TavinModule()},
    {"Smooth", 235, 26, kSmooth, TavinModule()},         {"Spike detection", 235, 39, kSpikes, TavinModule()},
    {"Median filter", 210, 162, kMedian, TavinModule()},
};
const DialogTable kTables[] = {
    {kTranslateDialog, kPages[0]}, {kScaleDialog, kPages[1]},  {kSmoothDialog, kPages[2]},
    {kSpikeDialog, kPages[3]},     {kMedianDialog, kPages[4]},
};

}  // namespace
