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
typedef Mensura::Formatter MensuraFormatter; /* a formatter, the same object in C++ */
typedef char16_t MensuraChar16;              /* a 16-bit unit of UTF-16 text */
extern "C" {
#else
#include <stddef.h>
#include <stdint.h>
/* Opaque: made by CreateFormatter, ended by DestroyFormatter. */
typedef struct Formatter Formatter;
typedef Formatter MensuraFormatter; /* a formatter, the same object in C++ */
typedef uint16_t MensuraChar16;     /* a 16-bit unit of UTF-16 text */
#endif

/* Names -------------------------------------------------------------------- */

/* What the functions return: the values of Mensura::ErrorCode. */
enum MensuraErrorCode {
    MENSURA_SUCCESS = 0,       /* the operation did what was asked */
    MENSURA_FAILURE = 1,       /* a bad argument, a buffer too short, no memory */
    MENSURA_PARSE_FAILURE = 2, /* the text could not be read as a value of the unit */
    MENSURA_NOT_SET = 3,       /* no symbol string is stored for the symbol */
    MENSURA_UNIT_MISMATCH = 4  /* an unknown unit, or two units of other dimensions */
};

/* The selectors of FormatterNumberSetting and FormatterNumberSettingChecked,
 * with what data points to: ten MensuraChar16 digits, no terminator, for the
 * native digits (0 to 2); a text for a sign or separator; an int for the
 * decimal digits (0 to 99) and the number format (a NumberFormat of
 * mensura.hpp, stored unchecked); ints for the group sizes. */
enum MensuraNumberSetting {
    MENSURA_GET_NATIVE_DIGITS = 0,
    MENSURA_SET_NATIVE_DIGITS = 1,
    MENSURA_SET_NATIVE_DIGITS_TOO = 2, /* the same as MENSURA_SET_NATIVE_DIGITS */
    MENSURA_GET_NEGATIVE_SIGN = 3,
    MENSURA_SET_NEGATIVE_SIGN = 4,
    MENSURA_GET_DECIMAL_DIGITS = 5,
    MENSURA_SET_DECIMAL_DIGITS = 6,
    MENSURA_GET_DECIMAL_SEPARATOR = 7,
    MENSURA_SET_DECIMAL_SEPARATOR = 8,
    MENSURA_GET_NUMBER_FORMAT = 9,
    MENSURA_SET_NUMBER_FORMAT = 10,
    MENSURA_GET_GROUP_SEPARATOR = 11,
    MENSURA_SET_GROUP_SEPARATOR = 12,
    MENSURA_GET_GROUP_SIZES = 13,
    MENSURA_SET_GROUP_SIZES = 14,
    MENSURA_GET_POSITIVE_SIGN = 15,
    MENSURA_SET_POSITIVE_SIGN = 16
};

/* The selectors of FormatterSymbolStringSetting. */
enum MensuraSymbolStringSetting {
    MENSURA_GET_FORMATTING_STRING = 1,
    MENSURA_SET_FORMATTING_STRING = 2,
    MENSURA_GET_PARSING_STRING = 3,
    MENSURA_SET_PARSING_STRING = 4
};

/* The selectors of FormatterReadingSetting. */
enum MensuraReadingSetting { MENSURA_GET_EVERYDAY_READING = 1, MENSURA_SET_EVERYDAY_READING = 2 };

/* Why a text did not read: the reason of a MensuraParseReport. */
enum MensuraParseReason {
    MENSURA_READ = 0,            /* the text read */
    MENSURA_UNKNOWN_TEXT = 1,    /* a run of text that is no known unit or mark */
    MENSURA_OTHER_QUANTITY = 2,  /* the text reads as another kind of quantity */
    MENSURA_NO_SINGLE_VALUE = 3, /* its numbers, units and marks do not make one value */
    MENSURA_EMPTY_TEXT = 4,      /* the text is empty */
    MENSURA_UNKNOWN_UNIT = 5     /* the target unit is unknown */
};

/* Conversion ------------------------------------------------------------- */

/* Converts value from unit `from` into unit `to` and writes it to *out.
 * Returns 0, 1 for a null out, or 4 when a unit is unknown or the two units'
 * dimensions differ (out then holds the value in base units, or is left alone
 * when a unit is unknown). Ids that agree in their low 20 bits copy the value. */
MENSURA_API int Convert(double value, int from, double* out, int to);

/* The constant factor that takes a value in `from` to `to`, or 0.0 where there
 * is none (unknown unit, other dimensions, or a scale with an offset such as
 * degree Celsius). Ids that agree in their low 20 bits give 1.0, as Convert
 * copies their value, even when they name no unit (0 and 0, -1 and -1). */
MENSURA_API double ConversionFactor(int from, int to);

/* Converts count values from `from` into `to`, each bit for bit as Convert
 * would; out may equal values. 0; 4, with nothing written, for an unknown or
 * mismatched pair; 1 for a null pointer with a count above 0. As with
 * Convert, ids that agree in their low 20 bits copy the values and give 0,
 * even when they name no unit. */
MENSURA_API int ConvertArray(const double* values, double* out, size_t count, int from, int to);

/* Writes the seven exponents of a group, unit type or symbol id's dimensions
 * (length, mass, time, electric current, temperature, amount of substance,
 * luminous intensity): the newton gives 1, 1, -2, 0, 0, 0, 0. Returns 0; 1 for
 * an unknown id or a null array, which is then left alone. */
MENSURA_API int GetUnitDimensions(int id, int dimensions[7]);

/* Formatters ------------------------------------------------------------- */

/* A formatter for a locale: 2052 is Simplified Chinese, every other id English. */
MENSURA_API MensuraFormatter* CreateFormatter(int locale);
/* Ends a formatter from CreateFormatter. Null is ignored. */
MENSURA_API void DestroyFormatter(MensuraFormatter* formatter);
/* Reads or changes one number setting, chosen by selector 0 to 16; 1 for a
 * null formatter or data and for any other selector. What size means depends
 * on the selector, and most selectors do not look at it at all, so data must
 * hold what the selector reads or writes whatever size says:
 * - 0 writes ten units (20 bytes) and 1 and 2 read ten units, terminator or
 *   not, whatever size is; 1 and 2 give 1, nothing changed, when two digits
 *   are equal.
 * - 3, 7, 11 and 15 copy the text into data of size units (not bytes), cut to
 *   size - 1 units and always terminated; a size of 0 writes nothing. They
 *   give 0 even when the text was cut.
 * - 4, 8, 12 and 16 read data up to its terminator, whatever size is; 8 and
 *   12 give 1, nothing changed, for an empty text.
 * - 5 and 9 write one int, 6 and 10 read one, whatever size is; 6 gives 1,
 *   nothing changed, outside 0 to 99.
 * - 13 with a size of 0 writes the count of group sizes as a uint64_t (8
 *   bytes): data must then hold a uint64_t, not an int. With any other size
 *   it writes all the group sizes as ints, count times 4 bytes, whatever size
 *   is: ask for the count first.
 * - 14 reads size ints (size counts ints here, not bytes); 1, nothing
 *   changed, for a size of 0 or above INT_MAX or sizes out of range (see
 *   Formatter::SetNumberGroupSizes in mensura.hpp).
 * FormatterNumberSettingChecked is the same with size as the capacity of
 * data in bytes, honoured by every selector. */
MENSURA_API int FormatterNumberSetting(MensuraFormatter* formatter, int selector, void* data,
                                       size_t size);
/* FormatterNumberSetting with size the count of BYTES that data holds, for
 * every selector; nothing is read or written beyond them. Where size is too
 * small for the selector it returns 1 and reads, writes and changes nothing:
 * - 0, 1, 2: the ten digits need 20 bytes.
 * - 5, 6, 9, 10: the int needs 4 bytes.
 * - 3, 7, 11, 15: the text is copied into size / 2 units, which must be at
 *   least 1, cut and terminated as FormatterNumberSetting does; 0 even when
 *   cut.
 * - 4, 8, 12, 16: the terminator must stand within the first size / 2 units.
 * - 13 writes all the group sizes as ints when 4 times their count is at
 *   most size. It gives no count: take it from FormatterNumberSetting with
 *   selector 13 and a size of 0 (into a uint64_t), or from
 *   Formatter::GetNumberGroupSizes(nullptr) in mensura.hpp.
 * - 14 sets size / 4 ints: size must be a non-zero multiple of 4.
 * 1 for a null formatter or data and for any other selector; otherwise the
 * codes of FormatterNumberSetting. */
MENSURA_API int FormatterNumberSettingChecked(MensuraFormatter* formatter, int selector, void* data,
                                              size_t size);
/* Reads, sets or removes a symbol's formatting or parsing string: selector 1
 * reads the formatting string into data of size units, 2 sets it from data, 3
 * reads the parsing string, 4 sets it; an empty text removes. The setters read
 * data up to its terminator and do not look at size. 1 for a null formatter or
 * data and for any other selector; else as the members of Formatter in
 * mensura.hpp: a read gives 3 for an id that names no symbol, as for a symbol
 * without a string, and a set gives 1. */
MENSURA_API int FormatterSymbolStringSetting(MensuraFormatter* formatter, int selector, int symbol,
                                             MensuraChar16* data, size_t size);

/* Reads or changes the everyday reading (Formatter::SetEverydayReading in
 * mensura.hpp): selector 1 reads the flag into *value, 2 sets it from *value,
 * 0 off and 1 on. 0 on success; 1 for a null formatter or value, another
 * selector, or a value other than 0 and 1 to set. */
MENSURA_API int FormatterReadingSetting(MensuraFormatter* formatter, int selector, int* value);

/* Text ------------------------------------------------------------------- */

/* Renders value, given in `unit`, as text with a symbol (0 for the default),
 * as Formatter::Format in mensura.hpp does, and writes the value in the
 * symbol's unit to *converted. Unlike the member, converted must not be null:
 * 1 for a null formatter, buffer or converted. Otherwise 0; 1 for an unknown
 * unit or symbol (a group id is no unit here, though it may be the symbol)
 * and for a size that cannot hold the text and its terminator, when the
 * first size units of buffer are undefined; 4 for a symbol of other
 * dimensions. */
MENSURA_API int Format(MensuraFormatter* formatter, double value, int unit, MensuraChar16* buffer,
                       size_t size, int symbol, double* converted);
/* Reads text into a value in `unit`, as Formatter::Parse in mensura.hpp: 0;
 * 2 for a text that does not read, an unknown unit (a group id included) or
 * a text of another quantity; 1 for a null formatter, text or value, where
 * the member gives 2 for a null text. *value is left alone on failure. */
MENSURA_API int Parse(MensuraFormatter* formatter, const MensuraChar16* text, double* value,
                      int unit);

/* Reads count texts that stand one after another in `texts`, each ended by a
 * zero unit, into values in `unit`: a quiet NaN where a text does not read.
 * When codes is not null, writes each code as Parse gives it. Returns how
 * many read; 0, with nothing written, for a null formatter, texts or values. */
MENSURA_API size_t ParseMany(MensuraFormatter* formatter, const MensuraChar16* texts, size_t count,
                             int unit, double* values, int* codes);

/* Why a text read or did not: filled by ExplainParse. */
typedef struct MensuraParseReport {
    size_t size;       /* the caller sets sizeof(MensuraParseReport) */
    int code;          /* what Parse returns for the same call */
    int reason;        /* 0 read; 1 a run of text that is no known unit or mark; 2 the text reads as
                          another kind of quantity; 3 its numbers, units and marks do not make one
                          value; 4 empty text; 5 unknown target unit */
    size_t start;      /* first 16-bit unit of the text that the reason is about */
    size_t length;     /* its length in units; 0 when the reason is about the whole text */
    int dimensions[7]; /* reason 0 or 2: what the text reads as */
    int group;         /* reason 0 or 2: the group of those dimensions, 0 if none */
    double value;      /* reason 0: the value in the target unit */
    int note;          /* 0 none; 1 a symbol read with a catalogue meaning that differs from the
                          everyday one (the list of the everyday reading) */
    size_t noteStart;  /* where the symbol of note 1 begins, in 16-bit units */
    size_t noteLength; /* its length in units */
} MensuraParseReport;

/* Parses text into `unit` as Parse does, with the same result, and says why
 * in *report. The span names the first fault: the longest run of text that
 * no key, number or mark reads ("km3" in "1e-9 km3", "feets" in "5 feets"),
 * or, for the other reasons, the whole text. A text that reads into another
 * group gives that group and its dimensions. Returns 1, with the report left
 * alone, for a null formatter, text or report, or a size below the struct's;
 * Parse stays as fast as it is, since only this call does the extra work.
 * A failed text longer than 1024 units is not read again as the other kinds
 * of quantity (a parse for each group): its reason is then 3. */
MENSURA_API int ExplainParse(MensuraFormatter* formatter, const MensuraChar16* text, int unit,
                             MensuraParseReport* report);

/* Catalogue -------------------------------------------------------------- */

/* Each Get list query returns the count; with a non-null ids it also writes
 * that many ids. Ask for the count first: there is no capacity argument. The
 * Copy ones below take one.
 *
 * GetUnitGroups gives the 68 group ids, 0x1000 to 0x44000.
 *
 * GetUnitTypes takes the group from bits 12-19 of `group` (0 for an unknown
 * group) and writes id i as group | (i + 1): every other bit of the argument
 * is merged into each id, not masked away. Only a pure group id gives pure
 * unit type ids; GetUnitTypes(0x202017) gives 66 ids that all keep 0x202017's
 * bits, 0x202017 itself seven times first, then 0x20201F, and never names
 * most types of the group.
 *
 * GetUnitSymbols takes the unit type from bits 0-19 of `id` (0 unless both
 * the group and type are known, so 0 for a group id) and writes id i as
 * id | ((i + 1) << 20): a symbol number already in the argument is OR-ed with
 * each one, so GetUnitSymbols(0x202017) gives 0x302017, 0x202017, 0x302017.
 * Bits 28-31 stay in every id too. */
MENSURA_API size_t GetUnitGroups(int* ids);
/* The unit type ids of the group of `group`, its other bits merged in. */
MENSURA_API size_t GetUnitTypes(int group, int* ids);
/* The symbol ids of the unit type of `id`, its other bits merged in. */
MENSURA_API size_t GetUnitSymbols(int id, int* ids);

/* The list queries with a capacity: each returns the count, as the Get ones
 * do for a pure argument, and writes the first min(count, capacity) ids;
 * null ids or a capacity of 0 write nothing. CopyUnitTypes takes only the
 * group field (bits 12-19) of `group` and writes pure unit type ids
 * (group | type) in order. CopyUnitSymbols takes only the group and type
 * fields (bits 0-19) of `id` and puts each symbol number in place of its
 * symbol field: CopyUnitSymbols(0x202017, ...) gives 0x102017, 0x202017,
 * 0x302017; a group id, which holds no type, gives 0 symbols. */
MENSURA_API size_t CopyUnitGroups(int* ids, size_t capacity);
/* The pure unit type ids of the group field of `group`. */
MENSURA_API size_t CopyUnitTypes(int group, int* ids, size_t capacity);
/* The complete symbol ids of the unit type of `id`. */
MENSURA_API size_t CopyUnitSymbols(int id, int* ids, size_t capacity);

/* The display name of a group, unit type or symbol id in the language of
 * locale, by the rule of CreateFormatter (2052 Simplified Chinese, every
 * other id English): "Length", "meter", "m". Copies the name with its
 * terminator; 1, with the buffer left as it was, for a null buffer, an
 * unknown id, or a size not above the name's length. Bits 28-31 of id are
 * not read. Keeps nothing per locale id and allocates nothing; safe to call
 * from several threads at once. */
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
