// Converting, rendering and reading quantities with the C++ classes.
//
//   build/examples/mensura_example_quantities
#include <cstdio>
#include <string>

#include "mensura/mensura.hpp"

namespace {

// Shows 16-bit text on a UTF-8 terminal.
std::string Utf8(const char16_t* text) {
    std::string out;
    for (; *text != 0; ++text) {
        char32_t code = *text;
        if (code >= 0xD800 && code < 0xDC00 && text[1] >= 0xDC00 && text[1] < 0xE000) {
            code = 0x10000 + ((code - 0xD800) << 10) + (*++text - 0xDC00);
        }
        if (code < 0x80) {
            out += static_cast<char>(code);
        } else if (code < 0x800) {
            out += static_cast<char>(0xC0 | (code >> 6));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            out += static_cast<char>(0xE0 | (code >> 12));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (code >> 18));
            out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return out;
}

constexpr int kMeter = 0x2001;
constexpr int kFoot = 0x2017;
constexpr int kInch = 0x2016;
constexpr int kCelsius = 0x2A002;
constexpr int kFahrenheit = 0x2A003;

}  // namespace

int main() {
    // A conversion: any two units of the same dimensions.
    double fahrenheit = 0.0;
    Mensura::Converter::Convert(100.0, kCelsius, fahrenheit, kFahrenheit);
    std::printf("100 degrees Celsius is %.17g degrees Fahrenheit\n", fahrenheit);

    // A prepared converter for many values.
    const Mensura::Converter feetToMeters(kFoot, kMeter);
    std::printf("5.5 ft is %g m\n", feetToMeters.Convert(5.5));

    // Rendering: the number settings of a formatter and a symbol of the unit.
    Mensura::Formatter formatter;
    char16_t text[64];
    double converted = 0.0;
    formatter.Format(1234.5678, kMeter, text, 64, 0x202017 /* "ft" */, &converted);
    std::printf("1234.5678 m renders as %s\n", Utf8(text).c_str());

    // Reading: numbers, products of units, feet and inches.
    for (const char16_t* input : {u"5 ft", u"5′-6 1/2″", u"1,000.5 mm", u"2 m/s·s"}) {
        double meters = 0.0;
        if (formatter.Parse(input, meters, kMeter) == Mensura::ErrorCode::Success) {
            std::printf("%s reads as %.17g m\n", Utf8(input).c_str(), meters);
        }
    }
    double inches = 0.0;
    formatter.Parse(u"5′-6 1/2″", inches, kInch);
    std::printf("and as %g in\n", inches);

    // Names in either language.
    const Mensura::Formatter chinese(2052);
    chinese.GetDisplayName(0x2000, text, 64);
    std::printf("group 0x2000 is called %s in Simplified Chinese\n", Utf8(text).c_str());
    return 0;
}
