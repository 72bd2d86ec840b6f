// The typed marks of feet and inches, degrees and bearings take a short way
// past the list; ExplainParse always reads through the list. Both must give
// the same code and the same bits for every text of those shapes and for the
// texts just outside them, in every kind of target, in both languages, with
// both readings and with other number settings.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "mensura/mensura.hpp"
#include "support/narrow.h"
#include "support/same_bits.h"

namespace {

using namespace Mensura;
using MensuraTest::Narrow;
using MensuraTest::SameBits;

const char16_t* const kFeetAndInches[] = {
    // The prime alone, and its fraction.
    u"5′",
    u"-5′",
    u"0′",
    u"-0′",
    u"1.5′",
    u"1e2′",
    u"1,000′",
    u"1/2′",
    u"-1/2′",
    u"1/-2′",
    u"1/0′",
    u"5 1/2′",
    u"1/2 ′",
    u"5'",
    u"5ʹ",
    u"5’",
    u"5ʼ",
    u"5‘",
    // The double prime's lines alone.
    u"6″",
    u"-6″",
    u"6\"",
    u"6ʺ",
    u"6”",
    u"6“",
    u"1/2″",
    u"1/0″",
    u"-1/2″",
    u"6 1/2″",
    u"6-1/2″",
    u"6 -1/2″",
    u"-6 1/2″",
    u"-0 1/2″",
    u"5 / 2″",
    u"5 6″",
    u"5-6″",
    u"5 6 1/2″",
    u"5 6 7 1/2″",
    u"5 6 7″",
    u"1/-2″",
    u"5 1/-2″",
    u"/2″",
    u"5/″",
    u"5 1/2 3″",
    // The prime in the middle.
    u"5′6″",
    u"5′ 6″",
    u"5′6",
    u"5′ 6",
    u"5 ′ 6 ″",
    u"5′-6″",
    u"5′ -6″",
    u"5′- 6″",
    u"5′ - 6″",
    u"5′–6″",
    u"5′ – 6″",
    u"5′—6″",
    u"5′‐6″",
    u"5′‒6″",
    u"5′―6″",
    u"5′⁃6″",
    u"5′‑6″",
    u"5′−6″",
    u"5′-6 1/2″",
    u"5′-6-1/2″",
    u"5′6 1/2",
    u"5 ′ 6 1 / 2 ″",
    u"5′1/2″",
    u"5′1/2",
    u"5′-1/2″",
    u"5′-1/2",
    u"-5′6″",
    u"-5′-6″",
    u"-0′6″",
    u"-5′6 1/2″",
    u"1.5′6.25″",
    u"5′1e1″",
    u"5′12″",
    u"5′0″",
    u"0′0″",
    u"5′6 1/0″",
    u"5′6 1/-2″",
    u"5′6 1/2 3″",
    u"5′6/2″",
    u"5′6//2″",
    u"5′/2″",
    u"5′6″″",
    u"5′6 7″",
    u"5′6 7 1/2″",
    // Just outside.
    u"5′6′",
    u"5″6′",
    u"5″6″",
    u"5′′",
    u"5′6″7",
    u"5′6″ ",
    u" 5′6″",
    u"5′ ",
    u"–5′6″",
    u"- 5′6″",
    u"5′–",
    u"5′ –",
    u"5′ – ",
    u"5′--6″",
    u"5′ – – 6″",
    u"5 – 6″",
    u"5′ ft",
    u"5 ft 6″",
    u"5′ 6 in",
    u"5′6″ in",
    u"+5′6″",
    u"5′6″E",
    u"5′E",
    u"5″E",
    u"5′W",
    u"5′N",
    u"5′ d",
    u"5′6 1/2″ E",
    u"′",
    u"″",
    u"-",
    u"5′(6)″",
    u"5′6²″",
    // Far out and not numbers.
    u"1e999′1e999″",
    u"-1e999′1e999″",
    u"1e999/1e999″",
    u"1e999 1/1e999″",
    u"0/0′",
    u"5′-0″",
    u"-0′-0″",
};

const char16_t* const kAngles[] = {
    u"5°",
    u"5 °",
    u"5d",
    u"5 d",
    u"5.5°",
    u"5°30′",
    u"5°30′15″",
    u"5°30′15",
    u"5° 30′ 15″",
    u"5d30′15″",
    u"5°30′-15″",
    u"5°30.5′",
    u"5°30′15.5″",
    u"5°30′1/2″",
    u"5°30′ 1/2″",
    u"5°30′ 15 1/2″",
    u"-5°30′",
    u"-5°30′15″",
    u"-0°30′15″",
    u"5°30′ - 15″",
    u"5°–30′",
    u"5°30",
    u"5°30″",
    u"5°-30′",
    u"5°1/2′",
    u"1/2°",
    u"5 1/2°",
    u"5°°",
    u"°",
    u"d",
    u"1/5°30′",
    u"5°30′15″E",
    u"45° E",
    u"5°N",
    u"5°30′1/0″",
    u"5°30′/2″",
    u"5° 30",
    u"5°30′′",
    // Bearings.
    u"N",
    u"E",
    u"S",
    u"W",
    u"N E",
    u"S W",
    u"N N 45° E",
    u"N 0° E",
    u"N 0° W",
    u"S 0° E",
    u"S 0° W",
    u"N 90° E",
    u"S 90° E",
    u"N 90° W",
    u"S 90° W",
    u"N 45° E",
    u"N45°E",
    u"N45dE",
    u"N 45d E",
    u"S 45° E",
    u"N 45° W",
    u"S 45° W",
    u"N 45.5° E",
    u"N 45°30′ E",
    u"N 45°30′15″ E",
    u"N45°30′15″E",
    u"N 45°30′15″ W",
    u"S 45°30′15″ W",
    u"N 45′ E",
    u"N 45″ E",
    u"N 45′30″ E",
    u"N 1/2″ E",
    u"N 45°30′ 15 1/2″ E",
    u"N 45°30′15 E",
    u"N 90°0′1″ E",
    u"N 89°59′60″ E",
    u"N 1e999° E",
    u"N -0° E",
    u"S -0′ W",
    // Just outside.
    u"n45°e",
    u"N 91° E",
    u"N 45 E",
    u"N 45°",
    u"S 45° N",
    u"E 45° N",
    u"E 45° S",
    u"W 45° N",
    u"N 45° E E",
    u"N 45° E 5",
    u"N -45° E",
    u"N -5°30′15″ E",
    u"N 45°-30′ E",
    u"N 1/2′ E",
    u"N 1/2° E",
    u"N 45′30 E",
    u"N 45° - 30′ E",
    u"N 45°30′ – 15″ E",
    u"N 5 m E",
    u"N° E",
    u"N 45° E°",
    u"5 N",
    u"5 W",
    u"5 S",
    u"5 d",
    u"5 E",
};

// Targets of every class the marks tell apart: lengths, times, plain angles
// and ratios, and others, among them the units that N, S, W and d stand for.
const int kUnits[] = {0x2016, 0x2017, 0x2001, 0x2C001, 0x2C016, 0x8002,  0x8001,
                      0x8009, 0x1001, 0x5001, 0x17001, 0x27001, 0x1D001, 0x3001};

std::vector<Formatter> Formatters() {
    std::vector<Formatter> formatters;
    for (const int locale : {1033, 2052}) {
        for (const bool everyday : {false, true}) {
            formatters.emplace_back(locale);
            formatters.back().SetEverydayReading(everyday);
        }
    }
    // Other signs and separators: "+" is a sign, and the comma a decimal point.
    formatters.emplace_back(1033);
    formatters.back().SetPositiveSign(u"+");
    formatters.back().SetNumberGroupSeparator(u".");
    formatters.back().SetNumberDecimalSeparator(u",");
    return formatters;
}

TEST(TypedMarks, ReadAsTheListReadsThem) {
    int read = 0;
    const auto check = [&read](const Formatter& formatter, const auto& texts) {
        for (const char16_t* text : texts) {
            for (const int unit : kUnits) {
                double value = -1.0;
                const ErrorCode code = formatter.Parse(text, value, unit);
                const ParseReport report = formatter.ExplainParse(text, unit);
                ASSERT_EQ(code, report.code) << Narrow(text) << " into " << std::hex << unit;
                if (code != ErrorCode::Success) continue;
                EXPECT_TRUE(SameBits(value, report.value))
                    << Narrow(text) << " into " << std::hex << unit;
                ++read;
            }
        }
    };
    for (const Formatter& formatter : Formatters()) {
        check(formatter, kFeetAndInches);
        check(formatter, kAngles);
    }
    // Most shapes read in several kinds of target: the table is no list of
    // refusals.
    EXPECT_GT(read, 2000);
}

}  // namespace
