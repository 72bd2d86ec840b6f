// Mensura: physical quantities for engineering applications.
//
// Converts a double between any two of 773 unit types in 68 groups, renders a
// value with its unit as text, reads such text back, and offers a catalogue of
// unit symbols in English and Simplified Chinese.
//
// Unit ids are the packed 32-bit values described in mensura.h. The flat C
// functions declared there run the same code as the classes here.
#ifndef MENSURA_HPP
#define MENSURA_HPP

#include <cstddef>

#include "mensura/export.h"
#include "mensura/mensura.h"

namespace Mensura {

// The result of every call that can fail. The numbers are part of the interface.
enum class ErrorCode : int {
    Success = 0,       // The operation did what was asked.
    Failure = 1,       // A bad argument, a buffer too short, nothing to render with.
    ParseFailure = 2,  // The text could not be read as a value of the asked unit.
    NotSet = 3,        // No custom symbol string is stored for this symbol.
    UnitMismatch = 4,  // An id names no unit type, or two units' dimensions differ.
};

// How a number is rendered.
enum class NumberFormat : int {
    ScientificUpper = 0,  // 1.23E+004
    ScientificLower = 1,  // 1.23e+004
    Fixed = 2,            // 12345.68
    GeneralUpper = 3,     // shortest of fixed and scientific, E
    GeneralLower = 4,     // shortest of fixed and scientific, e
    Number = 5,           // 12,345.68: fixed with digit grouping
};

// Why a text read or did not, from Formatter::ExplainParse: the fields of
// MensuraParseReport in mensura.h.
struct ParseReport {
    // Why the text read or did not, as MensuraParseReason in mensura.h.
    enum Reason : int {
        Read = 0,           // the text read
        UnknownText = 1,    // a run of text that is no known unit or mark
        OtherQuantity = 2,  // the text reads as another kind of quantity
        NoSingleValue = 3,  // its numbers, units and marks do not make one value
        EmptyText = 4,      // the text is empty
        UnknownUnit = 5,    // the target unit is unknown
    };
    ErrorCode code = ErrorCode::ParseFailure;  // what Parse returns for the same call
    Reason reason = NoSingleValue;             // why it read or did not
    size_t start = 0;        // first 16-bit unit of the text that the reason is about
    size_t length = 0;       // its length; 0 when the reason is about the whole text
    int dimensions[7] = {};  // Read or OtherQuantity: what the text reads as
    int group = 0;           // Read or OtherQuantity: the group of those, 0 if none
    double value = 0.0;      // Read: the value in the target unit
    // A symbol read with a catalogue meaning that differs from the everyday
    // one, and where it stands.
    bool note = false;
    size_t noteStart = 0;   // the first 16-bit unit of that symbol
    size_t noteLength = 0;  // its length in units
};

// A value tagged with the seven exponents of its dimensions, in the order
// length, mass, time, electric current, temperature, amount of substance,
// luminous intensity.
template <int L, int M, int T, int I, int Theta, int N, int J>
class Quantity {
public:
    // Tags value with the dimensions of the type.
    explicit constexpr Quantity(double value) : m_value(value) {}
    // The value as it was given.
    constexpr double Value() const { return m_value; }

private:
    double m_value;
    static double s_tolerance;
};

// Exported for code on the caller's side; the library itself never reads it.
template <>
MENSURA_API double Quantity<0, 0, 0, 0, 0, 0, 0>::s_tolerance;

// Converts values between two units. A plain value holding two unit ids.
class MENSURA_API Converter {
public:
    // Holds -1, -1: converts every value to itself.
    Converter();
    // Holds the pair if SetUnit accepts it, else -1, -1.
    Converter(int from, int to);
    // Copies the pair.
    Converter(const Converter&) = default;
    // Takes the pair of other.
    Converter& operator=(const Converter& other);

    // Stores a new pair after a trial conversion; 0 keeps the stored id on that
    // side. Returns UnitMismatch, with the old pair kept, when either unit is
    // unknown or their dimensions differ.
    ErrorCode SetUnit(int from, int to);
    // Either pointer may be null.
    void GetUnit(int* from, int* to) const;
    // Converts between the stored units. Cannot fail: SetUnit proved the pair.
    double Convert(double value) const;
    // Factor(from, to) on the stored pair.
    double Factor() const;

