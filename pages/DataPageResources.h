// The dialogs of the data pages and their controls.
#pragma once

#include "platform/core/Types.h"

constexpr UINT kDataDialog = 403;
constexpr UINT kHiddenList = 4005;
constexpr UINT kShownList = 4006;
constexpr UINT kMoveToShown = 4007;
constexpr UINT kMoveToHidden = 4008;
constexpr UINT kMoveUp = 4009;
constexpr UINT kMoveDown = 4010;
constexpr UINT kHiddenProperties = 4137;
constexpr UINT kShownProperties = 4138;
constexpr UINT kShownReset = 4140;
constexpr UINT kHiddenReset = 4141;

constexpr UINT kCalculationsDialog = 423;
constexpr UINT kInvertInput = 4127;
constexpr UINT kAddSeries = 4128;
constexpr UINT kSubtractSeries = 4129;
constexpr UINT kAddList = 4130;
constexpr UINT kSubtractList = 4131;
constexpr UINT kInputName = 4132;
constexpr UINT kClearAdded = 4133;
constexpr UINT kClearSubtracted = 4134;
constexpr UINT kCandidates = 4135;
constexpr UINT kOffset = 4136;
