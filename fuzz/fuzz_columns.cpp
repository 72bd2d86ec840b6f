// Whole columns: ConvertArray against Convert value by value, and ParseMany
// against Parse text by text, with any ids, counts, values and texts, through
// the classes or the flat functions.
//
// Input: a byte of flags (bit 0 Chinese, bit 1 the everyday reading, bit 2
// convert in place, bit 3 no codes for ParseMany, bit 4 the flat functions),
// the two units of the conversion (five bytes each, see Input::Unit), two
// bytes for the count of values, that many doubles (zeros past the end of the
// input), the unit of the texts, a byte for their count, and then the texts,
// one after another, each ended by a zero byte.
//
// Checked: ConvertArray gives Convert's code, and on success Convert's value
// for every element bit for bit, on failure leaves the column alone;
// ParseMany gives each text Parse's code, its value bit for bit where it
// reads and a NaN where it does not, and returns how many read. Buffers are
// allocated to the exact count, so that AddressSanitizer sees any write
// beyond it.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fuzz_input.h"
#include "mensura/mensura.h"
#include "mensura/mensura.hpp"

namespace {

using Mensura::Converter;
using Mensura::ErrorCode;
using Mensura::Formatter;
using MensuraFuzz::SameBits;

constexpr std::size_t kMostValues = 1024;

void CheckConvertArray(MensuraFuzz::Input& input, bool inPlace, bool flat) {
    const int from = input.Unit();
    const int to = input.Unit();
    const std::size_t count = input.Word16() % (kMostValues + 1);
    std::vector<double> values(count);
    for (double& value : values) value = input.Double();

    // Exactly count elements; the sentinel shows an element left alone.
    const double sentinel = -0.0;
    std::unique_ptr<double[]> out(new double[count]);
    for (std::size_t i = 0; i < count; ++i) out[i] = inPlace ? values[i] : sentinel;
    const double* source = inPlace ? out.get() : values.data();
    const ErrorCode code =
        flat ? static_cast<ErrorCode>(ConvertArray(source, out.get(), count, from, to))
             : Converter::ConvertArray(source, out.get(), count, from, to);

    if (count == 0) {
        FUZZ_CHECK(code == ErrorCode::Success || code == ErrorCode::UnitMismatch);
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        double one = 0.0;
        const ErrorCode single = Converter::Convert(values[i], from, one, to);
        FUZZ_CHECK(single == code);
        if (code == ErrorCode::Success) {
            FUZZ_CHECK(SameBits(out[i], one));
        } else {
            FUZZ_CHECK(SameBits(out[i], inPlace ? values[i] : sentinel));
        }
    }
}

void CheckParseMany(MensuraFuzz::Input& input, const Formatter& formatter,
                    Mensura::Formatter* flatFormatter, bool withCodes) {
    const int unit = input.Unit();
    const std::uint8_t asked = input.Byte();
    std::u16string texts = input.Rest();
    texts.push_back(0);
    std::vector<const char16_t*> starts;
    for (std::size_t i = 0; i < texts.size();
         i += std::char_traits<char16_t>::length(&texts[i]) + 1) {
        starts.push_back(&texts[i]);
    }
    // Never more texts than the column holds: the count is the caller's word.
    const std::size_t count = asked % (starts.size() + 1);

    std::unique_ptr<double[]> values(new double[count]);
    std::unique_ptr<ErrorCode[]> codes(new ErrorCode[count]);
    std::unique_ptr<int[]> flatCodes(new int[count]);
    std::size_t read = 0;
    if (flatFormatter != nullptr) {
        read = ParseMany(flatFormatter, texts.c_str(), count, unit, values.get(),
                         withCodes ? flatCodes.get() : nullptr);
        for (std::size_t i = 0; withCodes && i < count; ++i) {
            codes[i] = static_cast<ErrorCode>(flatCodes[i]);
        }
    } else {
        read = formatter.ParseMany(texts.c_str(), count, unit, values.get(),
                                   withCodes ? codes.get() : nullptr);
    }

    std::size_t expected = 0;
    for (std::size_t i = 0; i < count; ++i) {
        double value = 0.0;
        const ErrorCode code = formatter.Parse(starts[i], value, unit);
        if (withCodes) FUZZ_CHECK(codes[i] == code);
        if (code == ErrorCode::Success) {
            ++expected;
            FUZZ_CHECK(SameBits(values[i], value));
        } else {
            FUZZ_CHECK(std::isnan(values[i]));
        }
    }
    FUZZ_CHECK(read == expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Formatter formatters[2] = {Formatter(1033), Formatter(2052)};
    static Mensura::Formatter* flatFormatters[2] = {CreateFormatter(1033), CreateFormatter(2052)};

    MensuraFuzz::Input input(data, size);
    const std::uint8_t flags = input.Byte();
    const int language = flags & 1;
    const bool everyday = (flags & 2) != 0;
    const bool flat = (flags & 16) != 0;
    formatters[language].SetEverydayReading(everyday);
    int reading = everyday ? 1 : 0;
    FormatterReadingSetting(flatFormatters[language], MENSURA_SET_EVERYDAY_READING, &reading);

    CheckConvertArray(input, (flags & 4) != 0, flat);
    CheckParseMany(input, formatters[language], flat ? flatFormatters[language] : nullptr,
                   (flags & 8) == 0);
    return 0;
}
