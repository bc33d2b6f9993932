// The same cases for the portable form, in builds whose own form is another.
#ifndef GENUTIL_PORTABLE_SIMD
#define GENUTIL_PORTABLE_SIMD
#define SIMD_SUITE SimdPortable
#include "simd_unit_test.cpp"
#endif
