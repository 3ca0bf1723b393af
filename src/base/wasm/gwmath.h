// The mathematical functions whose last bit differs from one system's C library to the next. WebAssembly's C
// library has a logarithm to base 10, a tangent and an arc tangent of its own making, as mingw's has: the
// same steps are taken in their place, and the long double of the two others, here in software, holds twice
// the digits.
#pragma once

#include "../win32/gwmath.h"
