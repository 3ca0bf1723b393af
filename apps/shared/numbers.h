// Numbers as text, and what a number has to be, in words. No locale: the decimal sign is a point.
#pragma once

#include <string>

namespace hosts {

// The value with this many decimals; "-" if it is no finite number.
std::string fixed(float value, int decimals);

// The value in three or four significant digits, without trailing zeros behind the point.
std::string brief(float value);

// What is told behind "expected " of a number that is none.
inline constexpr char kExpectedAboveZero[] = "a number above 0 such as 50 or 12.5";
inline constexpr char kExpectedDecibels[] = "a number of dB such as 4";
std::string expected_whole(int lowest, int highest);

}  // namespace hosts
