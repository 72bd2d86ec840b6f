// Every symbol of the catalogue, in both languages, rendered by Format and
// read back by Parse into its own unit type. A few texts belong to two unit
// types, and the first one registered reads them; a few belong to a unit of
// another kind. Those are listed here as data, and explained in
// docs/symbols-that-do-not-read-back.md, so that the list is known and can
// neither grow nor shrink silently.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "mensura/mensura.hpp"
#include "support/narrow.h"

namespace {

using Mensura::Converter;
using Mensura::ErrorCode;
using Mensura::Formatter;
using MensuraTest::Narrow;

constexpr double kValue = 1.5;

// A symbol whose rendering of kValue does not read back as kValue in its
// own unit type: refused, or read as another value.
struct Miss {
    int locale;
    int symbol;
    std::u16string text;  // what Format wrote
    bool refused;
    double value;  // what Parse read, when it read
};

bool Same(const Miss& a, const Miss& b) {
    return a.locale == b.locale && a.symbol == b.symbol && a.text == b.text &&
           a.refused == b.refused &&
           (a.refused || std::fabs(a.value - b.value) <= 1e-9 * std::fabs(b.value));
}

std::string Describe(const Miss& miss) {
    char id[16];
    std::snprintf(id, sizeof id, "0x%X", static_cast<unsigned>(miss.symbol));
    return std::to_string(miss.locale) + " " + id + " \"" + Narrow(miss.text) + "\" " +
           (miss.refused ? "refused" : "reads " + std::to_string(miss.value));
}

std::vector<int> List(std::size_t (*query)(int, int*), int id) {
    std::vector<int> ids(query(id, nullptr));
    if (!ids.empty()) query(id, ids.data());
    return ids;
}

// The list of docs/symbols-that-do-not-read-back.md.
const std::vector<Miss>& Known() {
    static const std::vector<Miss> known = {
        // daN/m², the key of decanewton per square millimeter: 10^6 times.
        {1033, 0x221019, u"1.500000 daN/m²", false, 1.5e6},
        {2052, 0x221019, u"1.500000 daN/m²", false, 1.5e6},
        // The linear moment's text, a key of the linear force.
        {1033, 0x125008, u"1.500000 pound‐force per foot", true, 0.0},
        // Survey inch in Chinese, the key of the U.S. survey foot: 12 times.
        {2052, 0x10203F, u"1.500000 测量英尺", false, 18.0},
        // Cubic fathom in Chinese, the key of the fathom, a length.
        {2052, 0x104036, u"1.500000 拓", true, 0.0},
        // Dram (avoirdupois) in Chinese, the key of the dram, a volume.
        {2052, 0x105020, u"1.500000 特拉姆", true, 0.0},
        // Pound-force per square foot in Chinese, the key of the pound-force
        // per square inch: 144 times.
        {2052, 0x121027, u"1.500000 磅力每平方英尺", false, 216.0},
        // Inch pound (torque) in Chinese, the key of the foot pound: 12 times.
        {2052, 0x12D005, u"1.500000 英尺英磅（扭矩）", false, 18.0},
    };
    return known;
}

TEST(RoundTrip, EverySymbolReadsBackButTheKnownOnes) {
    std::vector<int> groups(Converter::GetUnitGroups(nullptr));
    Converter::GetUnitGroups(groups.data());
    std::vector<Miss> found;
    std::size_t walked = 0;
    for (const int locale : {1033, 2052}) {
        Formatter formatter(locale);
        ASSERT_EQ(formatter.SetNumberDecimalDigits(6), ErrorCode::Success);
        for (const int group : groups) {
            for (const int type : List(&Converter::GetUnitTypes, group)) {
                for (const int symbol : List(&Formatter::GetUnitSymbols, type)) {
                    ++walked;
                    char16_t text[256];
                    ASSERT_EQ(formatter.Format(kValue, type, text, 256, symbol), ErrorCode::Success)
                        << locale << " " << std::hex << symbol;
                    double value = 0.0;
                    const ErrorCode code = formatter.Parse(text, value, type);
                    if (code != ErrorCode::Success) {
                        found.push_back({locale, symbol, text, true, 0.0});
                    } else if (std::fabs(value - kValue) > 1e-9 * kValue) {
                        found.push_back({locale, symbol, text, false, value});
                    }
                }
            }
        }
    }
    EXPECT_EQ(walked, 2u * 1842u);
    for (const Miss& miss : found) {
        bool known = false;
        for (const Miss& entry : Known()) known = known || Same(miss, entry);
        EXPECT_TRUE(known) << "does not read back: " << Describe(miss);
    }
    for (const Miss& entry : Known()) {
        bool seen = false;
        for (const Miss& miss : found) seen = seen || Same(miss, entry);
        EXPECT_TRUE(seen) << "listed, but not found so: " << Describe(entry);
    }
}

}  // namespace