    // Converts value from unit `from` into unit `to`. Returns UnitMismatch when
    // a unit is unknown (out left alone) or the dimensions differ (out then
    // holds the value in base units). Ids that agree in their low 20 bits copy
    // the value without a lookup.
    static ErrorCode Convert(double value, int from, double& out, int to);
    // The multiplier from `from` to `to`, or 0.0 where no pure ratio exists.
    // Ids that agree in their low 20 bits give 1.0, known or not.
    static double Factor(int from, int to);
    // The 68 group ids, 0x1000 to 0x44000. Returns the count; writes the ids
    // when ids is not null.
    static size_t GetUnitGroups(int* const ids);
    // The unit type ids of a group. The group field (bits 12-19) of `group`
    // chooses the group, and id i is `group | (i + 1)`: every other bit of the
    // argument, a type or symbol number included, is merged into each id, so
    // that only a pure group id gives pure unit type ids. Returns the count, 0
    // for an unknown group; writes them all when ids is not null.
    static size_t GetUnitTypes(int group, int* const ids);
    // The group ids as GetUnitGroups gives them, at most `capacity` of them
    // written. Returns the count (68); null ids or a capacity of 0 write
    // nothing.
    static size_t CopyUnitGroups(int* const ids, size_t capacity);
    // The pure unit type ids (group | type) of the group field of `group`,
    // its other bits dropped, in order; at most `capacity` of them written.
    // Returns the count, 0 for an unknown group; null ids or a capacity of 0
    // write nothing.
    static size_t CopyUnitTypes(int group, int* const ids, size_t capacity);
    // The seven exponents of a group, unit type or symbol id (order as in
    // Quantity). Failure, with dimensions left alone, for an unknown id.
    static ErrorCode GetUnitDimensions(int id, int (&dimensions)[7]);
    // Converts count values from `from` into `to`, each bit for bit as
    // Convert would; out may be values itself. UnitMismatch, with nothing
    // written, for an unknown or mismatched pair; Failure for a null pointer
    // with a count above 0. Ids that agree in their low 20 bits copy the
    // values, known or not.
    static ErrorCode ConvertArray(const double* values, double* out, size_t count, int from,
                                  int to);

private:
    // value is in base units of dimensions; converts it into unit `to`.
    static ErrorCode Convert(double value, const int (&dimensions)[7], double& out, int to);
    // Converts value in unit `from` into base units, checking its dimensions.
    static ErrorCode Convert(double value, int from, double& out, const int (&dimensions)[7]);

    int m_from;
    int m_to;
};

// The state behind a Formatter, private to the library.
class FormatterImpl;

// A caller's handle on one set of text conventions: how numbers look and in
// which language symbols appear. Copies share one state, so a change through
// any copy shows through all of them; the state goes with the last copy. A
// formatter and its copies serve one thread at a time.
//
// Text is UTF-16 ended by a zero unit. Sizes count 16-bit units and include
// the terminator. The text getters cut what does not fit: they copy at most
// size - 1 units, always end the buffer's content with a terminator, and
// report nothing; a size of 0 writes nothing.
class MENSURA_API Formatter {
public:
    // An English formatter (locale 1033).
    Formatter();
    // Locale 2052 is Simplified Chinese; every other id, 0 and negative ones
    // included, is English (1033). The number settings start the same for
    // both: digits 0 to 9, no positive sign, negative sign "-", group
    // separator ",", decimal separator ".", style Number, 2 decimal digits,
    // groups of 3.
    explicit Formatter(int locale);
    // Shares other's state; no setting is copied.
    Formatter(const Formatter& other);
    // Lets go of the state held so far and shares other's.
    Formatter& operator=(const Formatter& other);
    // Releases the state when this is the last formatter that shares it.
    virtual ~Formatter();

    // Writes the ten units that stand for the digits 0 to 9, no terminator.
    void GetNativeDigits(char16_t* const digits) const;
    // Reads ten units, terminator or not, as the digits 0 to 9. Failure, with
    // nothing changed, when two of them are equal or digits is null.
    ErrorCode SetNativeDigits(const char16_t* const digits);

    // Copies the negative sign into buffer, cut to size - 1 units.
    void GetNegativeSign(char16_t* buffer, size_t size) const;
    // Any text, the empty one included; null changes nothing.
    void SetNegativeSign(const char16_t* text);
    // Copies the positive sign into buffer, cut to size - 1 units.
    void GetPositiveSign(char16_t* buffer, size_t size) const;
    // Any text, the empty one included; null changes nothing.
    void SetPositiveSign(const char16_t* text);

    // The precision of a rendered number.
    int GetNumberDecimalDigits() const;
    // Accepts 0 to 99; Failure, with nothing changed, for anything else.
    ErrorCode SetNumberDecimalDigits(int digits);

    // Copies the decimal separator into buffer, cut to size - 1 units.
    void GetNumberDecimalSeparator(char16_t* buffer, size_t size) const;
    // Failure, with nothing changed, for a null or empty text.
    ErrorCode SetNumberDecimalSeparator(const char16_t* text);
    // Copies the group separator into buffer, cut to size - 1 units.
    void GetNumberGroupSeparator(char16_t* buffer, size_t size) const;
    // Failure, with nothing changed, for a null or empty text.
    ErrorCode SetNumberGroupSeparator(const char16_t* text);

