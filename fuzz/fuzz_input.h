// What the fuzz targets share: reading settings, ids, numbers and texts from
// the fuzzer's bytes, and stopping loudly when a property fails.
#ifndef MENSURA_FUZZ_FUZZ_INPUT_H
#define MENSURA_FUZZ_FUZZ_INPUT_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "mensura/mensura.hpp"

namespace MensuraFuzz {

// Prints what went wrong and aborts, so that libFuzzer (or the replay
// driver, or CTest) keeps the input.
[[noreturn]] inline void Fail(const char* what, const char* file, int line) {
    std::fprintf(stderr, "%s:%d: property violated: %s\n", file, line, what);
    std::fflush(stderr);
    std::abort();
}

#define FUZZ_CHECK(condition)                                                  \
    do {                                                                       \
        if (!(condition)) ::MensuraFuzz::Fail(#condition, __FILE__, __LINE__); \
    } while (false)

// A text as UTF-8 for messages; a lone surrogate shows as U+FFFD.
inline std::string Narrow(const char16_t* text) {
    std::string out;
    for (; *text != 0; ++text) {
        std::uint32_t point = *text;
        if (point >= 0xD800 && point <= 0xDBFF && text[1] >= 0xDC00 && text[1] <= 0xDFFF) {
            point = 0x10000 + ((point - 0xD800) << 10) + (text[1] - 0xDC00);
            ++text;
        } else if (point >= 0xD800 && point <= 0xDFFF) {
            point = 0xFFFD;
        }
        if (point < 0x80) {
            out += static_cast<char>(point);
        } else if (point < 0x800) {
            out += static_cast<char>(0xC0 | point >> 6);
            out += static_cast<char>(0x80 | (point & 0x3F));
        } else if (point < 0x10000) {
            out += static_cast<char>(0xE0 | point >> 12);
            out += static_cast<char>(0x80 | (point >> 6 & 0x3F));
            out += static_cast<char>(0x80 | (point & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | point >> 18);
            out += static_cast<char>(0x80 | (point >> 12 & 0x3F));
            out += static_cast<char>(0x80 | (point >> 6 & 0x3F));
            out += static_cast<char>(0x80 | (point & 0x3F));
        }
    }
    return out;
}

inline bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// The length of a text up to its terminator.
inline std::size_t Length(const char16_t* text) {
    std::size_t n = 0;
    while (text[n] != 0) ++n;
    return n;
}

// Every unit type id of the catalogue (group and type), in the order of the
// groups and their types.
inline const std::vector<int>& AllUnitTypes() {
    static const std::vector<int> types = [] {
        std::vector<int> groups(Mensura::Converter::GetUnitGroups(nullptr));
        Mensura::Converter::GetUnitGroups(groups.data());
        std::vector<int> all;
        for (const int group : groups) {
            std::vector<int> ids(Mensura::Converter::GetUnitTypes(group, nullptr));
            Mensura::Converter::GetUnitTypes(group, ids.data());
            all.insert(all.end(), ids.begin(), ids.end());
        }
        return all;
    }();
    return types;
}

// The fuzzer's bytes, taken from the front. Past the end every read gives
// zeros, so that any input, however short, is a complete case.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : data(data), size(size) {}

    bool Empty() const { return position >= size; }
    std::size_t Remaining() const { return Empty() ? 0 : size - position; }

    std::uint8_t Byte() { return Empty() ? 0 : data[position++]; }
    std::uint16_t Word16() {
        const unsigned low = Byte();
        return static_cast<std::uint16_t>(low | Byte() << 8);
    }
    std::uint32_t Word32() {
        const std::uint32_t low = Word16();
        return low | static_cast<std::uint32_t>(Word16()) << 16;
    }
    // Any 64 bits: NaNs, infinities and subnormals included.
    double Double() {
        std::uint64_t bits = Word32();
        bits |= static_cast<std::uint64_t>(Word32()) << 32;
        double value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    // A unit id: one byte chooses how the next four are read. 0: the raw
    // bits, any id at all; 1: a unit type of the catalogue by index; 2: its
    // group; 3: one of its symbols by number, possibly one past the last.
    int Unit() {
        const std::uint8_t mode = Byte();
        const std::uint32_t bits = Word32();
        const std::vector<int>& types = AllUnitTypes();
        const int type = types[bits % types.size()];
        switch (mode % 4) {
            case 1:
                return type;
            case 2:
                return type & 0xFF000;
            case 3: {
                const std::size_t symbols = Mensura::Formatter::GetUnitSymbols(type, nullptr);
                return type | static_cast<int>(((bits >> 16) % (symbols + 1) + 1) << 20);
            }
            default:
                return static_cast<int>(bits);
        }
    }

    // A text of at most `bytes` bytes of the input, read as UTF-8 where the
    // bytes are UTF-8 and as one unit each where they are not, so that the
    // corpus stays readable while every 16-bit unit can be made: a three-byte
    // sequence may encode a surrogate, which then stands alone, and a zero
    // byte is a zero unit.
    std::u16string Text(std::size_t bytes) {
        std::u16string text;
        const std::size_t end = bytes < Remaining() ? position + bytes : size;
        while (position < end) {
            const std::uint8_t lead = data[position];
            std::size_t extra = 0;
            std::uint32_t point = lead;
            if (lead >= 0xC2 && lead <= 0xDF) {
                extra = 1;
                point = lead & 0x1F;
            } else if (lead >= 0xE0 && lead <= 0xEF) {
                extra = 2;
                point = lead & 0x0F;
            } else if (lead >= 0xF0 && lead <= 0xF4) {
                extra = 3;
                point = lead & 0x07;
            }
            bool sequence = extra > 0 && position + extra < end;
            for (std::size_t i = 1; sequence && i <= extra; ++i) {
                const std::uint8_t next = data[position + i];
                if ((next & 0xC0) != 0x80) sequence = false;
                point = point << 6 | (next & 0x3F);
            }
            const std::uint32_t least[] = {0, 0x80, 0x800, 0x10000};
            if (sequence && point >= least[extra] && point <= 0x10FFFF) {
                position += extra + 1;
            } else {
                point = lead;
                position += 1;
            }
            if (point >= 0x10000) {
                text.push_back(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)));
                text.push_back(static_cast<char16_t>(0xDC00 + (point & 0x3FF)));
            } else {
                text.push_back(static_cast<char16_t>(point));
            }
        }
        return text;
    }
    // A text whose byte count comes first, in one byte.
    std::u16string ShortText() { return Text(Byte()); }
    // The rest of the input as a text.
    std::u16string Rest() { return Text(Remaining()); }

private:
    const std::uint8_t* data;
    std::size_t size;
    std::size_t position = 0;
};

}  // namespace MensuraFuzz

#endif  // MENSURA_FUZZ_FUZZ_INPUT_H
