// The number settings seen from inside: the table of number tokens after each
// setter, with shared texts and empty signs on the root.
#include "numbers/number_settings.h"

#include "base/number_flags.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>

namespace Mensura {
namespace {

using NumberToken::Digit;
constexpr int kNone = NumberToken::None;
constexpr int kGroup = NumberToken::GroupSeparator;
constexpr int kPoint = NumberToken::DecimalSeparator;
constexpr int kPlus = NumberToken::PositiveSign;
constexpr int kMinus = NumberToken::NegativeSign;
constexpr int kExponent = NumberToken::Exponent;

// The longest number token at the start of text has `code` and is `length`
// units long (0 when nothing, or only the empty key on the root, matched).
void ExpectToken(const NumberSettings& impl, const char16_t* text, int code, std::size_t length) {
    std::size_t matched = 0;
    EXPECT_EQ(impl.NumberTokens().FindLongest(text, &matched), code)
        << "text of " << std::u16string(text).size() << " units";
    EXPECT_EQ(matched, length);
}

// "+" is no token while the positive sign is empty: that sign is on the root.
TEST(NumberTokens, Defaults) {
    const struct {
        const char16_t* text;
        int code;
        std::size_t length;
    } rows[] = {{u"0", Digit(0), 1},  {u"5x", Digit(5), 1},  {u"9", Digit(9), 1},
                {u",", kGroup, 1},    {u".", kPoint, 1},     {u"-", kMinus, 1},
                {u"e", kExponent, 1}, {u"E3", kExponent, 1}, {u"", kPlus, 0},
                {u"x", kPlus, 0},     {u"+5", kPlus, 0}};
    const NumberSettings impl;
    for (const auto& row : rows) ExpectToken(impl, row.text, row.code, row.length);
}

TEST(NumberTokens, PositiveSignTakesItsCodeOffTheRoot) {
    NumberSettings impl;
    impl.SetPositiveSign(u"+");
    ExpectToken(impl, u"+5", kPlus, 1);
    ExpectToken(impl, u"x", kNone, 0);
    impl.SetPositiveSign(nullptr);  // ignored
    ExpectToken(impl, u"+5", kPlus, 1);
    impl.SetPositiveSign(u"plus");
    ExpectToken(impl, u"plus5", kPlus, 4);
    ExpectToken(impl, u"+5", kNone, 0);
}

TEST(NumberTokens, BothSignsEmptyShareTheRootAndErasingEitherEmptiesIt) {
    NumberSettings impl;
    impl.SetNegativeSign(u"");
    ExpectToken(impl, u"x", kMinus, 0);
    ExpectToken(impl, u"-", kMinus, 0);  // "-" itself is no token any more
    impl.SetPositiveSign(u"");
    ExpectToken(impl, u"x", kPlus, 0);
    impl.SetNegativeSign(u"-");  // erases "" though the positive sign is still empty
    ExpectToken(impl, u"x", kNone, 0);
    ExpectToken(impl, u"-", kMinus, 1);
}

TEST(NumberTokens, SeparatorsShareTextsAndTheLastOneSetWins) {
    NumberSettings impl;
    EXPECT_EQ(impl.SetNumberGroupSeparator(u"."), ErrorCode::Success);
    ExpectToken(impl, u".", kGroup, 1);
    ExpectToken(impl, u",", 52, 0);
    EXPECT_EQ(impl.SetNumberGroupSeparator(u","), ErrorCode::Success);
    ExpectToken(impl, u",", 44, 1);
    ExpectToken(impl, u".", kPlus, 0);  // the decimal separator has lost its token
    EXPECT_EQ(impl.SetNumberDecimalSeparator(u"."), ErrorCode::Success);
    ExpectToken(impl, u".", kPoint, 1);
    EXPECT_EQ(impl.SetNumberDecimalSeparator(u"dot"), ErrorCode::Success);
    ExpectToken(impl, u"dot", kPoint, 3);
    ExpectToken(impl, u".", kPlus, 0);
}

TEST(NumberTokens, RefusedSettersLeaveTheTableAlone) {
    NumberSettings impl;
    EXPECT_EQ(impl.SetNumberDecimalSeparator(u""), ErrorCode::Failure);
    EXPECT_EQ(impl.SetNumberGroupSeparator(nullptr), ErrorCode::Failure);
    const char16_t twice[] = u"0123456780";
    EXPECT_EQ(impl.SetNativeDigits(twice), ErrorCode::Failure);
    ExpectToken(impl, u".", kPoint, 1);
    ExpectToken(impl, u",", 44, 1);
    ExpectToken(impl, u"9", Digit(9), 1);
}

TEST(NumberTokens, NativeDigitsReplaceTheAsciiOnes) {
    NumberSettings impl;
    char16_t arabic[10];
    for (int d = 0; d < 10; ++d) arabic[d] = static_cast<char16_t>(0x0660 + d);
    ASSERT_EQ(impl.SetNativeDigits(arabic), ErrorCode::Success);
    ExpectToken(impl, u"5", kPlus, 0);  // falls back on the root
    const char16_t five[] = {0x0665, 0};
    ExpectToken(impl, five, Digit(5), 1);
    const char16_t nine[] = {0x0669, u'x', 0};
    ExpectToken(impl, nine, Digit(9), 1);
    ExpectToken(impl, u"e", kExponent, 1);
}

TEST(NumberTokens, NativeDigitsEraseASeparatorThatSharesTheirText) {
    NumberSettings impl;
    const char16_t digits[] = u"0123456,89";  // "," stands for 7
    ASSERT_EQ(impl.SetNativeDigits(digits), ErrorCode::Success);
    ExpectToken(impl, u",", 32, 1);
    ExpectToken(impl, u"7", kPlus, 0);
    ASSERT_EQ(impl.SetNativeDigits(u"0123456789"), ErrorCode::Success);
    ExpectToken(impl, u",", 52, 0);  // gone with the digit
    ExpectToken(impl, u"7", Digit(7), 1);
}

// Every setter erases a text from the table; switching back and forth must
// not grow it.
TEST(NumberTokens, SwitchingSettingsBackAndForthKeepsTheTableSmall) {
    NumberSettings impl;
    std::size_t settled = 0;
    for (int round = 0; round < 200; ++round) {
        ASSERT_EQ(impl.SetNumberGroupSeparator(round % 2 ? u"'" : u"thin space"),
                  ErrorCode::Success);
        impl.SetNegativeSign(round % 3 ? u"minus " : u"-");
        if (round == 5) settled = impl.NumberTokens().PoolBytes();
    }
    EXPECT_LE(impl.NumberTokens().PoolBytes(), settled);
    ExpectToken(impl, u"'", kGroup, 1);
    ExpectToken(impl, u"thin space", kPlus, 0);
    ExpectToken(impl, u"minus 1", kMinus, 6);
    ExpectToken(impl, u"-", kPlus, 0);
}

struct Scanned {
    const char16_t* text;
    std::size_t length;  // 0: no number
    double value;
};

void ExpectScans(const NumberSettings& settings, bool everyday,
                 std::initializer_list<Scanned> rows) {
    for (const Scanned& row : rows) {
        double value = -1.0;
        std::uint32_t flags = 0;
        const Result result = settings.ScanNumber(row.text, &value, &flags, everyday);
        const std::u16string text(row.text);
        EXPECT_EQ(result.Ok() ? result.length : 0u, row.length) << "text of " << text.size();
        if (row.length > 0) {
            EXPECT_EQ(value, row.value) << "text of " << text.size();
        }
    }
}

// The everyday scan lets "−" (U+2212) and "+" stand for the signs where the
// settings have no token of their own there; the settings' scan does not.
TEST(ScanNumber, EverydaySignsStandInForTheSettings) {
    NumberSettings settings;
    ExpectScans(settings, false, {{u"\u22125", 0, 0}, {u"+5", 0, 0}, {u"1e+9", 1, 1.0}});
    ExpectScans(settings, true,
                {{u"\u22125", 2, -5.0},
                 {u"+5", 2, 5.0},
                 {u"1e+9", 4, 1e9},
                 {u"1e\u22123", 4, 1e-3},
                 {u"-5", 2, -5.0},
                 {u"+-5", 0, 0},
                 {u"5+3", 1, 5.0},
                 {u"\u2212", 0, 0}});
    // A setting wins over the everyday sign: with "+" as the group separator
    // "1+000" is a thousand, and the sign "+" goes no longer.
    ASSERT_EQ(settings.SetNumberGroupSeparator(u"+"), ErrorCode::Success);
    ExpectScans(settings, true, {{u"1+000", 5, 1000.0}, {u"+5", 0, 0}, {u"\u22125", 2, -5.0}});
}

// An exponent letter or a separator begins no number, signed or not; a
// decimal separator does.
TEST(ScanNumber, WhatBeginsANumber) {
    NumberSettings settings;
    for (const bool everyday : {false, true}) {
        ExpectScans(settings, everyday,
                    {{u"e5", 0, 0},
                     {u"E", 0, 0},
                     {u",5", 0, 0},
                     {u"-e5", 0, 0},
                     {u"-,5", 0, 0},
                     {u".5", 2, 0.5},
                     {u"-.5e1", 5, -5.0}});
    }
}

// Plain numbers, signed or not, take a quicker way through the scanner than
// those with an exponent. "e0" put behind a number sends it the full way and scales by
// nothing, so both ways must agree to the bit, in value, flags and length.
TEST(ScanNumber, PlainNumbersReadAsTheFullWayDoes) {
    NumberSettings settings;
    NumberSettings words;
    ASSERT_EQ(words.SetNumberDecimalSeparator(u"dot"), ErrorCode::Success);
    ASSERT_EQ(words.SetNumberGroupSeparator(u"'"), ErrorCode::Success);
    const struct {
        const NumberSettings* settings;
        const char16_t* text;
        std::size_t length;
        bool everyday = false;
    } rows[] = {
        {&settings, u"0", 1},
        {&settings, u"7 ft", 1},
        {&settings, u"1,000.5 mm", 7},
        {&settings, u"12.", 3},
        {&settings, u"0.1", 3},
        {&settings, u"3.14159265358979323846", 22},
        {&settings, u"123456789012345678901234567890", 30},
        {&settings, u"9,9,,9.25,5", 9},
        {&settings, u"5.5.5", 3},
        {&settings, u"5-3", 1},
        {&settings, u"0.000000000000000000001x", 23},
        {&words, u"3dot25'1", 6},
        {&words, u"1'000dot", 8},
        {&words, u"2.5", 1},
        {&settings, u"-12.5", 5},
        {&settings, u"-0", 2},
        {&settings, u"30E", 2},
        {&settings, u"4.5e ft", 3},
        {&settings, u"45-30E", 2},
        {&settings, u"\u22127.25", 5, true},
        {&settings, u"+3", 2, true},
        {&settings, u"6e\u2212", 1, false},
    };
    for (const auto& row : rows) {
        const std::u16string text(row.text);
        double quick = 0.0;
        std::uint32_t quickFlags = 0;
        const Result a = row.settings->ScanNumber(row.text, &quick, &quickFlags, row.everyday);
        ASSERT_TRUE(a.Ok()) << "text of " << text.size();
        EXPECT_EQ(a.length, row.length) << "text of " << text.size();
        const std::u16string full = text.substr(0, a.length) + u"e0" + text.substr(a.length);
        double value = 0.0;
        std::uint32_t flags = 0;
        const Result b = row.settings->ScanNumber(full.c_str(), &value, &flags, row.everyday);
        ASSERT_TRUE(b.Ok()) << "text of " << text.size();
        EXPECT_EQ(b.length, a.length + 2) << "text of " << text.size();
        EXPECT_EQ(flags, quickFlags | NumberFlags::ExponentDigits) << "text of " << text.size();
        std::uint64_t x = 0, y = 0;
        std::memcpy(&x, &quick, sizeof x);
        std::memcpy(&y, &value, sizeof y);
        EXPECT_EQ(x, y) << "text of " << text.size();
    }
}

}  // namespace
}  // namespace Mensura
