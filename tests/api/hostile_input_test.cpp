// Texts that a caller may not mean but must survive: placeholder numbers that
// would wrap, parentheses nested past the limit, and long runs of operators,
// signs and scales. Each is refused with its ordinary code, and the formatter
// goes on as before.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <string>

#include "mensura/mensura.hpp"
#include "support/narrow.h"

namespace {

using Mensura::ErrorCode;
using Mensura::Formatter;
using Mensura::kCelsius;
using Mensura::kMeter;
using MensuraTest::Narrow;

constexpr int kMeterSymbol = 0x202001;  // "m"
constexpr int kFeetInches = 0x502016;   // x′x″

// The deepest nesting of parentheses that Parse reads.
constexpr int kMaxNesting = 256;

std::u16string Repeat(const std::u16string& text, std::size_t count) {
    std::u16string out;
    out.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) out += text;
    return out;
}

std::u16string Stored(const Formatter& formatter, int symbol, bool parsing) {
    std::u16string buffer(200000, u'\0');
    const ErrorCode code =
        parsing ? formatter.GetSymbolParsingString(symbol, buffer.data(), buffer.size())
                : formatter.GetSymbolFormattingString(symbol, buffer.data(), buffer.size());
    return code == ErrorCode::Success ? buffer.c_str() : u"#";
}

// A number is read up to the largest int; one beyond, however long, is
// refused rather than wrapped, and a number that the symbol has no part for
// is refused too. A refusal leaves the string that was there.
TEST(HostileInput, PlaceholderNumbersOutOfRangeAreRefused) {
    const std::u16string zeros(100000, u'0');
    const struct {
        int symbol;
        std::u16string text;
        bool accepted;
    } rows[] = {
        {kMeterSymbol, u"{4294967296} m", false},  // 2^32, which wrapped to {0}
        {kMeterSymbol, u"{4294967297} m", false},
        {kMeterSymbol, u"{18446744073709551616} m", false},  // 2^64
        {kMeterSymbol, u"{99999999999999999999} m", false},
        {kMeterSymbol, u"{2147483648} m", false},
        {kMeterSymbol, u"{2147483647} m", false},  // read, but m has one part
        {kMeterSymbol, u"{1} m", false},
        {kMeterSymbol, u"{" + std::u16string(100000, u'9') + u"} m", false},
        {kMeterSymbol, u"{1" + zeros + u"} m", false},
        {kFeetInches, u"{0} ft {4294967297} in", false},  // wrapped to {1}
        {kFeetInches, u"{4294967297} ft {0} in", false},
        {kMeterSymbol, u"{0} metres", true},
        {kMeterSymbol, u"{" + zeros + u"} m", true},  // leading zeros are no overflow
        {kFeetInches, u"{1} in {00} ft", true},
    };
    for (const bool parsing : {false, true}) {
        for (const auto& row : rows) {
            Formatter formatter;
            const auto set = [&](const char16_t* text) {
                return parsing ? formatter.SetSymbolParsingString(row.symbol, text)
                               : formatter.SetSymbolFormattingString(row.symbol, text);
            };
            const std::u16string before = row.symbol == kFeetInches ? u"{0} x {1} y" : u"{0} x";
            ASSERT_EQ(set(before.c_str()), ErrorCode::Success);
            const std::string shown = Narrow(row.text.substr(0, 32));
            EXPECT_EQ(set(row.text.c_str()), row.accepted ? ErrorCode::Success : ErrorCode::Failure)
                << shown;
            EXPECT_TRUE(Stored(formatter, row.symbol, parsing) ==
                        (row.accepted ? row.text : before))
                << shown;
        }
    }
}

