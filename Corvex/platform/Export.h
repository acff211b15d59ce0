#pragma once

/// Marks what the shared library shows to its users; everything else stays hidden (-fvisibility=hidden).
/// CORVEX_STATIC is defined by the package for users of the static library, CORVEX_BUILDING while it is built.
#if defined(_WIN32) && !defined(CORVEX_STATIC)
#ifdef CORVEX_BUILDING
#define CORVEX_EXPORT __declspec(dllexport)
#else
#define CORVEX_EXPORT __declspec(dllimport)
#endif
#else
#define CORVEX_EXPORT __attribute__((visibility("default")))
#endif
