// Many threads on the library at once: eight with formatters of their own,
// each running every kind of call on settings of its own, beside threads on
// the conversions, the catalogue's queries and the flat GetDisplayName. Each
// thread writes down everything it gets back and compares it, round after
// round, with what one thread alone got before, so that a wrong answer shows
// as well as a race (which ThreadSanitizer reports in the build with
// MENSURA_SANITIZE=thread).
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "mensura/ids.h"
#include "mensura/mensura.h"
#include "mensura/mensura.hpp"
#include "support/narrow.h"

namespace {

using Mensura::Converter;
using Mensura::ErrorCode;
using Mensura::Formatter;
using Mensura::NumberFormat;
using Mensura::ParseReport;

// Everything a run gets back, as one text: codes, counts, the bits of
// doubles and the texts themselves, each ended by a separator.
class Transcript {
public:
    void Number(long long number) { Text(std::to_string(number)); }
    void Code(ErrorCode code) { Number(static_cast<long long>(code)); }
    void Bits(double value) {
        std::uint64_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        Text(std::to_string(bits));
    }
    void Text(const std::string& text) { Text(std::u16string(text.begin(), text.end())); }
    void Text(const std::u16string& text) {
        log += text;
        log += u'\u241E';
    }
    const std::u16string& Log() const { return log; }

private:
    std::u16string log;
};

// Where two transcripts first differ, for the message.
std::string FirstDifference(const std::u16string& got, const std::u16string& expected) {
    std::size_t i = 0;
    while (i < got.size() && i < expected.size() && got[i] == expected[i]) ++i;
    const std::size_t from = i < 40 ? 0 : i - 40;
    return "at unit " + std::to_string(i) + ": got '" + MensuraTest::Narrow(got.substr(from, 80)) +
           "', expected '" + MensuraTest::Narrow(expected.substr(from, 80)) + "'";
}

const char16_t* const kTexts[] = {u"5.5 ft",     u"5′-6 1/2″", u"N 45°30′ E", u"5 kg·m/s²",
                                  u"1,000.5 mm", u"150 lb",    u"5 ft 6 in",  u"3 米",
                                  u"1e-9 km3",   u"5 feets",   u"−40 °F",     u"12.5 kJ",
                                  u"6,6 m",      u"٥٫٥ m",     u"5 metres",   u"",
                                  u"2 ft 3 in",  u"5′6½″",     u"N45-30E",    u"5 ft * 3 ft"};
const int kTextUnits[] = {MENSURA_METER, MENSURA_INCH, MENSURA_DEGREE, MENSURA_NEWTON};

// One formatter's work, all of it recorded: settings chosen by `variant`
// (0 to 7), then every getter, renderings, parses with both readings,
// ExplainParse, symbol strings, ParseMany and ConvertArray.
void RunFormatter(int variant, Transcript& out) {
    Formatter formatter(variant % 2 == 0 ? 1033 : 2052);
    const char16_t* digits[] = {u"0123456789", u"٠١٢٣٤٥٦٧٨٩"};
    const char16_t* negative[] = {u"-", u"−", u"neg "};
    const char16_t* separators[][2] = {{u".", u","}, {u",", u"."}};
    const int sizes[][2] = {{3, 0}, {3, 2}, {4, 0}};
    out.Code(formatter.SetNativeDigits(digits[variant / 4]));
    formatter.SetNegativeSign(negative[variant % 3]);
    formatter.SetPositiveSign(variant % 2 == 0 ? u"" : u"+");
    out.Code(formatter.SetNumberDecimalDigits(variant + 1));
    out.Code(formatter.SetNumberGroupSeparator(u"\uE000"));
    out.Code(formatter.SetNumberDecimalSeparator(separators[variant / 2 % 2][0]));
    out.Code(formatter.SetNumberGroupSeparator(separators[variant / 2 % 2][1]));
    out.Code(formatter.SetNumberGroupSizes(sizes[variant % 3], variant % 3 == 1 ? 2 : 1));
    formatter.SetNumber(static_cast<NumberFormat>(variant % 6));
    out.Code(formatter.SetSymbolFormattingString(
        0x502016, variant % 2 == 0 ? u"{0} ft {1} in" : u"{1} in {0} ft"));
    out.Code(formatter.SetSymbolParsingString(0x202001, u"{0} metres"));
    out.Code(formatter.SetDefaultSymbol(0x202017));

    char16_t text[256];
    char16_t native[10];
    formatter.GetNativeDigits(native);
    out.Text(std::u16string(native, 10));
    for (auto get : {&Formatter::GetNegativeSign, &Formatter::GetPositiveSign,
                     &Formatter::GetNumberDecimalSeparator, &Formatter::GetNumberGroupSeparator}) {
        (formatter.*get)(text, 3);
        out.Text(text);
    }
    int groups[4] = {};
    out.Number(static_cast<long long>(formatter.GetNumberGroupSizes(groups)));
    out.Number(groups[0] * 10 + groups[1]);
    out.Number(formatter.GetNumberDecimalDigits());
    out.Number(static_cast<long long>(formatter.GetNumber()));
    out.Code(formatter.GetSymbolFormattingString(0x502016, text, 256));
    out.Text(text);
    out.Number(formatter.GetLocaleId());

    const double values[] = {5.5, -1234567.891, 0.000123, 66.25, 1e21, -0.0};
    const int symbols[] = {0, 0x202017, 0x502016, 0x702016, MENSURA_METER, MENSURA_GROUP_LENGTH};
    for (const double value : values) {
        for (const int symbol : symbols) {
            double converted = 0.0;
            out.Code(formatter.Format(value, MENSURA_INCH, text, 256, symbol, &converted));
            out.Text(text);
            out.Bits(converted);
        }
        out.Code(formatter.Format(value, MENSURA_DEGREE, text, 256, 0x508002));
        out.Text(text);
    }

    for (const bool everyday : {false, true}) {
        formatter.SetEverydayReading(everyday);
        for (const char16_t* const source : kTexts) {
            for (const int unit : kTextUnits) {
                double value = -1.0;
                out.Code(formatter.Parse(source, value, unit));
                out.Bits(value);
            }
            const ParseReport report = formatter.ExplainParse(source, MENSURA_INCH);
            out.Code(report.code);
            out.Number(report.reason);
            out.Number(static_cast<long long>(report.start * 1000 + report.length));
            out.Number(report.group);
            out.Bits(report.value);
            out.Number(report.note ? 1 : 0);
        }
        // The same texts as one column, and the renderings read back.
        std::u16string column;
        for (const char16_t* const source : kTexts) {
            column += source;
            column.push_back(0);
        }
        double read[std::size(kTexts)];
        ErrorCode codes[std::size(kTexts)];
        out.Number(static_cast<long long>(
            formatter.ParseMany(column.c_str(), std::size(kTexts), MENSURA_METER, read, codes)));
        for (std::size_t i = 0; i < std::size(kTexts); ++i) {
            out.Bits(read[i]);
            out.Code(codes[i]);
        }
        double value = 0.0;
        out.Code(formatter.Parse(u"2 metres", value, MENSURA_FOOT));
        out.Bits(value);
    }

    std::vector<double> column(37);
    for (std::size_t i = 0; i < column.size(); ++i) column[i] = (variant + 1) * (i - 18.5) * 0.7;
    const int pairs[][2] = {{MENSURA_FOOT, MENSURA_METER},
                            {MENSURA_DEGREE_CELSIUS, MENSURA_DEGREE_FAHRENHEIT},
                            {MENSURA_METER, MENSURA_KILOGRAM}};
    const auto& pair = pairs[variant % 3];
    out.Code(
        Converter::ConvertArray(column.data(), column.data(), column.size(), pair[0], pair[1]));
    for (const double value : column) out.Bits(value);
}

// Every conversion between a unit type and its group's first one, and the
// factors.
void RunConversions(Transcript& out) {
    std::vector<int> groups(Converter::GetUnitGroups(nullptr));
    Converter::GetUnitGroups(groups.data());
    for (const int group : groups) {
        std::vector<int> types(Converter::GetUnitTypes(group, nullptr));
        Converter::GetUnitTypes(group, types.data());
        for (const int type : types) {
            double value = 0.0;
            out.Code(Converter::Convert(1.2345, type, value, group | 1));
            out.Bits(value);
            out.Bits(Converter::Factor(group | 1, type));
            const Converter converter(type, group | 1);
            out.Bits(converter.Convert(-7.5));
            out.Number(Convert(98.6, type, &value, MENSURA_DEGREE_CELSIUS));
            out.Bits(value);
        }
    }
}

// The catalogue's queries: groups, types, symbols, dimensions, and each
// symbol's English name looked up again by FindUnit.
void RunCatalogue(Transcript& out) {
    std::vector<int> groups(GetUnitGroups(nullptr));
    GetUnitGroups(groups.data());
    const Formatter english;
    char16_t name[256];
    for (const int group : groups) {
        std::vector<int> types(GetUnitTypes(group, nullptr));
        out.Number(static_cast<long long>(GetUnitTypes(group, types.data())));
        int dimensions[7] = {};
        out.Number(static_cast<long long>(GetUnitDimensions(group, dimensions)));
        for (const int exponent : dimensions) out.Number(exponent);
        for (const int type : types) {
            std::vector<int> symbols(Formatter::GetUnitSymbols(type, nullptr));
            out.Number(static_cast<long long>(Formatter::GetUnitSymbols(type, symbols.data())));
            for (const int symbol : symbols) {
                out.Code(english.GetDisplayName(symbol, name, 256));
                int unit = -1;
                out.Code(Formatter::FindUnit(name, unit));
                out.Number(unit);
                out.Code(Converter::GetUnitDimensions(symbol, dimensions));
                out.Number(dimensions[0] * 100 + dimensions[1] * 10 + dimensions[2]);
            }
        }
    }
}

// The flat GetDisplayName of every group, type and symbol, in several
// locales: the two languages and ids that fall back to English.
void RunDisplayNames(Transcript& out) {
    std::vector<int> groups(GetUnitGroups(nullptr));
    GetUnitGroups(groups.data());
    char16_t name[256];
    for (const int locale : {1033, 2052, 0, -1, 1031}) {
        for (const int group : groups) {
            out.Number(GetDisplayName(locale, group, name, 256));
            out.Text(name);
            std::vector<int> types(GetUnitTypes(group, nullptr));
            GetUnitTypes(group, types.data());
            for (const int type : types) {
                out.Number(GetDisplayName(locale, type, name, 256));
                out.Text(name);
                out.Number(GetDisplayName(locale, type | 1 << 20, name, 256));
                out.Text(name);
            }
        }
    }
}

TEST(Concurrency, EveryKindOfCallOnManyThreadsGivesWhatOneThreadGets) {
    std::vector<std::function<void(Transcript&)>> runs;
    for (int variant = 0; variant < 8; ++variant) {
        runs.push_back([variant](Transcript& out) { RunFormatter(variant, out); });
    }
    runs.insert(runs.end(), {RunConversions, RunCatalogue, RunDisplayNames, RunConversions,
                             RunCatalogue, RunDisplayNames});

    std::vector<std::u16string> expected;
    for (const auto& run : runs) {
        Transcript alone;
        run(alone);
        expected.push_back(alone.Log());
    }
    // The eight formatters' settings differ, so that a state shared by
    // mistake shows in the transcripts.
    for (int variant = 1; variant < 8; ++variant) EXPECT_NE(expected[variant], expected[0]);

    constexpr int kRounds = 20;
    std::atomic<std::size_t> waiting{runs.size()};
    std::vector<std::string> failures(runs.size());
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < runs.size(); ++t) {
        threads.emplace_back([&, t] {
            // All threads start together.
            --waiting;
            while (waiting.load() > 0) std::this_thread::yield();
            for (int round = 0; round < kRounds && failures[t].empty(); ++round) {
                Transcript got;
                runs[t](got);
                if (got.Log() != expected[t]) {
                    failures[t] = "round " + std::to_string(round) + ", " +
                                  FirstDifference(got.Log(), expected[t]);
                }
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (std::size_t t = 0; t < runs.size(); ++t) EXPECT_EQ(failures[t], "") << "thread " << t;
}

}  // namespace
