// The state behind a Formatter: what is per-formatter and nothing else. The
// number settings object, the per-formatter defaults, the symbol strings and
// the locale. Every Formatter that shares it forwards to it.
#ifndef MENSURA_API_FORMATTER_IMPL_H
#define MENSURA_API_FORMATTER_IMPL_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "base/dimensions.h"
#include "mensura/mensura.hpp"
#include "notations/symbol_strings.h"
#include "numbers/number_settings.h"

namespace Mensura {

class EverydayVocabulary;
class IParseSymbol;
class SymbolList;

class FormatterImpl {
public:
    static constexpr int kEnglish = 1033;
    static constexpr int kSimplifiedChinese = 2052;

    // Default settings for a locale: 2052 is Simplified Chinese, every other
    // id English (1033). The number settings are the same for both.
    explicit FormatterImpl(int locale)
        : localeId(locale == kSimplifiedChinese ? kSimplifiedChinese : kEnglish),
          languageIndex(locale == kSimplifiedChinese ? 1 : 0) {}
    FormatterImpl(const FormatterImpl&) = delete;
    FormatterImpl& operator=(const FormatterImpl&) = delete;

    // The Formatter handles that share this state. A new state has none; the
    // handle that drops the count to 0 deletes the state.
    void AddHandle() { ++handles; }
    bool DropHandle() { return --handles == 0; }

    int GetLocaleId() const { return localeId; }
    // 0 English, 1 Simplified Chinese.
    int GetLanguageIndex() const { return languageIndex; }

    // Digits, signs, separators, grouping, decimals and style.
    NumberSettings numbers;

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

    // What the everyday reading's short way made of a text.
    enum class ShortWay { Read, Refused, Declined };

    // Symbol strings of the catalogue's symbol `symbol` in this formatter's
    // language: see SymbolStrings.
    ErrorCode SetSymbolString(SymbolStrings::Use use, int symbol, const char16_t* text);
    ErrorCode GetSymbolString(SymbolStrings::Use use, int symbol, char16_t* buffer,
                              std::size_t size) const {
        return symbolStrings.Get(use, symbol, buffer, size);
    }

    struct ScanTrace;
    // Reads text into value, in `unit`. ParseFailure for an unknown unit or a
    // text that does not read as a value of that unit; value is written only
    // on success. A trace, when given, takes the tokens of every reading and
    // turns the short ways off: the text goes through the list.
    ErrorCode ParseInUnit(const char16_t* text, double& value, int unit,
                          ScanTrace* trace = nullptr) const;
    // Reads text into value, in base units of `dimensions`. A bare number takes
    // the default symbol of `group` (only its group field counts), or of the
    // group of `dimensions` when group is 0: Failure when there is none. A
    // trace as for ParseInUnit.
    ErrorCode ParseToBase(const char16_t* text, double& value, const Dimensions& dimensions,
                          int group, ScanTrace* trace = nullptr) const;

    // Whether a text that the catalogue's reading refuses is read again as a
    // person in the trade writes it, and a few symbols take their everyday
    // meaning (catalogue/everyday.inc).
    bool GetEverydayReading() const { return everydayVocabulary != nullptr; }
    // Turning it on makes the everyday vocabulary, the first time, so that
    // no parse has to.
    void SetEverydayReading(bool on);

    // Parses as ParseInUnit does, through the list, and says why: the fields
    // of ParseReport.
    ParseReport Explain(const char16_t* text, int unit) const;

    // What a scan saw, for a report: each number, key or mark with where it
    // stands in the text, and where the scan stopped when it failed.
    struct ScanTrace {
        struct Token {
            std::size_t start;
            std::size_t length;
            const IParseSymbol* symbol;  // null for a number
        };
        std::vector<Token> tokens;
        std::size_t failedAt = static_cast<std::size_t>(-1);
    };

private:
    // One reading of the whole text: the catalogue's (everyday null), the
    // catalogue's with everyday meanings, or with the everyday forms too.
    ErrorCode ReadText(const char16_t* text, double& value, const Dimensions& dimensions, int group,
                       const EverydayVocabulary* everyday, bool forms,
                       ScanTrace* trace = nullptr) const;
    // What the short way read of a text that it left to the list, in order,
    // for the list to take over rather than read again.
    struct ReadAhead {
        struct Token {
            const IParseSymbol* symbol;  // null for a number
            double number;
            std::uint32_t flags;
        };
        // A text with more tokens is left to the list when they are read.
        static constexpr std::size_t kTokens = 16;
        Token tokens[kTokens];
        std::size_t count = 0;
        const char16_t* cursor = nullptr;  // where the scan goes on
        const char16_t* fence = nullptr;   // the end of a key cut before an exponent
    };
    // The commonest texts, one number and a chain of unit keys joined by
    // "·", "/" and blanks, with "²", "³" and "^n" behind them ("5.5 ft",
    // "5 kg·m/s²", "9.81 m/s^2"), read from cursor, behind the number: true,
    // with value written, when the text is that and reads as a value of
    // `dimensions`; false, with nothing written, for any other text, which
    // the list then reads, taking over from `ahead` what was read. What it
    // writes is what the scan and evaluation make of such a text, without
    // building the list.
    bool ReadNumberAndUnit(const char16_t* cursor, double number, double& value,
                           const Dimensions& dimensions, const EverydayVocabulary* everyday,
                           ReadAhead& ahead) const;
    // A typed text of the compound marks, feet and inches ("5′-6 1/2″"),
    // degrees and bearings ("N 45°30′ E"): the list holds what was read of
    // its start, numbers and symbols as the scan lays them out, and cursor
    // stands behind them. True, with value written in base units, when the
    // marks read it without the list as the evaluation reads it; false, with
    // nothing written and the list as it was, for anything else.
    bool ReadTypedMarks(const char16_t* cursor, SymbolList& read, double& value,
                        const Dimensions& dimensions, const EverydayVocabulary* everyday) const;
    // Lays the text out from cursor into the list. `fence`, when given, is
    // the end of a key that was cut before an exponent: up to there, keys
    // are looked up no further. ParseFailure at a place that holds no number
    // and no key. A trace, when given, is told of every element and of that
    // place.
    ErrorCode Scan(const char16_t* text, const char16_t* cursor, const char16_t* fence,
                   SymbolList& list, const EverydayVocabulary* everyday, bool forms,
                   ScanTrace* trace) const;

    SymbolStrings symbolStrings;
    std::map<int, int> defaultSymbols;  // unit type id to symbol id
    std::map<int, int> defaultUnits;    // group id to unit type id
    int localeId;
    int languageIndex;
    int handles = 0;
    // The everyday vocabulary while the everyday reading is on, else null.
    const EverydayVocabulary* everydayVocabulary = nullptr;

    // Both everyday readings at once, without a list, for the texts of a few
    // shapes: "number unit", a sum ("5 ft 6 in"), a compact bearing
    // ("N45-30E") and a vulgar fraction before the double prime ("5′6½″").
    // Read, with value written, or Refused where ParseToBase reads the value
    // or refuses the text with ParseFailure; Declined, with nothing written,
    // for any other text. The caller's symbol strings must be empty.
    ShortWay ReadEverydayShape(const char16_t* text, double& value, const Dimensions& dimensions,
                               const EverydayVocabulary& everyday) const;
};

}  // namespace Mensura

#endif  // MENSURA_API_FORMATTER_IMPL_H
