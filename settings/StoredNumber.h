// Numbers as the settings store writes them: printf's and scanf's formats with a decimal point and without
// digit grouping, whatever the process locale.
#pragma once

#include <cstdint>

#include "platform/core/CString.h"

// `value` in a printf format for one double; empty when the format fails.
CString FormatReal(const char* format, double value);

// Read what the scanf formats "%f", "%lf" and "%i" would (leading blanks and what follows the number do not
// matter; "0x" and "0" prefixes of integers count). False and `value` unchanged without a number at the
// start, and for infinities, values too large for the type and not-a-number, which no setting can mean.
bool ParseReal(const char* text, float& value);
bool ParseReal(const char* text, double& value);
// Integers outside of the 64-bit range come out as its ends.
bool ParseInteger(const char* text, std::int64_t& value);
