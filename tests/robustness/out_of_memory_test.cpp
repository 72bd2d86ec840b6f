// A formatter's setters when the heap runs dry midway: every allocation in
// turn is made to fail, and whatever the setter leaves behind must read
// safely and as before. Run under the sanitizers, a path that kept a freed
// symbol shows up as a use after free.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <new>

#include "api/formatter_impl.h"
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

}  // namespace
}  // namespace Mensura
