// The pictures of the processing pages: what a method does to a curve. The curve as it is is drawn in grey,
// what the method makes of it in the accent colour, with arrows from the one to the other. They follow the
// colours of the user's theme and the size of their control.
#pragma once

#include "platform/core/Types.h"

constexpr UINT kScaleWithOffsetPicture = 409;
constexpr UINT kDriftPicture = 410;
constexpr UINT kRampPicture = 411;
constexpr UINT kMovePicture = 413;  // by an offset
constexpr UINT kCustomScalePicture = 414;
constexpr UINT kSetPicture = 415;  // to a value