    // Returns the count of group sizes; when sizes is not null, first writes
    // all of them there, nearest the decimal point first. Ask for the count
    // first: there is no capacity argument.
    size_t GetNumberGroupSizes(int* const sizes) const;
    // Digit group sizes, nearest the decimal point first; the last one repeats
    // for the rest of the digits, and a last size of 0 leaves them ungrouped.
    // A first size of 0 means no grouping. Failure, with nothing changed, when
    // count is below 1, a size but the last lies outside 1 to 9, or the last
    // outside 0 to 9.
    ErrorCode SetNumberGroupSizes(const int* const sizes, int count);

    // The style of rendered numbers, as SetNumber stored it.
    NumberFormat GetNumber() const;
    // Stored as given, unchecked: a value outside the enumeration is read
    // back as it is and makes every rendering fail.
    void SetNumber(NumberFormat format);

    // 1033 or 2052, never another value.
    int GetLocaleId() const;

    // Renders value, given in `unit`, as a number and a symbol: "1.00 meter".
    // `symbol` chooses the symbol: 0 for the default of `unit`, a group id for
    // the group's default unit, a unit type id for its default symbol, or a
    // complete symbol id. Returns Failure for an unknown unit or symbol or a
    // buffer that cannot hold the text and its terminator (the buffer's content
    // is then undefined; a number is printed with its sign and a terminator
    // before it is written, so the last number of a text may ask for up to
    // two units more), UnitMismatch when the symbol measures another
    // quantity. On success *converted, when converted is not null, receives
    // the value in the chosen symbol's unit, unrounded.
    ErrorCode Format(double value, int unit, char16_t* buffer, size_t size, int symbol = 0,
                     double* converted = nullptr) const;

    // Reads text as a value in `unit`: "5 ft", "1,000.5 mm", "5 kg·m/s²". A
    // bare number takes the default unit of the unit's group. Returns
    // ParseFailure, with value left as it was, for an unknown unit, a null or
    // unreadable text, a text whose unit measures another quantity, or one
    // whose parentheses nest more than 256 deep.
    ErrorCode Parse(const char16_t* text, double& value, int unit) const;

    // The everyday reading, off by default. When on, Parse also reads a text
    // as a person in the trade writes it today, where the catalogue's reading
    // refuses it: SI prefixes on SI symbols ("kJ", "hPa", "µs" with the micro
    // sign or the Greek mu), plurals and spelled words ("feet", "meters"),
    // "*", "⋅" and "×" between units, "−" (U+2212) and "+" as signs, vulgar
    // fractions ("5′6½″"), sums of one kind ("5 ft 6 in", "1 h 30 min") and
    // compact bearings ("N45-30E"). A few symbols whose catalogue meaning
    // misleads take their everyday one instead: "lb" is the avoirdupois
    // pound, "MB" a million bytes, "daN/m²" per square meter; in locale 1033
    // "tbsp", "tsp" and "cwt" are the U.S. customary ones. The full list is in
    // docs/everyday-reading.md. A text that reads by default keeps its value
    // unless it holds one of those symbols. Copies share the setting.
    void SetEverydayReading(bool on);
    // Whether the everyday reading is on.
    bool GetEverydayReading() const;

    // Parses as Parse does, with the same code, and says why: see
    // MensuraParseReport in mensura.h. Allocates; Parse itself does not. A
    // failed text longer than 1024 units is not read again as the other kinds
    // of quantity (a parse for each group): it is reported as NoSingleValue.
    ParseReport ExplainParse(const char16_t* text, int unit) const;

    // Reads count texts that stand one after another in `texts`, each ended
    // by a zero unit, into values (a quiet NaN where a text does not read)
    // and, when codes is not null, each code as Parse gives it. Returns how
    // many read; 0, with nothing written, for null texts or values.
    size_t ParseMany(const char16_t* texts, size_t count, int unit, double* values,
                     ErrorCode* codes = nullptr) const;

    // The symbol id that renders a unit type when no symbol is asked for: the
    // one set by SetDefaultSymbol, else symbol 1 of the type. 0 for anything
    // but a unit type id.
    int GetDefaultSymbol(int id) const;
    // Makes the complete symbol id `id` the default of its unit type. Failure
    // unless id names a symbol.
    ErrorCode SetDefaultSymbol(int id);
    // The unit type that renders a group when a group id is asked for: the one
    // set by SetDefaultUnit, else type 1. 0 for anything but a group id.
    int GetDefaultUnit(int id) const;
    // Makes the unit type of `id` the default of its group. Failure unless id
    // names a unit type.
    ErrorCode SetDefaultUnit(int id);

