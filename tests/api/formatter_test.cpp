// The Formatter class and the flat functions of its life and number settings,
// through the shared library as a caller sees them.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "mensura/mensura.hpp"

namespace {

using namespace Mensura;

constexpr int kEnglish = 1033;
constexpr int kChinese = 2052;

using TextGetter = void (Formatter::*)(char16_t*, size_t) const;

std::u16string Read(const Formatter& formatter, TextGetter getter, size_t size = 16) {
    std::vector<char16_t> buffer(size + 4, u'#');
    (formatter.*getter)(buffer.data(), size);
    return std::u16string(buffer.data());
}

std::vector<int> Sizes(const Formatter& formatter) {
    std::vector<int> sizes(formatter.GetNumberGroupSizes(nullptr));
    EXPECT_EQ(formatter.GetNumberGroupSizes(sizes.data()), sizes.size());
    return sizes;
}

std::u16string Digits(const Formatter& formatter) {
    char16_t digits[10];
    formatter.GetNativeDigits(digits);
    return std::u16string(digits, 10);
}

TEST(FormatterSettings, BothLocalesStartWithTheSameNumberSettings) {
    for (const Formatter& formatter : {Formatter(), Formatter(kEnglish), Formatter(kChinese)}) {
        EXPECT_EQ(Digits(formatter), u"0123456789");
        EXPECT_EQ(Read(formatter, &Formatter::GetPositiveSign), u"");
        EXPECT_EQ(Read(formatter, &Formatter::GetNegativeSign), u"-");
        EXPECT_EQ(Read(formatter, &Formatter::GetNumberGroupSeparator), u",");
        EXPECT_EQ(Read(formatter, &Formatter::GetNumberDecimalSeparator), u".");
        EXPECT_EQ(formatter.GetNumberDecimalDigits(), 2);
        EXPECT_EQ(formatter.GetNumber(), NumberFormat::Number);
        EXPECT_EQ(Sizes(formatter), std::vector<int>{3});
    }
}

TEST(FormatterSettings, EveryLocaleButSimplifiedChineseIsEnglish) {
    const int rows[][2] = {{kChinese, kChinese}, {kEnglish, kEnglish}, {1036, kEnglish},
                           {0, kEnglish},        {-1, kEnglish},       {-kChinese, kEnglish}};
    for (const auto& row : rows) {
        EXPECT_EQ(Formatter(row[0]).GetLocaleId(), row[1]) << row[0];
        MensuraFormatter* made = CreateFormatter(row[0]);
        EXPECT_EQ(made->GetLocaleId(), row[1]) << row[0];
        DestroyFormatter(made);
    }
    EXPECT_EQ(Formatter().GetLocaleId(), kEnglish);
}

TEST(FormatterSettings, TextGettersCutToTheBufferAndAlwaysTerminate) {
    Formatter formatter;
    ASSERT_EQ(formatter.SetNumberGroupSeparator(u"ab"), ErrorCode::Success);
    formatter.SetPositiveSign(u"plus");
    const struct {
        TextGetter getter;
        size_t size;
        const char16_t* text;
    } rows[] = {
        {&Formatter::GetNegativeSign, 1, u""},
        {&Formatter::GetNegativeSign, 2, u"-"},
        {&Formatter::GetNumberGroupSeparator, 2, u"a"},
        {&Formatter::GetNumberGroupSeparator, 3, u"ab"},
        {&Formatter::GetNumberDecimalSeparator, 1, u""},
        {&Formatter::GetPositiveSign, 4, u"plu"},
        {&Formatter::GetPositiveSign, 5, u"plus"},
        {&Formatter::GetPositiveSign, 9, u"plus"},
    };
    for (const auto& row : rows) {
        std::vector<char16_t> buffer(row.size + 2, u'#');
        (formatter.*row.getter)(buffer.data(), row.size);
        EXPECT_EQ(std::u16string(buffer.data()), row.text) << "size " << row.size;
        EXPECT_EQ(buffer[row.size], u'#') << "written behind the buffer, size " << row.size;
    }
}

// The separators refuse null and empty texts; the signs take empty texts and
// ignore null.
TEST(FormatterSettings, SeparatorsAndSigns) {
    Formatter formatter;
    EXPECT_EQ(formatter.SetNumberDecimalSeparator(u""), ErrorCode::Failure);
    EXPECT_EQ(formatter.SetNumberDecimalSeparator(nullptr), ErrorCode::Failure);
    EXPECT_EQ(formatter.SetNumberGroupSeparator(u""), ErrorCode::Failure);
    EXPECT_EQ(formatter.SetNumberGroupSeparator(nullptr), ErrorCode::Failure);
    EXPECT_EQ(Read(formatter, &Formatter::GetNumberDecimalSeparator), u".");
    EXPECT_EQ(Read(formatter, &Formatter::GetNumberGroupSeparator), u",");
    EXPECT_EQ(formatter.SetNumberDecimalSeparator(u"\u066B"), ErrorCode::Success);
    EXPECT_EQ(Read(formatter, &Formatter::GetNumberDecimalSeparator), u"\u066B");
    formatter.SetNegativeSign(u"");
    EXPECT_EQ(Read(formatter, &Formatter::GetNegativeSign), u"");
    formatter.SetNegativeSign(u"minus ");
    formatter.SetNegativeSign(nullptr);
    EXPECT_EQ(Read(formatter, &Formatter::GetNegativeSign), u"minus ");
    formatter.SetPositiveSign(u"+");
    formatter.SetPositiveSign(nullptr);
    EXPECT_EQ(Read(formatter, &Formatter::GetPositiveSign), u"+");
}

TEST(FormatterSettings, DecimalDigitsLieIn0To99) {
    const struct {
        int digits;
        ErrorCode result;
        int stored;
    } rows[] = {{0, ErrorCode::Success, 0},
                {99, ErrorCode::Success, 99},
                {100, ErrorCode::Failure, 7},
                {-1, ErrorCode::Failure, 7},
                {-2147483647 - 1, ErrorCode::Failure, 7}};
    for (const auto& row : rows) {
        Formatter formatter;
        ASSERT_EQ(formatter.SetNumberDecimalDigits(7), ErrorCode::Success);
        EXPECT_EQ(formatter.SetNumberDecimalDigits(row.digits), row.result) << row.digits;
        EXPECT_EQ(formatter.GetNumberDecimalDigits(), row.stored) << row.digits;
    }
}

TEST(FormatterSettings, GroupSizesAreOneToNineButTheLastMayBeZero) {
    const struct {
        std::vector<int> sizes;
        bool accepted;
    } rows[] = {{{3, 0}, true},   {{0}, true},        {{9, 1, 9}, true},
                {{0, 3}, false},  {{10}, false},      {{3, 10}, false},
                {{3, -1}, false}, {{3, 0, 2}, false}, {{}, false}};
    for (const auto& row : rows) {
        Formatter formatter;
        const ErrorCode result =
            formatter.SetNumberGroupSizes(row.sizes.data(), static_cast<int>(row.sizes.size()));
        EXPECT_EQ(result, row.accepted ? ErrorCode::Success : ErrorCode::Failure);
        EXPECT_EQ(Sizes(formatter), row.accepted ? row.sizes : std::vector<int>{3});
    }
    Formatter formatter;
    const int sizes[] = {3, 2};
    EXPECT_EQ(formatter.SetNumberGroupSizes(sizes, 0), ErrorCode::Failure);
    EXPECT_EQ(formatter.SetNumberGroupSizes(sizes, -1), ErrorCode::Failure);
    EXPECT_EQ(Sizes(formatter), std::vector<int>{3});
}

TEST(FormatterSettings, NativeDigitsMustDifferAndNeedNoTerminator) {
    Formatter formatter;
    EXPECT_EQ(formatter.SetNativeDigits(u"aaaaaaaaaa"), ErrorCode::Failure);
    EXPECT_EQ(formatter.SetNativeDigits(u"0123456781"), ErrorCode::Failure);
    EXPECT_EQ(Digits(formatter), u"0123456789");
    std::vector<char16_t> arabic(10);  // exactly ten on the heap: a read beyond them shows
    for (int d = 0; d < 10; ++d) arabic[d] = static_cast<char16_t>(0x0660 + d);
    EXPECT_EQ(formatter.SetNativeDigits(arabic.data()), ErrorCode::Success);
    EXPECT_EQ(Digits(formatter), std::u16string(arabic.begin(), arabic.end()));
}

// An unknown style is stored as it is, and fails where a value is rendered.
TEST(FormatterSettings, NumberStyleIsStoredUnchecked) {
    Formatter formatter;
    formatter.SetNumber(NumberFormat::ScientificLower);
    EXPECT_EQ(formatter.GetNumber(), NumberFormat::ScientificLower);
    formatter.SetNumber(static_cast<NumberFormat>(9));
    EXPECT_EQ(static_cast<int>(formatter.GetNumber()), 9);
    char16_t buffer[32];
    EXPECT_EQ(formatter.Format(1.0, 0x2001 /* meter */, buffer, 32), ErrorCode::Failure);
}

TEST(FormatterCopies, ShareOneStateAndSeeEachOthersChanges) {
    Formatter original(kChinese);
    Formatter copy(original);
    copy.SetNumberDecimalDigits(5);
    original.SetNegativeSign(u"neg");
    EXPECT_EQ(original.GetNumberDecimalDigits(), 5);
    EXPECT_EQ(Read(copy, &Formatter::GetNegativeSign), u"neg");

    Formatter assigned(kEnglish);  // its own state goes with the assignment
    assigned = copy;
    EXPECT_EQ(assigned.GetLocaleId(), kChinese);
    assigned.SetNumber(NumberFormat::Fixed);
    EXPECT_EQ(original.GetNumber(), NumberFormat::Fixed);

    const Formatter& self = assigned;
    assigned = self;
    EXPECT_EQ(assigned.GetNumberDecimalDigits(), 5);
    {
        Formatter outlived(original);
        original = Formatter(kEnglish);  // the shared state lives on in the others
        EXPECT_EQ(original.GetNumberDecimalDigits(), 2);
        outlived.SetNumberDecimalDigits(9);
    }
    EXPECT_EQ(copy.GetNumberDecimalDigits(), 9);
    EXPECT_EQ(assigned.GetNumberDecimalDigits(), 9);
}

TEST(FlatFormatter, EverySelectorReadsOrWritesItsSetting) {
    Formatter* formatter = CreateFormatter(kEnglish);
    char16_t arabic[10];
    for (int d = 0; d < 10; ++d) arabic[d] = static_cast<char16_t>(0x0660 + d);
    char16_t digits[10] = {};
    EXPECT_EQ(FormatterNumberSetting(formatter, 1, arabic, 0), 0);
    EXPECT_EQ(FormatterNumberSetting(formatter, 0, digits, 0), 0);
    EXPECT_EQ(std::u16string(digits, 10), std::u16string(arabic, 10));
    char16_t same[10] = {u'x', u'x', u'x', u'x', u'x', u'x', u'x', u'x', u'x', u'x'};
    EXPECT_EQ(FormatterNumberSetting(formatter, 2, same, 0), 1);
    EXPECT_EQ(FormatterNumberSetting(formatter, 2, const_cast<char16_t*>(u"9876543210"), 0), 0);
    EXPECT_EQ(Digits(*formatter), u"9876543210");

    // Text settings: set, then read back through a buffer of size 3.
    const struct {
        int set, get;
        const char16_t* text;
        const char16_t* read;
    } texts[] = {
        {4, 3, u"neg", u"ne"}, {8, 7, u"d", u"d"}, {12, 11, u"gs", u"gs"}, {16, 15, u"+", u"+"}};
    for (const auto& row : texts) {
        EXPECT_EQ(FormatterNumberSetting(formatter, row.set, const_cast<char16_t*>(row.text), 0),
                  0);
        char16_t buffer[3] = {u'#', u'#', u'#'};
        EXPECT_EQ(FormatterNumberSetting(formatter, row.get, buffer, 3), 0);
        EXPECT_EQ(std::u16string(buffer), row.read) << row.get;
    }
    EXPECT_EQ(FormatterNumberSetting(formatter, 8, const_cast<char16_t*>(u""), 0), 1);
    EXPECT_EQ(FormatterNumberSetting(formatter, 12, const_cast<char16_t*>(u""), 0), 1);

    std::int32_t number = 42;
    EXPECT_EQ(FormatterNumberSetting(formatter, 6, &number, 0), 0);
    number = 100;
    EXPECT_EQ(FormatterNumberSetting(formatter, 6, &number, 0), 1);
    EXPECT_EQ(FormatterNumberSetting(formatter, 5, &number, 0), 0);
    EXPECT_EQ(number, 42);
    number = 9;
    EXPECT_EQ(FormatterNumberSetting(formatter, 10, &number, 0), 0);
    number = 0;
    EXPECT_EQ(FormatterNumberSetting(formatter, 9, &number, 0), 0);
    EXPECT_EQ(number, 9);

    std::int32_t sizes[] = {3, 2, 0};
    EXPECT_EQ(FormatterNumberSetting(formatter, 14, sizes, 3), 0);
    EXPECT_EQ(FormatterNumberSetting(formatter, 14, sizes, 0), 1);
    std::uint64_t count = 0;
    EXPECT_EQ(FormatterNumberSetting(formatter, 13, &count, 0), 0);
    EXPECT_EQ(count, 3u);
    std::int32_t read[4] = {-1, -1, -1, -1};
    EXPECT_EQ(FormatterNumberSetting(formatter, 13, read, 1), 0);  // 1 is no limit
    EXPECT_EQ(std::vector<int>(read, read + 4), (std::vector<int>{3, 2, 0, -1}));
    DestroyFormatter(formatter);
}

}  // namespace
