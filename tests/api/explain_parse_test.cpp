// Why a text did not read, through the shared library: the reason, the span
// of the first fault, what the text reads as instead; and the dimensions of
// every unit.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <string>
#include <vector>

#include "mensura/mensura.h"
#include "mensura/mensura.hpp"
#include "support/narrow.h"

namespace {

using Mensura::Converter;
using Mensura::ErrorCode;
using Mensura::Formatter;
using Mensura::ParseReport;
using namespace Mensura;  // the named ids
using MensuraTest::Narrow;

struct Row {
    const char16_t* text;
    int unit;
    ParseReport::Reason reason;
    const char16_t* span;  // the text of the span, or null for the whole text
    int group;             // for Read and OtherQuantity
};

void ExpectReports(const Formatter& formatter, std::initializer_list<Row> rows) {
    for (const Row& row : rows) {
        const std::u16string text(row.text);
        const ParseReport report = formatter.ExplainParse(row.text, row.unit);
        double value = -1.0;
        EXPECT_EQ(report.code, formatter.Parse(row.text, value, row.unit)) << Narrow(row.text);
        EXPECT_EQ(report.reason, row.reason) << Narrow(row.text);
        if (row.span != nullptr) {
            ASSERT_LE(report.start + report.length, text.size()) << Narrow(row.text);
            EXPECT_EQ(text.substr(report.start, report.length), row.span) << Narrow(row.text);
        } else {
            EXPECT_EQ(report.length, 0u) << Narrow(row.text);
        }
        if (row.reason == ParseReport::Read || row.reason == ParseReport::OtherQuantity) {
            EXPECT_EQ(report.group, row.group) << Narrow(row.text);
            int dimensions[7];
            ASSERT_EQ(Converter::GetUnitDimensions(row.group, dimensions), ErrorCode::Success);
            EXPECT_EQ(std::vector<int>(report.dimensions, report.dimensions + 7),
                      std::vector<int>(dimensions, dimensions + 7))
                << Narrow(row.text);
        }
    }
}

TEST(ExplainParse, NamesTheFirstFault) {
    const Formatter formatter;
    ExpectReports(formatter,
                  {{u"5 feets", kMeter, ParseReport::UnknownText, u"feets", 0},
                   {u"5feets", kMeter, ParseReport::UnknownText, u"feets", 0},
                   {u"1e-9 km3", kLiter, ParseReport::UnknownText, u"km3", 0},
                   {u"5 ftx", kMeter, ParseReport::UnknownText, u"ftx", 0},
                   {u"5 ftm", kMeter, ParseReport::UnknownText, u"ftm", 0},
                   {u"5 m/ss·x", kMeter, ParseReport::UnknownText, u"m/ss", 0},
                   {u"5 feets 3 furlongz", kMeter, ParseReport::UnknownText, u"feets", 0},
                   {u"5 m\tx", kMeter, ParseReport::UnknownText, u"\t", 0},
                   {u"5 kJ", kJoule, ParseReport::UnknownText, u"kJ", 0},
                   {u"5 kg", kMeter, ParseReport::OtherQuantity, nullptr, kMass},
                   {u"5′6″", kKilogram, ParseReport::OtherQuantity, nullptr, kLength},
                   {u"N 45°30′ E", kMeter, ParseReport::OtherQuantity, nullptr, kAngle},
                   {u"5 m/s", kMeter, ParseReport::OtherQuantity, nullptr, 0x28000},
                   {u"5 m/", kMeter, ParseReport::NoSingleValue, nullptr, 0},
                   {u"5 m)", kMeter, ParseReport::NoSingleValue, nullptr, 0},
                   {u"5 m 3", kMeter, ParseReport::NoSingleValue, nullptr, 0},
                   {u"", kMeter, ParseReport::EmptyText, nullptr, 0},
                   {u"5 m", 0x2FFF, ParseReport::UnknownUnit, nullptr, 0},
                   {u"5′-6 1/2″", kInch, ParseReport::Read, nullptr, kLength},
                   {u"5 kg/m²", kGramPerSquareMeter, ParseReport::Read, nullptr, 0xA000}});
    EXPECT_EQ(formatter.ExplainParse(u"5′-6 1/2″", kInch).value, 66.5);
}

// Reading a failed text again as every other kind of quantity costs a parse a
// group: beyond 1024 units the report does not, and names no group.
TEST(ExplainParse, SearchesOtherQuantitiesOnlyForTextsOfUsualLength) {
    const Formatter formatter;
    const std::u16string longest = u"5" + std::u16string(1020, u' ') + u"kg";
    ASSERT_EQ(longest.size(), 1023u);
    const std::u16string longer = longest + u"  ";
    ExpectReports(formatter,
                  {{longest.c_str(), kMeter, ParseReport::OtherQuantity, nullptr, kMass},
                   {(longest + u" ").c_str(), kMeter, ParseReport::OtherQuantity, nullptr, kMass},
                   {longer.c_str(), kMeter, ParseReport::NoSingleValue, nullptr, 0}});
}

TEST(ExplainParse, ReadsWithTheFormattersSettings) {
    Formatter everyday;
    everyday.SetEverydayReading(true);
    ExpectReports(everyday, {{u"5 kJ", kJoule, ParseReport::Read, nullptr, 0x13000},
                             {u"5 feets", kMeter, ParseReport::UnknownText, u"feets", 0},
                             {u"5 ft 6 kg", kInch, ParseReport::NoSingleValue, nullptr, 0},
                             {u"5 feet", kKilogram, ParseReport::OtherQuantity, nullptr, kLength}});
    const Formatter chinese(2052);
    ExpectReports(chinese, {{u"5 米x", kMeter, ParseReport::UnknownText, u"米x", 0},
                            {u"5 千克", kMeter, ParseReport::OtherQuantity, nullptr, kMass},
                            {u"5 米", kMeter, ParseReport::Read, nullptr, kLength}});
    // A symbol string reads first; a text that it reads as a length is a
    // length for the report too.
    Formatter strings;
    ASSERT_EQ(strings.SetSymbolParsingString(0x702016, u"{0} ft {1} in"), ErrorCode::Success);
    ExpectReports(strings,
                  {{u"5 ft 6 in", kInch, ParseReport::Read, nullptr, kLength},
                   {u"5 ft 6 in", kKilogram, ParseReport::OtherQuantity, nullptr, kLength}});
}

// A symbol that the catalogue's reading takes in a sense a reader may not
// mean is noted, with where it stands; the everyday reading has no note.
TEST(ExplainParse, NotesACatalogueMeaning) {
    const Formatter plain;
    const ParseReport pound = plain.ExplainParse(u"150 lb", kKilogram);
    EXPECT_EQ(pound.reason, ParseReport::Read);
    EXPECT_EQ(pound.value, 75.0);
    EXPECT_TRUE(pound.note);
    EXPECT_EQ(pound.noteStart, 4u);
    EXPECT_EQ(pound.noteLength, 2u);
    EXPECT_FALSE(plain.ExplainParse(u"150 lb av", kKilogram).note);
    EXPECT_FALSE(plain.ExplainParse(u"150 kg", kKilogram).note);
    Formatter everyday;
    everyday.SetEverydayReading(true);
    const ParseReport avoirdupois = everyday.ExplainParse(u"150 lb", kKilogram);
    EXPECT_FALSE(avoirdupois.note);
    EXPECT_NEAR(avoirdupois.value, 68.0388555, 1e-9);
}

// Its refusals are rows of the flat boundary.
TEST(ExplainParse, FlatFunction) {
    MensuraFormatter* formatter = CreateFormatter(1033);
    MensuraParseReport report{};
    report.size = sizeof report;
    EXPECT_EQ(ExplainParse(formatter, u"5 kg", kMeter, &report), MENSURA_PARSE_FAILURE);
    EXPECT_EQ(report.code, MENSURA_PARSE_FAILURE);
    EXPECT_EQ(report.reason, MENSURA_OTHER_QUANTITY);
    EXPECT_EQ(report.group, kMass);
    EXPECT_EQ(report.dimensions[1], 1);
    EXPECT_EQ(report.size, sizeof report);
    DestroyFormatter(formatter);
}

TEST(GetUnitDimensions, OfGroupsTypesAndSymbols) {
    int dimensions[7] = {9, 9, 9, 9, 9, 9, 9};
    ASSERT_EQ(GetUnitDimensions(kNewton, dimensions), MENSURA_SUCCESS);
    EXPECT_EQ(std::vector<int>(dimensions, dimensions + 7),
              (std::vector<int>{1, 1, -2, 0, 0, 0, 0}));
    int symbol[7] = {};
    ASSERT_EQ(GetUnitDimensions(0x217001 /* "N" */, symbol), MENSURA_SUCCESS);
    EXPECT_EQ(std::vector<int>(symbol, symbol + 7), std::vector<int>(dimensions, dimensions + 7));
}

// Every unit type has its group's dimensions, and converts to the group's
// first type; a temperature scale converts by offset, the others by factor.
TEST(GetUnitDimensions, EveryTypeHasItsGroupsDimensions) {
    std::vector<int> groups(Converter::GetUnitGroups(nullptr));
    Converter::GetUnitGroups(groups.data());
    std::size_t types = 0;
    for (const int group : groups) {
        int ofGroup[7];
        ASSERT_EQ(Converter::GetUnitDimensions(group, ofGroup), ErrorCode::Success);
        std::vector<int> ids(Converter::GetUnitTypes(group, nullptr));
        Converter::GetUnitTypes(group, ids.data());
        for (const int id : ids) {
            int ofType[7];
            ASSERT_EQ(Converter::GetUnitDimensions(id, ofType), ErrorCode::Success);
            EXPECT_EQ(std::vector<int>(ofType, ofType + 7), std::vector<int>(ofGroup, ofGroup + 7))
                << std::hex << id;
            double out = 0.0;
            EXPECT_EQ(Converter::Convert(1.0, id, out, group | 1), ErrorCode::Success)
                << std::hex << id;
            ++types;
        }
    }
    EXPECT_EQ(types, 773u);
}

}  // namespace