    // Symbol strings: a caller's own look for one symbol, literal text with
    // numbered placeholders, "{0} ft {1} in". A placeholder stands for one
    // number of the symbol's rendering and names it, whatever its position:
    // "{1} in {0} ft" writes the inches first. Write "{{" and "}}" for a brace.
    // A placeholder holds digits and nothing else, and two of them need text
    // between them. The symbol fixes how many there are: one for a plain
    // symbol and for "x x/2″", two for the other feet-and-inches and minutes-
    // and-seconds patterns, three for degrees, minutes and seconds.
    //
    // `symbol` is a complete symbol id, as Format resolves it. Format renders
    // that symbol through its formatting string, only the string's text around
    // the numbers; Parse tries the strings of both kinds before anything
    // else, and a text that one of them reads gives its value, or
    // ParseFailure when it measures another quantity. A string on a pattern
    // with fractions also reads "5 ft 1/4 in" and "5 ft 6 1/4 in".
    //
    // Setting: a null or empty text removes the string (Success, also when
    // there is none); the text already stored changes nothing. Failure, with
    // everything as it was, for an id that names no symbol, a malformed text,
    // the wrong number of placeholders or a number repeated or out of range,
    // and for a text whose literal parts another string of this formatter
    // already has, of either kind and on any symbol: those would read alike.
    // A string cannot be the formatting and the parsing string of a symbol at
    // once. Rendering through a string on a bearing symbol always fails.
    ErrorCode SetSymbolFormattingString(int symbol, const char16_t* text);
    // As SetSymbolFormattingString, for a string that Parse reads and Format
    // does not use.
    ErrorCode SetSymbolParsingString(int symbol, const char16_t* text);
    // Copies the stored text with its terminator. NotSet when there is none;
    // Failure, with the buffer left as it was, for a null buffer or a size
    // not above the text's length.
    ErrorCode GetSymbolFormattingString(int symbol, char16_t* buffer, size_t size) const;
    // As GetSymbolFormattingString, for the parsing string.
    ErrorCode GetSymbolParsingString(int symbol, char16_t* buffer, size_t size) const;

    // The symbol ids of a unit type, symbol 1 (the spelled-out name) first.
    // Returns the count, 0 unless id holds a group and a type; writes them
    // all when ids is not null. Id i is `id | ((i + 1) << 20)`: the bits of
    // the argument are merged, not masked, so an id that holds a symbol
    // number gives ids with both numbers OR-ed together.
    static size_t GetUnitSymbols(int id, int* const ids);
    // The symbol ids of the unit type named by the group and type fields of
    // `id` (bits 0-19; the symbol field and bits 28-31 are dropped), symbol 1
    // first, at most `capacity` of them written. Returns the count, 0 unless
    // id holds a known group and type; null ids or a capacity of 0 write
    // nothing.
    static size_t CopyUnitSymbols(int id, int* const ids, size_t capacity);
    // The display name of a group, unit type or symbol id in this formatter's
    // language. Failure for a null buffer, an unknown id, or a size not above
    // the name's length (the buffer is then left as it was).
    ErrorCode GetDisplayName(int id, char16_t* buffer, size_t size) const;

    // The unit type named by the whole of text, as FindUnit in mensura.h:
    // Success with unit written, or Failure with unit left alone.
    static ErrorCode FindUnit(const char16_t* text, int& unit);

private:
    // Reads text as a value in base units of `dimensions`; a bare number takes
    // the default symbol of `group`, or of the group of the dimensions when 0.
    ErrorCode Parse(const char16_t* text, double& value, const int (&dimensions)[7],
                    int group) const;
    // Renders value, in base units of `dimensions`.
    ErrorCode Format(double value, const int (&dimensions)[7], char16_t* buffer, size_t size,
                     int symbol, double* converted) const;

    // The shared state, counted inside it without atomics; a plain pointer
    // keeps the standard library out of this class's layout.
    FormatterImpl* m_impl;
};

// Thin wrappers over the platform's mathematical functions.
namespace Detail {
MENSURA_API double _fabs(double value);                 // |value|
MENSURA_API double _sqrt(double value);                 // the square root
MENSURA_API double _sin(double value);                  // the sine of radians
MENSURA_API double _cos(double value);                  // the cosine of radians
MENSURA_API double _tan(double value);                  // the tangent of radians
MENSURA_API double _pow(double base, double exponent);  // base to the power exponent
MENSURA_API bool _isNaN(double value);                  // whether value is a NaN
MENSURA_API bool _isFinite(double value);               // neither infinite nor a NaN
}  // namespace Detail

}  // namespace Mensura

#endif  // MENSURA_HPP
