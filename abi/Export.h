#pragma once

/// Marks a function that a module exports; everything else in a module is hidden.

#if defined(_WIN32)
#define ZEL_EXPORT __declspec(dllexport)
#else
#define ZEL_EXPORT __attribute__((visibility("default")))
#endif
