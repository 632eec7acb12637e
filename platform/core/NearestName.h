// "Did you mean": the name that was probably meant by a misspelt one.
#pragma once

#include <string>
#include <vector>

// The one of `names` that is nearest to `wanted`, letters of either case alike; "" where none is near.
std::string NearestName(const std::string& wanted, const std::vector<std::string>& names);