// Parentheses read up to kMaxNesting deep, around the number or the unit,
// by either reading; one more is refused, as is 200,000 deep, with the
// ordinary parse failure, value untouched.
TEST(HostileInput, ParenthesesNestedPastTheLimitAreRefused) {
    const auto around = [](std::size_t depth, const std::u16string& inside) {
        return Repeat(u"(", depth) + inside + Repeat(u")", depth);
    };
    const struct {
        std::u16string text;
        bool reads;
    } rows[] = {
        {around(kMaxNesting, u"5 m"), true},
        {u"5 " + around(kMaxNesting, u"m"), true},
        // m/(m/(m)) is a length again at every even depth.
        {u"5 " + Repeat(u"m/(", kMaxNesting) + u"m" + Repeat(u")", kMaxNesting), true},
        {u"5 " + Repeat(u"(m·", kMaxNesting) + u"m" + Repeat(u"/m)", kMaxNesting), true},
        {Repeat(u"()", 100000) + u"5 m", true},  // many, none deeper than 1
        {around(kMaxNesting + 1, u"5 m"), false},
        {u"5 " + around(kMaxNesting + 1, u"m"), false},
        {u"5 " + Repeat(u"(m·", kMaxNesting + 1) + u"m" + Repeat(u"/m)", kMaxNesting + 1), false},
        {around(200000, u"5 m"), false},
        {u"5 " + Repeat(u"m/(", kMaxNesting + 2) + u"m" + Repeat(u")", kMaxNesting + 2), false},
        {u"5 " + Repeat(u"m/(", 200000) + u"m" + Repeat(u")", 200000), false},
        {Repeat(u"(", 200000) + u"5 m", false},
    };
    for (const bool everyday : {false, true}) {
        Formatter formatter;
        formatter.SetEverydayReading(everyday);
        for (const auto& row : rows) {
            double value = -1.0;
            const std::string shown =
                Narrow(row.text.substr(0, 24)) + " (" + std::to_string(row.text.size()) + " units)";
            ASSERT_EQ(formatter.Parse(row.text.c_str(), value, kMeter),
                      row.reads ? ErrorCode::Success : ErrorCode::ParseFailure)
                << shown << (everyday ? ", everyday" : "");
            EXPECT_EQ(value, row.reads ? 5.0 : -1.0) << shown;
        }
    }
}

// Long runs of every other kind of element are refused in one pass each:
// none of them goes a call deeper for each element, and temperature scales
// that look for a unit beside them look through the text once.
TEST(HostileInput, LongRunsOfOperatorsSignsAndScalesAreRefused) {
    constexpr std::size_t kLong = 100000;
    const struct {
        std::u16string text;
        int unit;
    } rows[] = {
        {u"5 " + Repeat(u"m·", kLong) + u"m", kMeter},
        {u"5 " + Repeat(u"m/", kLong) + u"m", kMeter},
        {u"5 m" + Repeat(u"²", kLong), kMeter},
        {Repeat(u"- ", kLong) + u"5 m", kMeter},
        {Repeat(u"-", kLong) + u"5 m", kMeter},
        {Repeat(u"5 ", kLong) + u"m", kMeter},
        {u"5" + Repeat(u" m", kLong), kMeter},
        {u"5 m" + Repeat(u")", kLong), kMeter},
        {Repeat(u"5′", kLong), kMeter},
        {Repeat(u"5′-", kLong), kMeter},
        {u"5" + Repeat(u" °C", kLong), kCelsius},
        {u"5" + Repeat(u"°C", kLong), kCelsius},
    };
    for (const bool everyday : {false, true}) {
        Formatter formatter;
        formatter.SetEverydayReading(everyday);
        for (const auto& row : rows) {
            double value = -1.0;
            EXPECT_EQ(formatter.Parse(row.text.c_str(), value, row.unit), ErrorCode::ParseFailure)
                << Narrow(row.text.substr(0, 24)) << (everyday ? ", everyday" : "");
            EXPECT_EQ(value, -1.0);
        }
        // And the formatter reads as before.
        double value = 0.0;
        ASSERT_EQ(formatter.Parse(u"(5 °C)", value, kCelsius), ErrorCode::Success);
        EXPECT_EQ(value, 5.0);
    }
}

}  // namespace
