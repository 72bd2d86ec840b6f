// A formatter's setters when the heap runs dry midway: every allocation in
// turn is made to fail, and whatever the setter leaves behind must read
// safely and as before. Run under the sanitizers, a path that kept a freed
// symbol shows up as a use after free.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <new>
#include <string>

#include "api/formatter_impl.h"
#include "catalogue/unit_catalog.h"
#include "mensura/mensura.h"
#include "robustness/failing_allocator.h"

namespace Mensura {
namespace {

constexpr int kFeetInchesFraction = 0x702016;

double Read(const FormatterImpl& formatter, const char16_t* text) {
    double value = -1.0;
    if (formatter.ParseInUnit(text, value, kInch) != ErrorCode::Success) return -1.0;
    return value;
}

TEST(OutOfMemory, ReplacingASymbolStringKeepsTheOldOneOrTheNewOne) {
    bool succeeded = false;
    for (long allowed = 0; !succeeded && allowed < 2000; ++allowed) {
        FormatterImpl formatter(1033);
        ASSERT_EQ(formatter.SetSymbolString(SymbolStrings::Use::Parsing, kFeetInchesFraction,
                                            u"{0} ft {1} in"),
                  ErrorCode::Success);
        bool threw = false;
        MensuraTest::FailAfter(allowed);
        try {
            succeeded = formatter.SetSymbolString(SymbolStrings::Use::Parsing, kFeetInchesFraction,
                                                  u"{0} feet {1} inches") == ErrorCode::Success;
        } catch (const std::bad_alloc&) {
            threw = true;
        }
        MensuraTest::FailAfter(-1);
        if (threw) {
            EXPECT_EQ(Read(formatter, u"5 ft 6 1/4 in"), 66.25) << allowed;
            EXPECT_EQ(Read(formatter, u"5 feet 6 1/4 inches"), -1.0) << allowed;
        } else {
            ASSERT_TRUE(succeeded) << allowed;
            EXPECT_EQ(Read(formatter, u"5 feet 6 1/4 inches"), 66.25);
            EXPECT_EQ(Read(formatter, u"5 ft 6 1/4 in"), -1.0);
        }
    }
    EXPECT_TRUE(succeeded);
}

TEST(OutOfMemory, ANewSymbolStringIsThereWholeOrNotAtAll) {
    bool succeeded = false;
    for (long allowed = 0; !succeeded && allowed < 2000; ++allowed) {
        FormatterImpl formatter(1033);
        MensuraTest::FailAfter(allowed);
        try {
            succeeded = formatter.SetSymbolString(SymbolStrings::Use::Parsing, kFeetInchesFraction,
                                                  u"{0} ft {1} in") == ErrorCode::Success;
        } catch (const std::bad_alloc&) {
        }
        MensuraTest::FailAfter(-1);
        EXPECT_EQ(Read(formatter, u"5 ft 6 1/4 in"), succeeded ? 66.25 : -1.0) << allowed;
        char16_t stored[32];
        EXPECT_EQ(
            formatter.GetSymbolString(SymbolStrings::Use::Parsing, kFeetInchesFraction, stored, 32),
            succeeded ? ErrorCode::Success : ErrorCode::NotSet)
            << allowed;
    }
    EXPECT_TRUE(succeeded);
}

// What a caller sees of a formatter: every number setting and default, and
// what it makes of texts and values that use the tokens the setters below
// change, before and after.
struct Seen {
    std::vector<std::u16string> texts;
    std::vector<double> numbers;
    bool operator==(const Seen& other) const {
        return texts == other.texts && numbers == other.numbers;
    }
};

Seen Look(const Formatter& formatter) {
    Seen seen;
    char16_t buffer[64] = {};
    formatter.GetNativeDigits(buffer);
    seen.texts.emplace_back(buffer, 10);
    for (const auto get :
         {&Formatter::GetPositiveSign, &Formatter::GetNegativeSign,
          &Formatter::GetNumberDecimalSeparator, &Formatter::GetNumberGroupSeparator}) {
        (formatter.*get)(buffer, 64);
        seen.texts.emplace_back(buffer);
    }
    int sizes[8] = {};
    if (formatter.GetNumberGroupSizes(nullptr) <= 8) {
        seen.numbers.push_back(static_cast<double>(formatter.GetNumberGroupSizes(sizes)));
        seen.numbers.insert(seen.numbers.end(), sizes, sizes + 8);
    }
    seen.numbers.push_back(formatter.GetNumberDecimalDigits());
    seen.numbers.push_back(static_cast<double>(formatter.GetNumber()));
    seen.numbers.push_back(formatter.GetDefaultSymbol(kMeter));
    seen.numbers.push_back(formatter.GetDefaultUnit(kLength));
    for (const char16_t* text : {u"1.5 m", u"1,234.5 m", u"-2 m", u"5", u"1##5 m", u"1_234##5 m",
                                 u"~2 m", u"p3 m", u"\u0661.\u0665 m"}) {
        double value = -1.0;
        seen.numbers.push_back(static_cast<double>(formatter.Parse(text, value, kMeter)));
        seen.numbers.push_back(value);
    }
    for (const double value : {1.5, 1234567.25, -2.0}) {
        const ErrorCode code = formatter.Format(value, kMeter, buffer, 64);
        seen.texts.emplace_back(code == ErrorCode::Success ? buffer : u"#");
    }
    return seen;
}

// Each setter in turn with every allocation of the call made to fail, until
// one call gets through: after every failure the formatter is as it was, and
// the call that gets through changes what a caller sees.
TEST(OutOfMemory, ANumberSetterOrADefaultChangesAllOrNothing) {
    using Setter = ErrorCode (*)(Formatter&);
    const struct {
        const char* name;
        Setter set;
    } setters[] = {
        {"decimal separator", [](Formatter& f) { return f.SetNumberDecimalSeparator(u"##"); }},
        {"group separator", [](Formatter& f) { return f.SetNumberGroupSeparator(u"_"); }},
        {"negative sign",
         [](Formatter& f) {
             f.SetNegativeSign(u"~");
             return ErrorCode::Success;
         }},
        {"positive sign",
         [](Formatter& f) {
             f.SetPositiveSign(u"p");
             return ErrorCode::Success;
         }},
        {"native digits",
         [](Formatter& f) {
             return f.SetNativeDigits(
                 u"\u0660\u0661\u0662\u0663\u0664\u0665\u0666\u0667\u0668"
                 u"\u0669");
         }},
        {"group sizes",
         [](Formatter& f) {
             const int sizes[] = {2, 3, 0};
             return f.SetNumberGroupSizes(sizes, 3);
         }},
        {"decimal digits", [](Formatter& f) { return f.SetNumberDecimalDigits(4); }},
        {"default symbol", [](Formatter& f) { return f.SetDefaultSymbol(0x202001); }},
        {"default unit", [](Formatter& f) { return f.SetDefaultUnit(kFoot); }},
    };
    for (const auto& setter : setters) {
        Formatter formatter(1033);
        const Seen before = Look(formatter);
        bool succeeded = false;
        long allowed = 0;
        for (; !succeeded && allowed < 5000; ++allowed) {
            MensuraTest::FailAfter(allowed);
            try {
                succeeded = setter.set(formatter) == ErrorCode::Success;
            } catch (const std::bad_alloc&) {
            }
            MensuraTest::FailAfter(-1);
            if (!succeeded) {
                ASSERT_TRUE(Look(formatter) == before) << setter.name << " failing at " << allowed;
            }
        }
        EXPECT_TRUE(succeeded) << setter.name;
        EXPECT_FALSE(Look(formatter) == before) << setter.name;
    }
}

// One symbol string changed back and forth while another keeps their first
// node: now and then a change builds the dictionary's trees anew. At each
// change that does, every allocation in turn is made to fail, on the same
// history each time: a change that fails leaves the old text reading and the
// new one not, and one that gets through reads, whether or not its trees
// could be built anew.
TEST(OutOfMemory, ASymbolStringThatChangesBackAndForthStaysWhole) {
    const UnitCatalog& catalog = UnitCatalog::Instance();
    const IFormatSymbol* meter = catalog.FindSymbol(0x202001, 0)->AsFormat();
    const int inches = 0x902016;  // x x/2″
    const IFormatSymbol* parent = catalog.FindSymbol(inches, 0)->AsFormat();
    const char16_t* texts[] = {u"{0} pouces", u"{0} zoll"};
    const char16_t* rests[] = {u" 1/2 pouces", u" 1/2 zoll"};
    const auto change = [&](SymbolStrings& strings, int round) {
        return strings.Set(SymbolStrings::Use::Formatting, inches, parent, texts[round % 2]);
    };
    const auto replay = [&](SymbolStrings& strings, int rounds) {
        ASSERT_EQ(strings.Set(SymbolStrings::Use::Parsing, 0x202001, meter, u"{0}"),
                  ErrorCode::Success);
        for (int round = 0; round < rounds; ++round) {
            ASSERT_EQ(change(strings, round), ErrorCode::Success);
        }
    };
    const NumberSettings numbers;
    const auto reads = [&](const SymbolStrings& strings, int round) {
        SymbolList leading;
        leading.PushBackNew<NumberSymbol>(5.0, 0u);
        double value = 0.0;
        return strings.Read(numbers, leading, rests[round % 2], value, Dimensions{1}) ==
                   ErrorCode::Success &&
               value > 0.1396 && value < 0.1398;  // 5 1/2 inches in meters
    };

    // The changes whose trees are built anew: the pools end smaller than
    // two changes before, when they held the same texts.
    std::vector<int> rebuilding;
    {
        SymbolStrings strings;
        replay(strings, 0);
        std::vector<std::size_t> pools;
        for (int round = 0; round < 400 && rebuilding.size() < 3; ++round) {
            ASSERT_EQ(change(strings, round), ErrorCode::Success);
            pools.push_back(strings.Dictionary().PoolBytes());
            if (round >= 2 && pools[round] < pools[round - 2]) rebuilding.push_back(round);
        }
    }
    ASSERT_FALSE(rebuilding.empty());
    for (const int round : rebuilding) {
        bool succeeded = false;
        for (long allowed = 0; !succeeded && allowed < 2000; ++allowed) {
            SymbolStrings strings;
            replay(strings, round);
            MensuraTest::FailAfter(allowed);
            try {
                succeeded = change(strings, round) == ErrorCode::Success;
            } catch (const std::bad_alloc&) {
            }
            MensuraTest::FailAfter(-1);
            EXPECT_EQ(reads(strings, round), succeeded) << round << " failing at " << allowed;
            EXPECT_EQ(reads(strings, round + 1), !succeeded) << round << " failing at " << allowed;
        }
        EXPECT_TRUE(succeeded) << round;
    }
}

// No exception reaches a caller in C: a formatter that cannot be made is
// null, and a setter that runs out of memory reports a failure.
TEST(OutOfMemory, TheFlatFunctionsReportItAsFailure) {
    MensuraTest::FailAfter(0);
    EXPECT_EQ(CreateFormatter(1033), nullptr);
    MensuraTest::FailAfter(-1);

    bool succeeded = false;
    for (long allowed = 0; !succeeded && allowed < 2000; ++allowed) {
        MensuraFormatter* formatter = CreateFormatter(1033);
        ASSERT_NE(formatter, nullptr);
        char16_t text[] = u"{0} ft {1} in";
        MensuraTest::FailAfter(allowed);
        const int result = FormatterSymbolStringSetting(formatter, 4, kFeetInchesFraction, text, 0);
        MensuraTest::FailAfter(-1);
        EXPECT_TRUE(result == 0 || result == 1) << allowed;
        succeeded = result == 0;
        double value = -1.0;
        EXPECT_EQ(Parse(formatter, u"5 ft 6 1/4 in", &value, kInch), succeeded ? 0 : 2) << allowed;
        DestroyFormatter(formatter);
    }
    EXPECT_TRUE(succeeded);
}

// GetDisplayName keeps nothing per locale id: with the next allocation made
// to fail, each of 100,000 distinct locale ids, 2052 among them, still gets
// its name, so none of them allocates and nothing grows with the ids asked
// for. A call that did allocate would end as code 1, not abort.
TEST(OutOfMemory, GetDisplayNameAllocatesForNoLocale) {
    int failures = 0;
    for (int locale = -50000; locale < 50000; ++locale) {
        char16_t name[8] = {};
        MensuraTest::FailAfter(0);
        const int result = GetDisplayName(locale, kInch, name, 8);
        MensuraTest::FailAfter(-1);
        const std::u16string expected = locale == 2052 ? u"英寸" : u"inch";
        if (result != 0 || name != expected) ++failures;
    }
    EXPECT_EQ(failures, 0);
}

}  // namespace
}  // namespace Mensura
