// Every flat function of mensura.h at its edges: null pointers, sizes 0, 1
// and SIZE_MAX, the ids 0, -1 and 0x7fffffff, a group or a symbol id where a
// unit type is asked, and unknown selectors. Each row names the documented
// result and the bytes that the call writes from the start of its output;
// guard bytes around the output show that it writes nothing else, and a
// snapshot of the formatter's settings that a call which fails, or only
// reads, changes none of them. SIZE_MAX goes with a small buffer only where
// the function takes the size as a capacity that the case stays well within.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "mensura/mensura.h"

namespace {

using Mensura::kFoot;
using Mensura::kLength;
using Mensura::kMeter;
using Mensura::kSquareMeter;

constexpr std::size_t kMax = SIZE_MAX;
constexpr int kFootName = 0x102017;                      // symbol 1 of the foot, "foot"
constexpr int kFt = 0x202017;                            // symbol 2 of the foot, "ft"
constexpr int kBadIds[] = {0, -1, 0x7fffffff, kLength};  // no unit type: none, none, none, a group
constexpr std::size_t kGuard = 64;
constexpr std::size_t kRoom = 320;  // the most a call writes: the 68 group ids
constexpr unsigned char kSentinel = 0xA5;
constexpr std::size_t kReport = sizeof(MensuraParseReport);

using Call = std::function<double(MensuraFormatter*, unsigned char*)>;
using Prepare = std::function<void(unsigned char*)>;

struct Row {
    std::string what;
    Call call;
    double result;              // the code, count or factor returned
    std::size_t writes;         // bytes written from the start of the output
    bool sets = false;          // a setter that succeeds: the settings may change
    Prepare prepare = nullptr;  // puts the input in the output area first
    bool exact = true;          // writes is exact, not only the most it may write
};

int* I(unsigned char* at) {
    return reinterpret_cast<int*>(at);
}
double* D(unsigned char* at) {
    return reinterpret_cast<double*>(at);
}
MensuraChar16* T(unsigned char* at) {
    return reinterpret_cast<MensuraChar16*>(at);
}

Prepare PutText(std::u16string text) {
    return [text](unsigned char* at) {
        std::memcpy(at, text.c_str(), (text.size() + 1) * sizeof(char16_t));
    };
}
// Puts values, one after another, at the start of the output area.
template <typename Value>
Prepare Put(std::vector<Value> values) {
    return [values](unsigned char* at) {
        std::memcpy(at, values.data(), values.size() * sizeof(Value));
    };
}
Prepare PutReportSize(std::size_t size) {
    return Put<std::size_t>({size});
}

// A row's call; CALL_WITH takes a variable of the loop that makes the row.
#define CALL_WITH(value, expr)                                  \
    [value](MensuraFormatter* f, unsigned char* at) -> double { \
        static_cast<void>(f);                                   \
        static_cast<void>(at);                                  \
        return static_cast<double>(expr);                       \
    }
#define CALL(expr) CALL_WITH(, expr)

// Every setting of a formatter as one text, read back through the flat
// getters.
std::u16string Settings(MensuraFormatter* f) {
    std::u16string all;
    char16_t text[64];
    FormatterNumberSetting(f, MENSURA_GET_NATIVE_DIGITS, text, 0);
    all.append(text, 10);
    for (int selector : {3, 7, 11, 15}) {
        FormatterNumberSetting(f, selector, text, 64);
        all += text;
        all += u'|';
    }
    int number = 0;
    for (int selector : {5, 9}) {
        FormatterNumberSetting(f, selector, &number, 0);
        all += static_cast<char16_t>(number);
    }
    std::uint64_t count = 0;
    FormatterNumberSetting(f, MENSURA_GET_GROUP_SIZES, &count, 0);
    std::vector<int> sizes(count);
    FormatterNumberSetting(f, MENSURA_GET_GROUP_SIZES, sizes.data(), 1);
    for (int size : sizes) all += static_cast<char16_t>(u'0' + size);
    FormatterReadingSetting(f, MENSURA_GET_EVERYDAY_READING, &number);
    all += static_cast<char16_t>(u'0' + number);
    for (int selector : {1, 3}) {
        text[0] = 0;
        all += static_cast<char16_t>(
            u'0' + FormatterSymbolStringSetting(f, selector, kFootName, text, 64));
        all += text;
    }
    return all;
}

void Run(const Row& row) {
    SCOPED_TRACE(row.what);
    MensuraFormatter* f = CreateFormatter(1033);
    ASSERT_NE(f, nullptr);
    alignas(16) unsigned char area[kGuard + kRoom + kGuard];
    std::memset(area, kSentinel, sizeof area);
    unsigned char* const at = area + kGuard;
    if (row.prepare) row.prepare(at);
    unsigned char before[sizeof area];
    std::memcpy(before, area, sizeof area);
    const std::u16string settings = Settings(f);

    EXPECT_EQ(row.call(f, at), row.result);

    long stray = -1;
    for (std::size_t i = 0; i < sizeof area && stray < 0; ++i) {
        const bool allowed = i >= kGuard && i < kGuard + row.writes;
        if (!allowed && area[i] != before[i]) stray = static_cast<long>(i) - long{kGuard};
    }
    EXPECT_EQ(stray, -1) << "a byte written outside its place, at this offset";
    if (row.exact && row.writes > 0) {
        EXPECT_NE(area[kGuard + row.writes - 1], before[kGuard + row.writes - 1])
            << "the last byte it should write is untouched";
    }
    if (!row.sets) {
        EXPECT_EQ(Settings(f), settings) << "the settings changed";
    }
    DestroyFormatter(f);
}

void RunAll(const std::vector<Row>& rows) {
    for (const Row& row : rows) Run(row);
}

// Whether CreateFormatter makes a formatter for the locale id.
bool Creates(int locale) {
    MensuraFormatter* made = CreateFormatter(locale);
    const bool ok = made != nullptr;
    DestroyFormatter(made);
    return ok;
}

std::string Hex(int id) {
    char text[16];
    std::snprintf(text, sizeof text, "%#x", static_cast<unsigned>(id));
    return text;
}

TEST(FlatBoundary, Conversions) {
    std::vector<Row> rows = {
        {"Convert, null out, before any lookup", CALL(Convert(1.0, 0, nullptr, kMeter)), 1, 0},
        {"Convert, a symbol id", CALL(Convert(1.0, kFootName, D(at), kMeter)), 0, 8},
        {"Convert, equal unknown ids copy", CALL(Convert(2.0, -1, D(at), -1)), 0, 8},
        {"Convert, other dimensions leave the base value",
         CALL(Convert(2.0, kFoot, D(at), kSquareMeter)), 4, 8},
        {"ConversionFactor, a symbol id", CALL(ConversionFactor(kFootName, kMeter)), 0.3048, 0},
        {"ConversionFactor, equal unknown ids", CALL(ConversionFactor(0, 0)), 1.0, 0},
        {"ConversionFactor, offset scales", CALL(ConversionFactor(0x2A002, 0x2A003)), 0.0, 0},
        {"ConvertArray, null values", CALL(ConvertArray(nullptr, D(at), 1, kFoot, kMeter)), 1, 0},
        {"ConvertArray, null out", CALL(ConvertArray(D(at), nullptr, 1, kFoot, kMeter)), 1, 0},
        {"ConvertArray, SIZE_MAX of nothing",
         CALL(ConvertArray(nullptr, nullptr, kMax, kFoot, kMeter)), 1, 0},
        {"ConvertArray, count 0 of nothing", CALL(ConvertArray(nullptr, nullptr, 0, kFoot, kMeter)),
         0, 0},
        {"ConvertArray, SIZE_MAX across dimensions writes nothing",
         CALL(ConvertArray(D(at), D(at), kMax, kFoot, kSquareMeter)), 4, 0, false,
         Put<int>({0, 0})},
        {"ConvertArray, count 1", CALL(ConvertArray(D(at) + 1, D(at), 1, kFoot, kMeter)), 0, 8,
         false, Put<double>({-7.0, 1.0})},
        {"ConvertArray, equal unknown ids copy", CALL(ConvertArray(D(at) + 1, D(at), 1, -1, -1)), 0,
         8, false, Put<double>({-7.0, 2.0})},
        {"GetUnitDimensions, null array", CALL(GetUnitDimensions(kFoot, nullptr)), 1, 0},
        {"GetUnitDimensions, a group", CALL(GetUnitDimensions(kLength, I(at))), 0, 28},
        {"GetUnitDimensions, a symbol", CALL(GetUnitDimensions(kFt, I(at))), 0, 28},
        {"GetUnitDimensions, a symbol field alone", CALL(GetUnitDimensions(0x100000, I(at))), 1, 0},
        {"GetUnitDimensions, no such type", CALL(GetUnitDimensions(0x2FFF, I(at))), 1, 0},
        {"GetUnitDimensions, no such symbol", CALL(GetUnitDimensions(0x9902017, I(at))), 1, 0},
        {"GetUnitDimensions, bits above the symbol",
         CALL(GetUnitDimensions(static_cast<int>(0x80002017u), I(at))), 1, 0},
    };
    // The output, then the two values to convert.
    const Prepare twoValues = Put<double>({0.0, 0.0, 1.0, 2.0});
    for (int id : kBadIds) {
        const std::string name = " " + Hex(id);
        rows.push_back(
            {"Convert from" + name, CALL_WITH(id, Convert(1.0, id, D(at), kMeter)), 4, 0});
        rows.push_back(
            {"ConversionFactor from" + name, CALL_WITH(id, ConversionFactor(id, kMeter)), 0.0, 0});
        rows.push_back({"ConvertArray from" + name,
                        CALL_WITH(id, ConvertArray(D(at) + 2, D(at), 2, id, kMeter)), 4, 0, false,
                        twoValues});
        rows.push_back({"ConvertArray into" + name,
                        CALL_WITH(id, ConvertArray(D(at) + 2, D(at), 2, kMeter, id)), 4, 0, false,
                        twoValues});
        if (id != kLength) {
            rows.push_back(
                {"GetUnitDimensions of" + name, CALL_WITH(id, GetUnitDimensions(id, I(at))), 1, 0});
        }
    }
    RunAll(rows);
}

TEST(FlatBoundary, Formatters) {
    std::vector<Row> rows = {
        {"DestroyFormatter, null", CALL((DestroyFormatter(nullptr), 0)), 0, 0},
    };
    for (int locale : {0, -1, 0x7fffffff, 2052}) {
        rows.push_back(
            {"CreateFormatter " + Hex(locale), CALL_WITH(locale, Creates(locale)), 1, 0});
    }
    RunAll(rows);
}

// Both number setting functions refuse unknown selectors, and null data
// for every selector.
void AddSelectorRefusals(std::vector<Row>& rows,
                         int (*setting)(MensuraFormatter*, int, void*, std::size_t)) {
    for (int selector : {-1, 17, 0x7fffffff}) {
        rows.push_back(
            {"selector " + Hex(selector), CALL_WITH(=, setting(f, selector, at, 64)), 1, 0});
    }
    for (int selector = 0; selector <= 16; ++selector) {
        rows.push_back({"null data, selector " + std::to_string(selector),
                        CALL_WITH(=, setting(f, selector, nullptr, 64)), 1, 0});
    }
}

// FormatterNumberSetting keeps its sizes as documented, hazards included.
TEST(FlatBoundary, NumberSetting) {
    std::vector<Row> rows = {
        {"null formatter", CALL(FormatterNumberSetting(nullptr, 5, at, 4)), 1, 0},
        {"digits, size 0 writes ten units", CALL(FormatterNumberSetting(f, 0, at, 0)), 0, 20},
        {"sign, size 0 writes nothing", CALL(FormatterNumberSetting(f, 3, at, 0)), 0, 0},
        {"sign, size 1 the terminator", CALL(FormatterNumberSetting(f, 3, at, 1)), 0, 2},
        {"sign, size SIZE_MAX", CALL(FormatterNumberSetting(f, 3, at, kMax)), 0, 4},
        {"decimal digits, size 0", CALL(FormatterNumberSetting(f, 5, at, 0)), 0, 4},
        {"100 decimal digits", CALL(FormatterNumberSetting(f, 6, at, 4)), 1, 0, false,
         Put<int>({100})},
        {"an empty decimal separator", CALL(FormatterNumberSetting(f, 8, at, 2)), 1, 0, false,
         PutText(u"")},
        {"two equal digits", CALL(FormatterNumberSetting(f, 1, at, 20)), 1, 0, false,
         PutText(u"0123456788")},
        {"group sizes, size 0 writes a uint64_t count", CALL(FormatterNumberSetting(f, 13, at, 0)),
         0, 8},
        {"group sizes, size 1 writes them all", CALL(FormatterNumberSetting(f, 13, at, 1)), 0, 4},
        {"set group sizes, size 0", CALL(FormatterNumberSetting(f, 14, at, 0)), 1, 0, false,
         Put<int>({3})},
        {"set group sizes, size above INT_MAX",
         CALL(FormatterNumberSetting(f, 14, at, std::size_t{1} << 31)), 1, 0, false, Put<int>({3})},
        {"set group sizes, size 1 counts one int", CALL(FormatterNumberSetting(f, 14, at, 1)), 0, 0,
         true, Put<int>({4, 99})},
    };
    AddSelectorRefusals(rows, FormatterNumberSetting);
    RunAll(rows);
}

// FormatterNumberSettingChecked: size is the bytes of data, for every selector.
TEST(FlatBoundary, NumberSettingChecked) {
    const auto checked = [](int selector, std::size_t size) {
        return [selector, size](MensuraFormatter* f, unsigned char* at) {
            return double(FormatterNumberSettingChecked(f, selector, at, size));
        };
    };
    std::vector<Row> rows = {
        {"null formatter", CALL(FormatterNumberSettingChecked(nullptr, 5, at, 4)), 1, 0},
        {"digits, 19 bytes", checked(0, 19), 1, 0},
        {"digits, 20 bytes", checked(0, 20), 0, 20},
        {"digits, SIZE_MAX", checked(0, kMax), 0, 20},
        {"set digits, 20 bytes", checked(1, 20), 0, 0, true, PutText(u"9876543210")},
        {"set digits too, 19 bytes", checked(2, 19), 1, 0, false, PutText(u"9876543210")},
        {"two equal digits", checked(2, 20), 1, 0, false, PutText(u"0123456788")},
        {"sign, 2 bytes: the terminator", checked(3, 2), 0, 2},
        {"sign, SIZE_MAX", checked(3, kMax), 0, 4},
        {"group separator, 3 bytes: one unit", checked(11, 3), 0, 2},
        {"positive sign, SIZE_MAX: empty", checked(15, kMax), 0, 2},
        {"set sign, no terminator in 2 units", checked(4, 4), 1, 0, false, PutText(u"~~")},
        {"set sign, 6 bytes", checked(4, 6), 0, 0, true, PutText(u"~~")},
        {"set sign, SIZE_MAX", checked(4, kMax), 0, 0, true, PutText(u"~~")},
        {"set positive sign, 1 byte", checked(16, 1), 1, 0, false, PutText(u"")},
        {"set positive sign empty, 2 bytes", checked(16, 2), 0, 0, true, PutText(u"")},
        {"set decimal separator empty, 2 bytes", checked(8, 2), 1, 0, false, PutText(u"")},
        {"set group separator, 5 bytes", checked(12, 5), 1, 0, false, PutText(u"''")},
        {"decimal digits, 3 bytes", checked(5, 3), 1, 0},
        {"decimal digits, 4 bytes", checked(5, 4), 0, 4},
        {"set decimal digits, 4 bytes", checked(6, 4), 0, 0, true, Put<int>({5})},
        {"set 100 decimal digits", checked(6, 4), 1, 0, false, Put<int>({100})},
        {"number format, SIZE_MAX", checked(9, kMax), 0, 4},
        {"group sizes, 3 bytes", checked(13, 3), 1, 0},
        {"group sizes, 4 bytes", checked(13, 4), 0, 4},
        {"group sizes, SIZE_MAX", checked(13, kMax), 0, 4},
        {"set group sizes, 6 bytes", checked(14, 6), 1, 0, false, Put<int>({3, 2})},
        {"set group sizes, SIZE_MAX", checked(14, kMax), 1, 0, false, Put<int>({3, 2})},
        {"set group sizes, above INT_MAX ints", checked(14, kMax & ~std::size_t{3}), 1, 0, false,
         Put<int>({3, 2})},
        {"set group sizes, 8 bytes", checked(14, 8), 0, 0, true, Put<int>({3, 2})},
        {"set group sizes, 4 bytes of 10", checked(14, 4), 1, 0, false, Put<int>({10})},
    };
    for (int selector : {0, 1, 3, 4, 5, 6, 13, 14}) {
        for (std::size_t size : {0, 1}) {
            rows.push_back(
                {"selector " + std::to_string(selector) + ", size " + std::to_string(size),
                 checked(selector, size), 1, 0, false, Put<int>({3, 0})});
        }
    }
    AddSelectorRefusals(rows, FormatterNumberSettingChecked);
    RunAll(rows);
}

TEST(FlatBoundary, SymbolStringAndReadingSettings) {
    // Sets "{0} xx" on the foot's name, then reads it into `size` units.
    const auto setThenGet = [](std::size_t size) {
        return [size](MensuraFormatter* f, unsigned char* at) {
            const std::u16string text = u"{0} xx";
            std::u16string copy = text;
            if (FormatterSymbolStringSetting(f, 2, kFootName, copy.data(), 0) != 0) return -1.0;
            return double(FormatterSymbolStringSetting(f, 1, kFootName, T(at), size));
        };
    };
    std::vector<Row> rows = {
        {"null formatter", CALL(FormatterSymbolStringSetting(nullptr, 1, kFootName, T(at), 64)), 1,
         0},
        {"null data", CALL(FormatterSymbolStringSetting(f, 1, kFootName, nullptr, 64)), 1, 0},
        {"get none", CALL(FormatterSymbolStringSetting(f, 1, kFootName, T(at), 64)), 3, 0},
        {"set, size 0 is not read", CALL(FormatterSymbolStringSetting(f, 2, kFootName, T(at), 0)),
         0, 0, true, PutText(u"{0} xx")},
        {"set a malformed text", CALL(FormatterSymbolStringSetting(f, 4, kFootName, T(at), 0)), 1,
         0, false, PutText(u"{0 xx")},
        {"get, size 0", setThenGet(0), 1, 0, true},
        {"get, size 6", setThenGet(6), 1, 0, true},
        {"get, size 7", setThenGet(7), 0, 14, true},
        {"get, SIZE_MAX", setThenGet(kMax), 0, 14, true},
        {"reading, null formatter", CALL(FormatterReadingSetting(nullptr, 1, I(at))), 1, 0},
        {"reading, null value", CALL(FormatterReadingSetting(f, 1, nullptr)), 1, 0},
        {"reading, get", CALL(FormatterReadingSetting(f, 1, I(at))), 0, 4},
        {"reading, set 2", CALL(FormatterReadingSetting(f, 2, I(at))), 1, 0, false, Put<int>({2})},
        {"reading, set -1", CALL(FormatterReadingSetting(f, 2, I(at))), 1, 0, false,
         Put<int>({-1})},
    };
    for (int selector : {0, 5, -1, 0x7fffffff}) {
        rows.push_back(
            {"symbol string selector " + Hex(selector),
             CALL_WITH(selector, FormatterSymbolStringSetting(f, selector, kFootName, T(at), 64)),
             1, 0, false, PutText(u"{0} xx")});
        rows.push_back({"reading selector " + Hex(selector),
                        CALL_WITH(selector, FormatterReadingSetting(f, selector, I(at))), 1, 0,
                        false, Put<int>({1})});
    }
    // No symbol string on anything but a symbol id: none to read, and
    // setting one fails.
    for (int id : {0, -1, 0x7fffffff, kLength, kFoot}) {
        rows.push_back({"get on " + Hex(id),
                        CALL_WITH(id, FormatterSymbolStringSetting(f, 3, id, T(at), 64)), 3, 0});
        rows.push_back({"set on " + Hex(id),
                        CALL_WITH(id, FormatterSymbolStringSetting(f, 2, id, T(at), 64)), 1, 0,
                        false, PutText(u"{0} xx")});
    }
    RunAll(rows);
}

// The rendering "1.50 foot" or "1.50 meter" with its terminator, after the
// converted value: Format's output is laid out as a double, then the text.
constexpr std::size_t kFootText = 8 + 2 * 10;
constexpr std::size_t kMeterText = 8 + 2 * 11;

TEST(FlatBoundary, TextAndParse) {
    const auto format = [](int unit, int symbol, std::size_t size) {
        return [unit, symbol, size](MensuraFormatter* f, unsigned char* at) {
            return double(Format(f, 1.5, unit, T(at + 8), size, symbol, D(at)));
        };
    };
    const auto parse = [](int unit) {
        return [unit](MensuraFormatter* f, unsigned char* at) {
            return double(Parse(f, u"5 ft", D(at), unit));
        };
    };
    const auto explain = [](int unit) {
        return [unit](MensuraFormatter* f, unsigned char* at) {
            return double(
                ExplainParse(f, u"5 ft", unit, reinterpret_cast<MensuraParseReport*>(at)));
        };
    };
    std::vector<Row> rows = {
        {"Format, null formatter", CALL(Format(nullptr, 1.5, kFoot, T(at + 8), 64, 0, D(at))), 1,
         0},
        {"Format, null buffer", CALL(Format(f, 1.5, kFoot, nullptr, 64, 0, D(at))), 1, 0},
        {"Format, null converted", CALL(Format(f, 1.5, kFoot, T(at + 8), 64, 0, nullptr)), 1, 0},
        {"Format, a symbol id as the unit", format(kFootName, 0, 64), 0, kFootText},
        {"Format, SIZE_MAX", format(kFoot, 0, kMax), 0, kFootText},
        {"Format, a group as the symbol", format(kMeter, kLength, 64), 0, kMeterText},
        {"Format, a symbol of other dimensions", format(kMeter, kSquareMeter, 64), 4, 0},
        {"Format, size 0", format(kFoot, 0, 0), 1, 0},
        {"Format, size 1", format(kFoot, 0, 1), 1, 8 + 2, false, nullptr, false},
        {"Format, one unit short", format(kFoot, 0, 9), 1, 8 + 18, false, nullptr, false},
        {"Parse, null formatter", CALL(Parse(nullptr, u"5 ft", D(at), kFoot)), 1, 0},
        {"Parse, null text", CALL(Parse(f, nullptr, D(at), kFoot)), 1, 0},
        {"Parse, null value", CALL(Parse(f, u"5 ft", nullptr, kFoot)), 1, 0},
        {"Parse, a symbol id", parse(kFt), 0, 8},
        {"Parse, another quantity", parse(kSquareMeter), 2, 0},
        {"Parse, the empty text", CALL(Parse(f, u"", D(at), kFoot)), 2, 0},
        {"ParseMany, null formatter", CALL(ParseMany(nullptr, u"5 ft", 1, kFoot, D(at), nullptr)),
         0, 0},
        {"ParseMany, null texts", CALL(ParseMany(f, nullptr, kMax, kFoot, D(at), nullptr)), 0, 0},
        {"ParseMany, null values", CALL(ParseMany(f, u"5 ft", kMax, kFoot, nullptr, I(at))), 0, 0},
        {"ParseMany, count 0", CALL(ParseMany(f, u"5 ft", 0, kFoot, D(at), I(at + 8))), 0, 0},
        {"ParseMany, unit 0: NaN and code 2", CALL(ParseMany(f, u"5 ft", 1, 0, D(at), I(at + 8))),
         0, 12},
        {"ParseMany, two into a symbol id",
         CALL(ParseMany(f, u"5 ft\0x", 2, kFt, D(at), I(at + 16))), 1, 24},
        {"ParseMany, no codes", CALL(ParseMany(f, u"5 ft", 1, kFoot, D(at), nullptr)), 1, 8},
        {"ExplainParse, null formatter",
         CALL(ExplainParse(nullptr, u"5 ft", kFoot, reinterpret_cast<MensuraParseReport*>(at))), 1,
         0, false, PutReportSize(kReport)},
        {"ExplainParse, null text",
         CALL(ExplainParse(f, nullptr, kFoot, reinterpret_cast<MensuraParseReport*>(at))), 1, 0,
         false, PutReportSize(kReport)},
        {"ExplainParse, null report", CALL(ExplainParse(f, u"5 ft", kFoot, nullptr)), 1, 0},
        {"ExplainParse, size 0", explain(kFoot), 1, 0, false, PutReportSize(0)},
        {"ExplainParse, one byte short", explain(kFoot), 1, 0, false, PutReportSize(kReport - 1)},
        {"ExplainParse, SIZE_MAX", explain(kFoot), 0, kReport, false, PutReportSize(kMax)},
        {"ExplainParse, a symbol id", explain(kFt), 0, kReport, false, PutReportSize(kReport)},
        {"ExplainParse, another quantity", explain(kSquareMeter), 2, kReport, false,
         PutReportSize(kReport)},
    };
    for (int id : kBadIds) {
        rows.push_back({"Format into " + Hex(id), format(id, 0, 64), 1, 0});
        rows.push_back({"Parse into " + Hex(id), parse(id), 2, 0});
        rows.push_back({"ExplainParse into " + Hex(id), explain(id), 2, kReport, false,
                        PutReportSize(kReport)});
        if (id != kLength && id != 0) {  // 0 asks for the default, a group for its unit
            rows.push_back({"Format with the symbol " + Hex(id), format(kFoot, id, 64), 1, 0});
        }
    }
    RunAll(rows);
}

TEST(FlatBoundary, Catalogue) {
    std::vector<Row> rows = {
        {"GetUnitGroups, count", CALL(GetUnitGroups(nullptr)), 68, 0},
        {"GetUnitGroups", CALL(GetUnitGroups(I(at))), 68, 68 * 4},
        {"GetUnitTypes, count", CALL(GetUnitTypes(kLength, nullptr)), 66, 0},
        {"GetUnitTypes, a type id", CALL(GetUnitTypes(kFoot, I(at))), 66, 66 * 4},
        {"GetUnitSymbols, a type id", CALL(GetUnitSymbols(kFoot, I(at))), 3, 12},
        {"GetUnitSymbols, a symbol id", CALL(GetUnitSymbols(kFt, I(at))), 3, 12},
        {"CopyUnitGroups, null", CALL(CopyUnitGroups(nullptr, kMax)), 68, 0},
        {"CopyUnitGroups, capacity 0", CALL(CopyUnitGroups(I(at), 0)), 68, 0},
        {"CopyUnitGroups, capacity 1", CALL(CopyUnitGroups(I(at), 1)), 68, 4},
        {"CopyUnitGroups, SIZE_MAX", CALL(CopyUnitGroups(I(at), kMax)), 68, 68 * 4},
        {"CopyUnitTypes, null", CALL(CopyUnitTypes(kLength, nullptr, kMax)), 66, 0},
        {"CopyUnitTypes, capacity 0", CALL(CopyUnitTypes(kLength, I(at), 0)), 66, 0},
        {"CopyUnitTypes, capacity 1", CALL(CopyUnitTypes(kLength, I(at), 1)), 66, 4},
        {"CopyUnitTypes, a symbol id", CALL(CopyUnitTypes(kFt, I(at), kMax)), 66, 66 * 4},
        {"CopyUnitSymbols, null", CALL(CopyUnitSymbols(kFt, nullptr, kMax)), 3, 0},
        {"CopyUnitSymbols, capacity 0", CALL(CopyUnitSymbols(kFt, I(at), 0)), 3, 0},
        {"CopyUnitSymbols, capacity 1", CALL(CopyUnitSymbols(kFt, I(at), 1)), 3, 4},
        {"CopyUnitSymbols, SIZE_MAX", CALL(CopyUnitSymbols(kFt, I(at), kMax)), 3, 12},
        {"GetDisplayName, null buffer", CALL(GetDisplayName(1033, kFoot, nullptr, 64)), 1, 0},
        {"GetDisplayName, size 0", CALL(GetDisplayName(1033, kFoot, T(at), 0)), 1, 0},
        {"GetDisplayName, no room for the terminator", CALL(GetDisplayName(1033, kFoot, T(at), 4)),
         1, 0},
        {"GetDisplayName, just room", CALL(GetDisplayName(1033, kFoot, T(at), 5)), 0, 10},
        {"GetDisplayName, SIZE_MAX", CALL(GetDisplayName(1033, kFoot, T(at), kMax)), 0, 10},
        {"GetDisplayName, a group", CALL(GetDisplayName(1033, kLength, T(at), kMax)), 0, 14},
        {"GetDisplayName, a symbol", CALL(GetDisplayName(1033, kFt, T(at), kMax)), 0, 6},
        {"GetDisplayName, Chinese", CALL(GetDisplayName(2052, kFoot, T(at), kMax)), 0, 6},
        {"GetDisplayName, locale -1", CALL(GetDisplayName(-1, kFoot, T(at), kMax)), 0, 10},
        {"GetDisplayName, a symbol field alone", CALL(GetDisplayName(1033, 0x100000, T(at), kMax)),
         1, 0},
        {"FindUnit, null text", CALL(FindUnit(nullptr, I(at))), 1, 0},
        {"FindUnit, null unit", CALL(FindUnit(u"ft", nullptr)), 1, 0},
        {"FindUnit, empty text", CALL(FindUnit(u"", I(at))), 1, 0},
        {"FindUnit, a prefix of a key", CALL(FindUnit(u"f", I(at))), 1, 0},
        {"FindUnit", CALL(FindUnit(u"ft", I(at))), 0, 4},
    };
    for (int id : kBadIds) {
        const bool group = id == kLength;
        const std::string name = " " + Hex(id);
        const double types = group ? 66 : 0;
        const std::size_t listed = group ? 66 * 4 : 0;
        rows.push_back(
            {"GetUnitTypes of" + name, CALL_WITH(id, GetUnitTypes(id, I(at))), types, listed});
        rows.push_back({"CopyUnitTypes of" + name, CALL_WITH(id, CopyUnitTypes(id, I(at), kMax)),
                        types, listed});
        rows.push_back(
            {"GetUnitSymbols of" + name, CALL_WITH(id, GetUnitSymbols(id, I(at))), 0, 0});
        rows.push_back(
            {"CopyUnitSymbols of" + name, CALL_WITH(id, CopyUnitSymbols(id, I(at), kMax)), 0, 0});
        rows.push_back({"GetDisplayName of" + name,
                        CALL_WITH(id, GetDisplayName(1033, id, T(at), kMax)), group ? 0.0 : 1.0,
                        group ? 14u : 0u});
    }
    RunAll(rows);
}

}  // namespace
