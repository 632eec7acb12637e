// The dialogs of the processing pages and their controls.
#pragma once

#include "platform/core/Types.h"

constexpr UINT kTranslateDialog = 404;
constexpr UINT kAbsoluteValue = 4042;
constexpr UINT kRelativeOffset = 4082;
constexpr UINT kTranslatePicture = 4092;
constexpr UINT kToValue = 4093;
constexpr UINT kByOffset = 4094;

constexpr UINT kScaleDialog = 405;
constexpr UINT kOriginLabel = 4080;
constexpr UINT kScaleLabel = 4081;
constexpr UINT kScaleMethods = 4083;
constexpr UINT kScaleFactor = 4084;
constexpr UINT kScaleOrigin = 4085;
constexpr UINT kScalePicture = 4086;

constexpr UINT kSmoothDialog = 406;
constexpr UINT kSmoothLabel = 4081;
constexpr UINT kSmoothWaveLength = 4087;
constexpr UINT kSmoothUnit = 4104;

constexpr UINT kSpikeDialog = 407;
constexpr UINT kSpikeWaveLength = 4000;
constexpr UINT kWindowSize = 4001;
constexpr UINT kWaveLengthUnit = 4002;
constexpr UINT kWindowUnit = 4003;
constexpr UINT kShowWindow = 4100;
constexpr UINT kWaveLengthLabel = 4102;

constexpr UINT kMedianDialog = 424;
constexpr UINT kRejectDistance = 4143;
constexpr UINT kFilterLength = 4144;
constexpr UINT kShowMedianWindow = 4145;
