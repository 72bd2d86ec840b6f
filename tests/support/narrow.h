// Test messages: a 16-bit text shown in ASCII, each other unit as '?'.
#ifndef MENSURA_TESTS_NARROW_H
#define MENSURA_TESTS_NARROW_H

#include <string>
#include <string_view>

namespace MensuraTest {

inline std::string Narrow(std::u16string_view text) {
    std::string out;
    for (char16_t unit : text) out += unit < 0x80 ? static_cast<char>(unit) : '?';
    return out;
}

}  // namespace MensuraTest

#endif  // MENSURA_TESTS_NARROW_H
