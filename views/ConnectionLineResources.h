// The dialogs of connection lines and their controls.
#pragma once

#include "platform/core/Types.h"

constexpr UINT kConnectionLineDialog = 422;
constexpr UINT kFromSeries = 4109;
constexpr UINT kToSeries = 4110;
constexpr UINT kLineColor = 4116;
constexpr UINT kLineSwatch = 4117;
constexpr UINT kLineStyles = 4118;
constexpr UINT kLineTypes = 4119;

constexpr UINT kConnectionLinesDialog = 421;
constexpr UINT kAddLine = 4106;
constexpr UINT kLineList = 4112;
constexpr UINT kRemoveLine = 4120;
constexpr UINT kEditLine = 4122;

// The message of a line that is there already.
constexpr UINT kLineExists = 40000;
