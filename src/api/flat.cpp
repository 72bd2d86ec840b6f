// Every flat function of mensura.h: the C face of the library on its C++
// classes.
//
// The flat functions are called from C, which no exception may reach. What
// can throw behind them is an allocation that fails: it ends at the boundary
// as Failure, after the library has put its state back.
#include <algorithm>
#include <cstdint>
#include <limits>

#include "api/formatter_impl.h"
#include "catalogue/unit_catalog.h"
#include "mensura/mensura.h"
#include "mensura/mensura.hpp"

using Mensura::Converter;
using Mensura::ErrorCode;
using Mensura::Formatter;
using Mensura::NumberFormat;
using Mensura::UnitCatalog;

namespace {

template <typename Body>
int CallFromC(Body body) noexcept {
    try {
        return body();
    } catch (...) {
        return static_cast<int>(ErrorCode::Failure);
    }
}

// The catalogue's language index of `locale`, by the rule of the Formatter
// constructor: 2052 is Simplified Chinese (1); every other id, 0 and negative
// ones included, is English (0). Nothing is kept per locale id, so a caller
// that passes any number of distinct ids costs no memory and takes no lock.
constexpr int DisplayLanguageOf(int locale) {
    return locale == Mensura::FormatterImpl::kSimplifiedChinese ? 1 : 0;
}

int Code(ErrorCode code) {
    return static_cast<int>(code);
}

int ApplyNumberSetting(MensuraFormatter* formatter, int selector, void* data, size_t size);
int ApplyCheckedNumberSetting(MensuraFormatter* formatter, int selector, void* data, size_t size);
int ApplySymbolStringSetting(MensuraFormatter* formatter, int selector, int symbol,
                             MensuraChar16* data, size_t size);

}  // namespace

extern "C" {
// On a line of the instruction cache of its own, as Converter::Convert.
__attribute__((aligned(64))) int Convert(double value, int from, double* out, int to) {
    if (__builtin_expect(out == nullptr, 0)) return static_cast<int>(ErrorCode::Failure);
    return static_cast<int>(Mensura::UnitTable::Instance().Convert(value, from, *out, to));
}

double ConversionFactor(int from, int to) {
    return Converter::Factor(from, to);
}

size_t GetUnitGroups(int* ids) {
    return Converter::GetUnitGroups(ids);
}

size_t GetUnitTypes(int group, int* ids) {
    return Converter::GetUnitTypes(group, ids);
}

size_t GetUnitSymbols(int id, int* ids) {
    return UnitCatalog::Instance().ListUnitSymbols(id, ids);
}

size_t CopyUnitGroups(int* ids, size_t capacity) {
    return Converter::CopyUnitGroups(ids, capacity);
}

size_t CopyUnitTypes(int group, int* ids, size_t capacity) {
    return Converter::CopyUnitTypes(group, ids, capacity);
}

size_t CopyUnitSymbols(int id, int* ids, size_t capacity) {
    return Formatter::CopyUnitSymbols(id, ids, capacity);
}

int GetDisplayName(int locale, int id, MensuraChar16* buffer, size_t size) {
    if (buffer == nullptr) return Code(ErrorCode::Failure);
    return CallFromC([&] {
        return Code(
            UnitCatalog::Instance().CopyDisplayName(id, buffer, size, DisplayLanguageOf(locale)));
    });
}

int FindUnit(const MensuraChar16* text, int* unit) {
    if (unit == nullptr) return static_cast<int>(Mensura::ErrorCode::Failure);
    return static_cast<int>(Mensura::Formatter::FindUnit(text, *unit));
}

MensuraFormatter* CreateFormatter(int locale) {
    try {
        return new Formatter(locale);
    } catch (...) {
        return nullptr;  // out of memory
    }
}

void DestroyFormatter(MensuraFormatter* formatter) {
    delete formatter;
}

int Parse(MensuraFormatter* formatter, const MensuraChar16* text, double* value, int unit) {
    if (formatter == nullptr || text == nullptr || value == nullptr) {
        return Code(ErrorCode::Failure);
    }
    return CallFromC([&] { return Code(formatter->Parse(text, *value, unit)); });
}

int Format(MensuraFormatter* formatter, double value, int unit, MensuraChar16* buffer, size_t size,
           int symbol, double* converted) {
    if (formatter == nullptr || buffer == nullptr || converted == nullptr) {
        return Code(ErrorCode::Failure);
    }
    return CallFromC(
        [&] { return Code(formatter->Format(value, unit, buffer, size, symbol, converted)); });
}

int ConvertArray(const double* values, double* out, size_t count, int from, int to) {
    return Code(Converter::ConvertArray(values, out, count, from, to));
}

size_t ParseMany(MensuraFormatter* formatter, const MensuraChar16* texts, size_t count, int unit,
                 double* values, int* codes) {
    if (formatter == nullptr || texts == nullptr || values == nullptr) return 0;
    try {
        if (codes == nullptr) return formatter->ParseMany(texts, count, unit, values);
        // The codes pass through a small buffer of the C++ type, a run of
        // texts at a time.
        constexpr size_t kRun = 256;
        ErrorCode run[kRun];
        size_t read = 0;
        const MensuraChar16* text = texts;
        for (size_t done = 0; done < count;) {
            const size_t n = std::min(kRun, count - done);
            read += formatter->ParseMany(text, n, unit, values + done, run);
            for (size_t i = 0; i < n; ++i) {
                codes[done + i] = Code(run[i]);
                while (*text != 0) ++text;
                ++text;
            }
            done += n;
        }
        return read;
    } catch (...) {
        return 0;  // out of memory: a parse allocates only for very long texts
    }
}

int GetUnitDimensions(int id, int dimensions[7]) {
    if (dimensions == nullptr) return Code(ErrorCode::Failure);
    int exponents[7];
    if (Converter::GetUnitDimensions(id, exponents) != ErrorCode::Success) {
        return Code(ErrorCode::Failure);
    }
    std::copy(exponents, exponents + 7, dimensions);
    return Code(ErrorCode::Success);
}

int ExplainParse(MensuraFormatter* formatter, const MensuraChar16* text, int unit,
                 MensuraParseReport* report) {
    if (formatter == nullptr || text == nullptr || report == nullptr ||
        report->size < sizeof(MensuraParseReport)) {
        return Code(ErrorCode::Failure);
    }
    return CallFromC([&] {
        const Mensura::ParseReport found = formatter->ExplainParse(text, unit);
        MensuraParseReport out{};
        out.size = sizeof(MensuraParseReport);
        out.code = Code(found.code);
        out.reason = found.reason;
        out.start = found.start;
        out.length = found.length;
        std::copy(found.dimensions, found.dimensions + 7, out.dimensions);
        out.group = found.group;
        out.value = found.value;
        out.note = found.note ? 1 : 0;
        out.noteStart = found.noteStart;
        out.noteLength = found.noteLength;
        *report = out;
        return out.code;
    });
}

int FormatterReadingSetting(MensuraFormatter* formatter, int selector, int* value) {
    if (formatter == nullptr || value == nullptr) return Code(ErrorCode::Failure);
    switch (selector) {
        case MENSURA_GET_EVERYDAY_READING:
            *value = formatter->GetEverydayReading() ? 1 : 0;
            return Code(ErrorCode::Success);
        case MENSURA_SET_EVERYDAY_READING:
            if (*value != 0 && *value != 1) return Code(ErrorCode::Failure);
            return CallFromC([&] {
                formatter->SetEverydayReading(*value == 1);
                return Code(ErrorCode::Success);
            });
        default:
            return Code(ErrorCode::Failure);
    }
}

int FormatterNumberSetting(MensuraFormatter* formatter, int selector, void* data, size_t size) {
    return CallFromC([&] { return ApplyNumberSetting(formatter, selector, data, size); });
}

int FormatterNumberSettingChecked(MensuraFormatter* formatter, int selector, void* data,
                                  size_t size) {
    return CallFromC([&] { return ApplyCheckedNumberSetting(formatter, selector, data, size); });
}

int FormatterSymbolStringSetting(MensuraFormatter* formatter, int selector, int symbol,
                                 MensuraChar16* data, size_t size) {
    return CallFromC(
        [&] { return ApplySymbolStringSetting(formatter, selector, symbol, data, size); });
}

}  // extern "C"

