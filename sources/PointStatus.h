// The flags of a point's status word and the rejection codes that the library itself sets.
#pragma once

constexpr unsigned short PS_DELETED = 0x0001;   // skipped by statistics, fits and drawing; keeps its place
constexpr unsigned short PS_SPIKE = 0x0002;     // marked by spike detection
constexpr unsigned short PS_MOVED = 0x0004;     // value changed by a translation or a scaling
constexpr unsigned short PS_SMOOTHED = 0x0008;  // value changed by smoothing
constexpr unsigned short PS_INTERPOLATED = 0x0010;  // y replaced by linear interpolation
constexpr unsigned short PS_REJECTED = 0x0040;      // excluded by the user with a reason code
constexpr unsigned short PS_EDITED = 0x8000;        // touched by any edit

constexpr int REJECT_SPIKE = 0x00000800;
constexpr int REJECT_MOVED = 0x20000000;
