// The state behind a Formatter: number settings, the table of number tokens
// that follows them, the per-formatter defaults and symbol strings, and the
// locale. Every Formatter that shares it forwards to it.
#ifndef MENSURA_FRAME_FORMATTER_IMPL_H
#define MENSURA_FRAME_FORMATTER_IMPL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "notations/symbol_strings.h"
#include "mensura/mensura.hpp"
#include "base/dimensions.h"
#include "base/radix_tree.h"

namespace Mensura {

// The codes of NumberTokens. A code's token class is (code - 4) / 4: the
// digit value 0 to 9, then 10 for the group separator, 11 the decimal
// separator, 12 the positive sign, 13 the negative sign and 14 the exponent
// letter. 0 is no token.
namespace NumberToken {
constexpr int None = 0;
constexpr int Digit(int digit) {
    return 4 * (digit + 1);
}
constexpr int GroupSeparator = 44;
constexpr int DecimalSeparator = 48;
constexpr int PositiveSign = 52;
constexpr int NegativeSign = 56;
constexpr int Exponent = 60;
}  // namespace NumberToken

// From the text of a number token to its code. A text holds one code: when
// two settings share a text the last one set wins, and erasing either erases
// it for both.
using NumberTokenTree = RadixTree<int>;

// A symbol string set by the caller: the text as given, and the objects made
// from it, which the entry owns; the one of form 0, which renders, first.
struct SymbolStringEntry {
    std::u16string text;
    CustomSymbolList symbols;
};

class FormatterImpl {
public:
    static constexpr int kEnglish = 1033;
    static constexpr int kSimplifiedChinese = 2052;

    // Default settings for a locale: 2052 is Simplified Chinese, every other
    // id English (1033). The number settings are the same for both.
    explicit FormatterImpl(int locale);
    FormatterImpl(const FormatterImpl&) = delete;
    FormatterImpl& operator=(const FormatterImpl&) = delete;

    // The Formatter handles that share this state. A new state has none; the
    // handle that drops the count to 0 deletes the state.
    void AddHandle() { ++handles; }
    bool DropHandle() { return --handles == 0; }

    // Writes the ten digit units, no terminator.
    void GetNativeDigits(char16_t* digits) const;
    // Reads ten units, terminator or not. Failure, with nothing changed, when
    // two of them are equal.
    ErrorCode SetNativeDigits(const char16_t* digits);

    // The text getters copy into buffer of `size` units and always leave a
    // terminator in it: a text that does not fit is cut to size - 1 units.
    // A size of 0 writes nothing.
    void GetPositiveSign(char16_t* buffer, std::size_t size) const;
    void GetNegativeSign(char16_t* buffer, std::size_t size) const;
    void GetNumberGroupSeparator(char16_t* buffer, std::size_t size) const;
    void GetNumberDecimalSeparator(char16_t* buffer, std::size_t size) const;
    // An empty sign is accepted; a null one changes nothing.
    void SetPositiveSign(const char16_t* text);
    void SetNegativeSign(const char16_t* text);
    // Failure, with nothing changed, for a null or empty text.
    ErrorCode SetNumberGroupSeparator(const char16_t* text);
    ErrorCode SetNumberDecimalSeparator(const char16_t* text);

    int GetNumberDecimalDigits() const { return decimalDigits; }
    // Accepts 0 to 99.
    ErrorCode SetNumberDecimalDigits(int digits);
    // Returns the count; copies all sizes first when sizes is not null.
    std::size_t GetNumberGroupSizes(int* sizes) const;
    // count at least 1, every size but the last 1 to 9, the last 0 to 9.
    ErrorCode SetNumberGroupSizes(const int* sizes, int count);
    NumberFormat GetNumber() const { return numberFormat; }
    // Stored unchecked: a style outside 0 to 5 makes rendering fail.
    void SetNumber(NumberFormat format) { numberFormat = format; }

    int GetLocaleId() const { return localeId; }
    // 0 English, 1 Simplified Chinese.
    int GetLanguageIndex() const { return languageIndex; }
    const NumberTokenTree& NumberTokens() const { return numberTokens; }

    // Renders value into buffer by the number settings, with the mode bits of
    // formatting/render_number.h. Writes no terminator. Returns the number of
    // units written plus 1, so the caller goes on writing at the result minus
    // 1; or -1 when buffer is null, capacity is 0, the style is unknown or the
    // text does not fit (the digits need room for a sign and a terminator
    // besides: 1.00 needs a capacity of 6). `decimals`, when not negative,
    // takes the place of the decimal digits setting for this one number;
    // WholeNumber still wins over it. The settings never change.
    static constexpr int kSettingsDecimals = -1;
    std::int64_t RenderNumber(double value, char16_t* buffer, std::size_t capacity, unsigned mode,
                              int decimals = kSettingsDecimals) const;

    // Renders value, in `unit`, with the symbol that the request `symbol`
    // resolves to (0: `unit` itself). Failure for an unknown unit or symbol or
    // a buffer too short, UnitMismatch when the symbol's unit has other
    // dimensions. *converted, when not null, receives the value in the chosen
    // symbol's unit after a successful rendering.
    ErrorCode Format(double value, int unit, char16_t* buffer, std::size_t size, int symbol,
                     double* converted) const;
    // The same for a value in base units of `dims`; symbol 0 asks the
    // exponents for their group.
    ErrorCode Format(double value, const Dimensions& dims, char16_t* buffer, std::size_t size,
                     int symbol, double* converted) const;
    // The complete symbol id for a request: an explicit symbol as it stands;
    // else the unit type (for a group, its default unit or type 1) with its
    // default symbol or symbol 1.
    int ResolveSymbol(int id) const;
    int GetDefaultSymbol(int id) const;
    // Failure unless id names a symbol of the catalogue.
    ErrorCode SetDefaultSymbol(int id);
    int GetDefaultUnit(int id) const;
    // Failure unless id names a unit type; a symbol number is dropped.
    ErrorCode SetDefaultUnit(int id);