namespace {

int ApplyNumberSetting(MensuraFormatter* formatter, int selector, void* data, size_t size) {
    if (formatter == nullptr || data == nullptr) return Code(ErrorCode::Failure);
    auto* const text = static_cast<char16_t*>(data);
    auto* const number = static_cast<std::int32_t*>(data);
    switch (selector) {
        case MENSURA_GET_NATIVE_DIGITS:
            formatter->GetNativeDigits(text);
            return Code(ErrorCode::Success);
        case MENSURA_SET_NATIVE_DIGITS:
        case MENSURA_SET_NATIVE_DIGITS_TOO:
            return Code(formatter->SetNativeDigits(text));
        case MENSURA_GET_NEGATIVE_SIGN:
            formatter->GetNegativeSign(text, size);
            return Code(ErrorCode::Success);
        case MENSURA_SET_NEGATIVE_SIGN:
            formatter->SetNegativeSign(text);
            return Code(ErrorCode::Success);
        case MENSURA_GET_DECIMAL_DIGITS:
            *number = formatter->GetNumberDecimalDigits();
            return Code(ErrorCode::Success);
        case MENSURA_SET_DECIMAL_DIGITS:
            return Code(formatter->SetNumberDecimalDigits(*number));
        case MENSURA_GET_DECIMAL_SEPARATOR:
            formatter->GetNumberDecimalSeparator(text, size);
            return Code(ErrorCode::Success);
        case MENSURA_SET_DECIMAL_SEPARATOR:
            return Code(formatter->SetNumberDecimalSeparator(text));
        case MENSURA_GET_NUMBER_FORMAT:
            *number = static_cast<std::int32_t>(formatter->GetNumber());
            return Code(ErrorCode::Success);
        case MENSURA_SET_NUMBER_FORMAT:
            formatter->SetNumber(static_cast<NumberFormat>(*number));
            return Code(ErrorCode::Success);
        case MENSURA_GET_GROUP_SEPARATOR:
            formatter->GetNumberGroupSeparator(text, size);
            return Code(ErrorCode::Success);
        case MENSURA_SET_GROUP_SEPARATOR:
            return Code(formatter->SetNumberGroupSeparator(text));
        case MENSURA_GET_GROUP_SIZES:
            // size 0 asks for the count; any other size receives all the sizes.
            if (size == 0) {
                *static_cast<std::uint64_t*>(data) = formatter->GetNumberGroupSizes(nullptr);
            } else {
                formatter->GetNumberGroupSizes(number);
            }
            return Code(ErrorCode::Success);
        case MENSURA_SET_GROUP_SIZES:
            if (size > static_cast<size_t>(std::numeric_limits<int>::max())) {
                return Code(ErrorCode::Failure);
            }
            return Code(formatter->SetNumberGroupSizes(number, static_cast<int>(size)));
        case MENSURA_GET_POSITIVE_SIGN:
            formatter->GetPositiveSign(text, size);
            return Code(ErrorCode::Success);
        case MENSURA_SET_POSITIVE_SIGN:
            formatter->SetPositiveSign(text);
            return Code(ErrorCode::Success);
    }
    return Code(ErrorCode::Failure);
}

// Whether text holds a terminator within its first `units` units.
bool EndsWithin(const char16_t* text, size_t units) {
    for (size_t i = 0; i < units; ++i) {
        if (text[i] == 0) return true;
    }
    return false;
}

// The selectors of ApplyNumberSetting with size as the bytes that data
// holds: each checks it first, and hands on only what fits.
int ApplyCheckedNumberSetting(MensuraFormatter* formatter, int selector, void* data, size_t size) {
    if (formatter == nullptr || data == nullptr) return Code(ErrorCode::Failure);
    const size_t units = size / sizeof(char16_t);
    const size_t numbers = size / sizeof(std::int32_t);
    switch (selector) {
        case MENSURA_GET_NATIVE_DIGITS:
        case MENSURA_SET_NATIVE_DIGITS:
        case MENSURA_SET_NATIVE_DIGITS_TOO:
            if (units < 10) return Code(ErrorCode::Failure);
            break;
        case MENSURA_GET_NEGATIVE_SIGN:
        case MENSURA_GET_DECIMAL_SEPARATOR:
        case MENSURA_GET_GROUP_SEPARATOR:
        case MENSURA_GET_POSITIVE_SIGN:
            if (units == 0) return Code(ErrorCode::Failure);
            return ApplyNumberSetting(formatter, selector, data, units);
        case MENSURA_SET_NEGATIVE_SIGN:
        case MENSURA_SET_DECIMAL_SEPARATOR:
        case MENSURA_SET_GROUP_SEPARATOR:
        case MENSURA_SET_POSITIVE_SIGN:
            if (!EndsWithin(static_cast<const char16_t*>(data), units)) {
                return Code(ErrorCode::Failure);
            }
            break;
        case MENSURA_GET_DECIMAL_DIGITS:
        case MENSURA_SET_DECIMAL_DIGITS:
        case MENSURA_GET_NUMBER_FORMAT:
        case MENSURA_SET_NUMBER_FORMAT:
            if (numbers == 0) return Code(ErrorCode::Failure);
            break;
        case MENSURA_GET_GROUP_SIZES:
            if (formatter->GetNumberGroupSizes(nullptr) > numbers) return Code(ErrorCode::Failure);
            formatter->GetNumberGroupSizes(static_cast<std::int32_t*>(data));
            return Code(ErrorCode::Success);
        case MENSURA_SET_GROUP_SIZES:
            // Above INT_MAX sizes, ApplyNumberSetting refuses the count.
            if (size == 0 || size % sizeof(std::int32_t) != 0) return Code(ErrorCode::Failure);
            return ApplyNumberSetting(formatter, selector, data, numbers);
        default:
            return Code(ErrorCode::Failure);
    }
    // The digits, the texts to set and the numbers: ApplyNumberSetting reads
    // or writes no more than what was checked.
    return ApplyNumberSetting(formatter, selector, data, size);
}

int ApplySymbolStringSetting(MensuraFormatter* formatter, int selector, int symbol,
                             MensuraChar16* data, size_t size) {
    if (formatter == nullptr || data == nullptr) return Code(ErrorCode::Failure);
    switch (selector) {
        case MENSURA_GET_FORMATTING_STRING:
            return Code(formatter->GetSymbolFormattingString(symbol, data, size));
        case MENSURA_SET_FORMATTING_STRING:
            return Code(formatter->SetSymbolFormattingString(symbol, data));
        case MENSURA_GET_PARSING_STRING:
            return Code(formatter->GetSymbolParsingString(symbol, data, size));
        case MENSURA_SET_PARSING_STRING:
            return Code(formatter->SetSymbolParsingString(symbol, data));
    }
    return Code(ErrorCode::Failure);
}

}  // namespace
