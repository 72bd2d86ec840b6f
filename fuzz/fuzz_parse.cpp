// Parse and ExplainParse of any text into any unit id, in both languages and
// with both readings.
//
// Input: a unit (one byte for the kind of id, four for its bits, see
// Input::Unit), then the text, UTF-8 where it is UTF-8 (Input::Text).
//
// Checked for each of the four formatters: ExplainParse returns the code of
// Parse; the report says Read exactly when that code is Success, and then
// holds Parse's value bit for bit; a failed Parse leaves the value alone; the
// report's reason is one of the six, and its span and its note lie inside
// the text (up to its first zero unit).
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

#include "fuzz_input.h"
#include "mensura/mensura.hpp"

namespace {

using Mensura::ErrorCode;
using Mensura::Formatter;
using Mensura::ParseReport;
using MensuraFuzz::Length;
using MensuraFuzz::SameBits;

void Check(const Formatter& formatter, const char16_t* text, std::size_t length, int unit) {
    // A value no text reads, so that a write on failure shows.
    const double untouched = -std::numeric_limits<double>::denorm_min();
    double value = untouched;
    const ErrorCode code = formatter.Parse(text, value, unit);
    const ParseReport report = formatter.ExplainParse(text, unit);

    FUZZ_CHECK(report.code == code);
    FUZZ_CHECK((code == ErrorCode::Success) == (report.reason == ParseReport::Read));
    if (code == ErrorCode::Success) {
        FUZZ_CHECK(SameBits(report.value, value));
    } else {
        FUZZ_CHECK(code == ErrorCode::ParseFailure);
        FUZZ_CHECK(SameBits(value, untouched));
    }
    FUZZ_CHECK(report.reason >= ParseReport::Read && report.reason <= ParseReport::UnknownUnit);
    FUZZ_CHECK(report.start <= length && report.length <= length - report.start);
    if (report.note) {
        FUZZ_CHECK(report.noteStart <= length && report.noteLength <= length - report.noteStart);
        FUZZ_CHECK(report.noteLength > 0);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Formatter english(1033);
    static Formatter chinese(2052);

    MensuraFuzz::Input input(data, size);
    const int unit = input.Unit();
    const std::u16string text = input.Rest();
    const std::size_t length = Length(text.c_str());

    for (const bool everyday : {false, true}) {
        english.SetEverydayReading(everyday);
        chinese.SetEverydayReading(everyday);
        Check(english, text.c_str(), length, unit);
        Check(chinese, text.c_str(), length, unit);
    }
    return 0;
}
