/*
 * Mensura: the flat functions, callable from C and from any language with a C
 * foreign-function interface.
 *
 * Unit ids are packed 32-bit values: bits 0-11 the unit type number, bits 12-19
 * the unit group number, bits 20-27 the symbol number, each 1-based with 0 for
 * "not given". 0x2000 is the group Length, 0x2017 its unit type 23 (foot), and
 * 0x202017 symbol 2 of the foot ("ft").
 *
 * Text is UTF-16 ended by a zero unit. Buffer sizes count 16-bit units and
 * include the terminator.
 *
 * Results are error codes: 0 success, 1 failure (bad argument, buffer too
 * short, memory exhausted), 2 parse failure, 3 not set, 4 unit mismatch
 * (unknown unit, or two units of different dimensions). No exception leaves
 * these functions: when memory runs out they return 1, and CreateFormatter
 * returns NULL; a symbol string's setter then leaves the formatter's strings
 * as they were.
 */
#ifndef MENSURA_H
#define MENSURA_H

#include "mensura/export.h"

#ifdef __cplusplus
#include <cstddef>
namespace Mensura {
class Formatter;
}
typedef Mensura::Formatter MensuraFormatter;
typedef char16_t MensuraChar16;
extern "C" {
#else
#include <stddef.h>
#include <stdint.h>
/* Opaque: made by CreateFormatter, ended by DestroyFormatter. */
typedef struct Formatter Formatter;
typedef Formatter MensuraFormatter;
typedef uint16_t MensuraChar16;
#endif

/* Conversion ------------------------------------------------------------- */

/* Converts value from unit `from` into unit `to` and writes it to *out.
 * Returns 0, 1 for a null out, or 4 when a unit is unknown or the two units'
 * dimensions differ (out then holds the value in base units, or is left alone
 * when a unit is unknown). Ids that agree in their low 20 bits copy the value. */
MENSURA_API int Convert(double value, int from, double* out, int to);

/* The constant factor that takes a value in `from` to `to`, or 0.0 where there
 * is none (unknown unit, other dimensions, or a scale with an offset such as
 * degree Celsius). */
MENSURA_API double ConversionFactor(int from, int to);

/* Formatters ------------------------------------------------------------- */

/* A formatter for a locale: 2052 is Simplified Chinese, every other id English. */
MENSURA_API MensuraFormatter* CreateFormatter(int locale);
/* Ends a formatter from CreateFormatter. Null is ignored. */
MENSURA_API void DestroyFormatter(MensuraFormatter* formatter);
/* Reads or changes one number setting, chosen by selector 0 to 16. */
MENSURA_API int FormatterNumberSetting(MensuraFormatter* formatter, int selector, void* data,
                                       size_t size);
/* Reads, sets or removes a symbol's formatting or parsing string: selector 1
 * reads the formatting string into data of size units, 2 sets it from data, 3
 * reads the parsing string, 4 sets it; an empty text removes. 1 for a null
 * formatter or data and for any other selector; else as the members of
 * Formatter in mensura.hpp. */
MENSURA_API int FormatterSymbolStringSetting(MensuraFormatter* formatter, int selector, int symbol,
                                             MensuraChar16* data, size_t size);

/* Reads or changes the everyday reading (Formatter::SetEverydayReading in
 * mensura.hpp): selector 1 reads the flag into *value, 2 sets it from *value,
 * 0 off and 1 on. 0 on success; 1 for a null formatter or value, another
 * selector, or a value other than 0 and 1 to set. */
MENSURA_API int FormatterReadingSetting(MensuraFormatter* formatter, int selector, int* value);

/* Text ------------------------------------------------------------------- */

/* Renders value, given in `unit`, as text with a symbol (0 for the default). */
MENSURA_API int Format(MensuraFormatter* formatter, double value, int unit, MensuraChar16* buffer,
                       size_t size, int symbol, double* converted);
/* Reads text into a value in `unit`. *value is left alone on failure. */
MENSURA_API int Parse(MensuraFormatter* formatter, const MensuraChar16* text, double* value,
                      int unit);

/* Catalogue -------------------------------------------------------------- */

/* Each list query returns the count; with a non-null ids it also writes that
 * many ids. Ask for the count first: there is no capacity argument. */
MENSURA_API size_t GetUnitGroups(int* ids);
MENSURA_API size_t GetUnitTypes(int group, int* ids);
MENSURA_API size_t GetUnitSymbols(int id, int* ids);
/* The display name of a group, unit type or symbol id in the language of
 * locale: "Length", "meter", "m"; 1 for a null buffer, an unknown id, or a size
 * not above the name's length. Safe to call from several threads at once. */
MENSURA_API int GetDisplayName(int locale, int id, MensuraChar16* buffer, size_t size);

/* Looking a unit up by its text ------------------------------------------ */

/* An extension of the flat functions: the unit type whose symbol reads the
 * whole of text. When text, all of it, is a key of the parse dictionary held
 * by a unit symbol ("ft", "metre", "m²", "米", "degree Celsius"), writes that
 * symbol's unit type id (group and type, no symbol number) to *unit and
 * returns 0. Returns 1, with *unit left alone, for a key held by an operator
 * ("/", the prime), a text of which only a beginning is a key ("ftx"), an
 * unknown or empty text, and a null text or unit. Keys are compared exactly,
 * case included. Allocates nothing and reads only the catalogue, which never
 * changes once the library is loaded: safe to call from several threads at
 * once. */
MENSURA_API int FindUnit(const MensuraChar16* text, int* unit);

#ifdef __cplusplus
}
#endif

#endif /* MENSURA_H */
