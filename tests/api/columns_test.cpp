// Whole columns in one call: ConvertArray against Convert value by value, bit
// for bit, and ParseMany against Parse text by text.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "mensura/mensura.h"
#include "mensura/mensura.hpp"
#include "support/same_bits.h"

namespace {

using Mensura::Converter;
using Mensura::ErrorCode;
using Mensura::Formatter;
using namespace Mensura;  // the named ids
using MensuraTest::SameBits;

std::vector<double> Samples(std::size_t count) {
    std::vector<double> values = {0.0,
                                  -0.0,
                                  1.0,
                                  -273.15,
                                  1e308,
                                  -1e-310,
                                  std::numeric_limits<double>::infinity(),
                                  std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::denorm_min(),
                                  123456.789};
    std::mt19937_64 random(2026);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    std::uniform_int_distribution<int> exponent(-30, 30);
    while (values.size() < count) values.push_back(std::ldexp(mantissa(random), exponent(random)));
    return values;
}

// Every unit type to its group's first type and back, temperature scales
// included, on values of every kind; the sizes leave a tail behind the
// blocks of four.
TEST(ConvertArray, AgreesWithConvertBitForBit) {
    const std::vector<double> values = Samples(23);
    std::vector<int> groups(Converter::GetUnitGroups(nullptr));
    Converter::GetUnitGroups(groups.data());
    std::size_t pairs = 0;
    for (const int group : groups) {
        std::vector<int> types(Converter::GetUnitTypes(group, nullptr));
        Converter::GetUnitTypes(group, types.data());
        for (const int type : types) {
            for (const auto& [from, to] :
                 {std::pair{type, group | 1}, std::pair{group | 1, type}}) {
                std::vector<double> out(values.size(), -1.0);
                ASSERT_EQ(
                    Converter::ConvertArray(values.data(), out.data(), values.size(), from, to),
                    ErrorCode::Success);
                for (std::size_t i = 0; i < values.size(); ++i) {
                    double one = 0.0;
                    Converter::Convert(values[i], from, one, to);
                    ASSERT_TRUE(SameBits(out[i], one))
                        << std::hex << from << " to " << to << std::dec << " at " << i;
                }
                ++pairs;
            }
        }
    }
    EXPECT_EQ(pairs, 2 * 773u);
}

TEST(ConvertArray, AMillionValuesInPlace) {
    std::vector<double> values = Samples(1000003);
    const std::vector<double> original = values;
    ASSERT_EQ(ConvertArray(values.data(), values.data(), values.size(), kFoot, kMeter),
              MENSURA_SUCCESS);
    for (std::size_t i = 0; i < values.size(); ++i) {
        double one = 0.0;
        Convert(original[i], kFoot, &one, kMeter);
        ASSERT_TRUE(SameBits(values[i], one)) << i;
    }
    ASSERT_EQ(ConvertArray(values.data(), values.data(), values.size(), kCelsius, kFahrenheit),
              MENSURA_SUCCESS);
    double one = 0.0;
    Convert(original[3], kFoot, &one, kMeter);
    Convert(one, kCelsius, &one, kFahrenheit);
    EXPECT_TRUE(SameBits(values[3], one));
}

// Texts one after another, each ended by a zero unit.
std::u16string Column(const std::vector<std::u16string>& texts) {
    std::u16string column;
    for (const std::u16string& text : texts) {
        column += text;
        column.push_back(0);
    }
    return column;
}

TEST(ParseMany, AgreesWithParseTextByText) {
    std::vector<std::u16string> texts;
    const std::u16string kinds[] = {u"5′-6 1/2″", u"1.7 m", u"66 in",     u"5 kg",
                                    u"",          u"x",     u"5 ft 6 in", u"1,000.5 mm"};
    for (int i = 0; i < 700; ++i) texts.push_back(kinds[i % 8]);  // past a run of 256
    const std::u16string column = Column(texts);
    for (const bool everyday : {false, true}) {
        Formatter formatter;
        formatter.SetEverydayReading(everyday);
        std::vector<double> values(texts.size(), -1.0);
        std::vector<ErrorCode> codes(texts.size(), ErrorCode::NotSet);
        const std::size_t read =
            formatter.ParseMany(column.c_str(), texts.size(), kMeter, values.data(), codes.data());
        std::size_t expected = 0;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            double one = std::numeric_limits<double>::quiet_NaN();
            const ErrorCode code = formatter.Parse(texts[i].c_str(), one, kMeter);
            EXPECT_EQ(codes[i], code) << i;
            EXPECT_TRUE(SameBits(values[i], one) || (std::isnan(values[i]) && std::isnan(one)))
                << i;
            if (code == ErrorCode::Success) ++expected;
        }
        EXPECT_EQ(read, expected);
        // 87 rounds of the eight kinds and the first four again: four kinds
        // read by default, "5 ft 6 in" too with the everyday reading.
        EXPECT_EQ(read, everyday ? 87u * 5 + 3 : 87u * 4 + 3);
    }
}

TEST(ParseMany, FlatFunction) {
    const std::u16string column = Column({u"5 ft", u"feets", u"12 in", u"5 kg"});
    MensuraFormatter* formatter = CreateFormatter(1033);
    double values[4] = {-1.0, -1.0, -1.0, -1.0};
    int codes[4] = {-1, -1, -1, -1};
    EXPECT_EQ(ParseMany(formatter, column.c_str(), 4, kFoot, values, codes), 2u);
    EXPECT_EQ(values[0], 5.0);
    EXPECT_TRUE(std::isnan(values[1]));
    EXPECT_EQ(values[2], 1.0);
    EXPECT_TRUE(std::isnan(values[3]));
    EXPECT_EQ(codes[0], MENSURA_SUCCESS);
    EXPECT_EQ(codes[1], MENSURA_PARSE_FAILURE);
    EXPECT_EQ(codes[3], MENSURA_PARSE_FAILURE);
    // Without codes; with an unknown unit every text fails.
    EXPECT_EQ(ParseMany(formatter, column.c_str(), 4, kFoot, values, nullptr), 2u);
    EXPECT_EQ(ParseMany(formatter, column.c_str(), 4, 0x2FFF, values, codes), 0u);
    EXPECT_EQ(codes[0], MENSURA_PARSE_FAILURE);
    DestroyFormatter(formatter);
}

}  // namespace
