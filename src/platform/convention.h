// Whether the calling convention of the exports is part of a function's
// type: on 32-bit Windows a stdcall function is no plain C function, and
// templates that take the exports' pointers name it apart.
#pragma once

#if defined(_WIN32) && !defined(_WIN64)
#define VDX_CONVENTION_A_PART 1
#else
#define VDX_CONVENTION_A_PART 0
#endif
