// A C++ program outside the tree, built against Mensura as a user builds it:
// converts, renders and reads one value. Exit status 0 when all three agree
// with what the library promises.
#include <mensura/ids.h>
#include <mensura/mensura.hpp>

#include <cstdio>
#include <string>

namespace {

int Fail(const char* what) {
    std::fprintf(stderr, "consumer: %s\n", what);
    return 1;
}

}  // namespace

int main() {
    double meters = 0.0;
    if (Mensura::Converter::Convert(5.5, MENSURA_FOOT, meters, MENSURA_METER) !=
            Mensura::ErrorCode::Success ||
        meters != 1.6764000000000001) {
        return Fail("5.5 ft is not 1.6764 m");
    }

    const Mensura::Formatter formatter(1033);
    char16_t text[64];
    // Symbol 2 of the foot, "ft".
    if (formatter.Format(meters, MENSURA_METER, text, 64, 0x200000 | MENSURA_FOOT) !=
            Mensura::ErrorCode::Success ||
        std::u16string(text) != u"5.50 ft") {
        return Fail("1.6764 m does not render as 5.50 ft");
    }

    double inches = 0.0;
    if (formatter.Parse(u"5′-6 1/2″", inches, MENSURA_INCH) != Mensura::ErrorCode::Success ||
        inches != 66.5) {
        return Fail("5′-6 1/2″ does not read as 66.5 in");
    }
    std::printf("5.5 ft = %.4f m, renders as 5.50 ft; 5'-6 1/2\" = %.1f in\n", meters, inches);
    return 0;
}