    // Symbol strings, by the complete symbol id that ResolveSymbol gives at
    // Format time. A formatting string renders in place of the catalogue's
    // symbol; strings of both kinds read back in Parse, before the general
    // scan. A null or empty text removes the string (Success, also when there
    // is none); the text already stored changes nothing. Failure, with
    // everything as it was, for an id that names no symbol, a malformed text,
    // one with the wrong placeholders for the symbol, or one whose literals
    // another string of this formatter already has.
    ErrorCode SetSymbolFormattingString(int symbol, const char16_t* text);
    ErrorCode SetSymbolParsingString(int symbol, const char16_t* text);
    // Copies the stored text with its terminator. NotSet without a string;
    // Failure, buffer untouched, for a null buffer or a size not above the
    // text's length.
    ErrorCode GetSymbolFormattingString(int symbol, char16_t* buffer, std::size_t size) const;
    ErrorCode GetSymbolParsingString(int symbol, char16_t* buffer, std::size_t size) const;

    // Reads text into value, in `unit`. ParseFailure for an unknown unit or a
    // text that does not read as a value of that unit; value is written only
    // on success.
    ErrorCode ParseInUnit(const char16_t* text, double& value, int unit) const;
    // Reads text into value, in base units of `dimensions`. A bare number takes
    // the default symbol of `group` (only its group field counts), or of the
    // group of `dimensions` when group is 0: Failure when there is none.
    ErrorCode ParseToBase(const char16_t* text, double& value, const Dimensions& dimensions,
                          int group) const;
    // The length of the number at the start of text by this formatter's
    // digits, signs and separators; 0 when none stands there, -1 when value is
    // null. Writes value and *flags (the NumberFlags seen) only for a number.
    // Most places of a text hold a unit or an operator, which the first look
    // turns away without a call.
    std::int64_t ScanNumber(const char16_t* text, double* value, std::uint32_t* flags) const {
        if (value == nullptr) return -1;
        // Only an empty sign could stand here, and a sign alone is no number;
        // no token begins with the terminator.
        if (text == nullptr || !MayStartToken(*text)) return 0;
        return ReadNumber(text, value, flags);
    }

private:
    using SymbolStrings = std::map<int, SymbolStringEntry>;  // by symbol id

    // The body of both setters, on one of the two maps.
    ErrorCode SetSymbolString(SymbolStrings& strings, int symbol, const char16_t* text);
    // The custom pass of a parse: reads the text through customDictionary,
    // behind the numbers of `leading` that stand at its start; `rest` is
    // the text behind them. Success with value set, ParseFailure when the
    // text read through a string but not as a value of `dimensions`, and
    // Failure, with no trace of the pass, when no string reads it.
    ErrorCode ParseThroughSymbolStrings(SymbolList& leading, const char16_t* rest, double& value,
                                        const Dimensions& dimensions) const;

    // The scanner behind ScanNumber's first look.
    std::int64_t ReadNumber(const char16_t* text, double* value, std::uint32_t* flags) const;
    // Erases the old text from NumberTokens, stores the new one, and inserts
    // it with code.
    void ReplaceToken(std::u16string& setting, const char16_t* text, int code);
    // Fills the scanner's table from NumberTokens and the settings.
    void IndexTokens();
    // Whether a token of some length may begin with unit: when not, the
    // scanner finds at most an empty sign there, and no number.
    bool MayStartToken(char16_t unit) const {
        return unit < 128 ? asciiTokens[unit] != kNoToken : otherTokenStarts;
    }
    // What NumberTokens finds at the start of text, which is not empty.
    int TokenAt(const char16_t* text) const {
        const char16_t unit = *text;
        if (unit < 128) {
            const std::int8_t code = asciiTokens[unit];
            if (code >= 0) return code;
            if (code == kNoToken) return emptyToken;
        } else if (!otherTokenStarts) {
            return emptyToken;
        }
        return numberTokens.FindLongest(text, nullptr);
    }

    std::array<char16_t, 10> nativeDigits;
    std::u16string positiveSign;
    std::u16string negativeSign;
    std::u16string groupSeparator;
    std::u16string decimalSeparator;
    NumberFormat numberFormat = NumberFormat::Number;
    int decimalDigits = 2;
    std::vector<int> groupSizes;  // nearest the decimal point first; the last repeats
    NumberTokenTree numberTokens;
    // The scanner asks for a token at every place of a text, and nearly
    // always at a unit that is a whole token or none: for the units below
    // 128 this table holds the token's code, kNoToken where no token begins,
    // and kLongerToken where a token of several units does, which NumberTokens
    // then reads. It follows every setter.
    static constexpr std::int8_t kNoToken = -1;
    static constexpr std::int8_t kLongerToken = -2;
    std::array<std::int8_t, 128> asciiTokens{};
    bool otherTokenStarts = false;       // some token begins with a unit of 128 or more
    int emptyToken = NumberToken::None;  // the code of the empty text: an empty sign
    SymbolStrings formatSymbolStrings;
    SymbolStrings parseSymbolStrings;
    // The paths of the objects of both maps; it points into them.
    CustomDictionary customDictionary;
    std::map<int, int> defaultSymbols;  // unit type id to symbol id
    std::map<int, int> defaultUnits;    // group id to unit type id
    int localeId;
    int languageIndex;
    int handles = 0;
};

}  // namespace Mensura

#endif  // MENSURA_FRAME_FORMATTER_IMPL_H
