/* Marks what crosses the library's boundary. Everything else is built hidden. */
#ifndef MENSURA_EXPORT_H
#define MENSURA_EXPORT_H

#if defined(_WIN32)
#if defined(MENSURA_BUILDING_LIBRARY)
#define MENSURA_API __declspec(dllexport)
#else
#define MENSURA_API __declspec(dllimport)
#endif
#else
/* Exports a declaration from the shared library. */
#define MENSURA_API __attribute__((visibility("default")))
#endif

#endif /* MENSURA_EXPORT_H */
