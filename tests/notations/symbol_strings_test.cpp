// Symbol strings from inside: the grammar of the split, the self-check of a
// custom symbol, its parts and its reading in any order of the placeholders,
// and the tree of literals through which a formatter reads them.
#include "notations/symbol_strings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/unit_catalog.h"
#include "support/narrow.h"

namespace Mensura {
namespace {

using MensuraTest::Narrow;
using Texts = std::vector<std::u16string>;

const IFormatSymbol* Catalogued(int id) {
    return UnitCatalog::Instance().FindSymbol(id, 0)->AsFormat();
}

const IFormatSymbol* Meter() {
    return Catalogued(0x202001);  // "m"
}

TEST(SplitSymbolString, LiteralsAndPlaceholders) {
    const struct {
        const char16_t* text;
        Texts literals;
        std::vector<int> indices;
    } rows[] = {
        {u"{0} meters", {u"", u" meters"}, {0}},
        {u"{0}", {u""}, {0}},
        {u"{0} {{m}}", {u"", u" {m}"}, {0}},
        {u"{{{0} }}", {u"{", u" }"}, {0}},
        {u"{1} in {0} ft", {u"", u" in ", u" ft"}, {1, 0}},
        {u"{0}d {1}m {2}s", {u"", u"d ", u"m ", u"s"}, {0, 1, 2}},
        {u"a{0}b{1}", {u"a", u"b"}, {0, 1}},
        {u"{12}x{007}", {u"", u"x"}, {12, 7}},
        {u"meters", {u"meters"}, {}},
        {u"}}{{", {u"}{"}, {}},
        {u"", {u""}, {}},
        {u"°{0}′", {u"°", u"′"}, {0}},
    };
    for (const auto& row : rows) {
        SymbolStringParts parts;
        ASSERT_TRUE(SplitSymbolString(row.text, parts)) << Narrow(row.text);
        EXPECT_EQ(parts.literals, row.literals) << Narrow(row.text);
        EXPECT_EQ(parts.indices, row.indices) << Narrow(row.text);
    }
}

TEST(SplitSymbolString, Refusals) {
    for (const char16_t* text : {u"{0}{1}", u"{0", u"{", u"}", u"{}", u"{ 0}", u"{0 }", u"{0}}",
                                 u"m}", u"{x}", u"{-1}", u"{0}{{", u"a}b", u"{1a}", u"{{{0}}}"}) {
        SymbolStringParts parts;
        EXPECT_FALSE(SplitSymbolString(text, parts)) << Narrow(text);
    }
    SymbolStringParts parts;
    EXPECT_FALSE(SplitSymbolString(nullptr, parts));
}

// A placeholder number is read up to the largest int, leading zeros and
// all, and refused beyond it; the numbers that would wrap into small ones are
// held through the setters.
TEST(SplitSymbolString, PlaceholderNumbersUpToTheLargestInt) {
    const std::u16string zeros(100000, u'0');
    const struct {
        std::u16string text;
        bool read;
        int index;
    } rows[] = {{u"{2147483647} m", true, 2147483647},
                {u"{" + zeros + u"} m", true, 0},
                {u"{" + zeros + u"7} m", true, 7},
                {u"{2147483648} m", false, 0}};
    for (const auto& row : rows) {
        SymbolStringParts parts;
        const std::string shown = Narrow(row.text.substr(0, 24));
        ASSERT_EQ(SplitSymbolString(row.text.c_str(), parts), row.read) << shown;
        if (row.read) {
            EXPECT_EQ(parts.indices, std::vector<int>{row.index}) << shown;
        }
    }
}

TEST(CustomSymbol, ChecksItselfAgainstItsParent) {
    const IFormatSymbol* feetInches = Catalogued(0x502016);
    const IFormatSymbol* degrees = Catalogued(0x408002);
    const struct {
        const IFormatSymbol* parent;
        Texts literals;
        std::vector<int> indices;
        int form;
        bool valid;
    } rows[] = {
        {Meter(), {u""}, {0}, 0, true},
        {Meter(), {u"", u" m"}, {0}, 0, true},
        {Meter(), {u"", u" m", u"x"}, {0}, 0, false},  // a literal too many
        {Meter(), {}, {0}, 0, false},                  // one too few
        {Meter(), {u""}, {1}, 0, false},               // out of range
        {Meter(), {u"", u" "}, {0, 0}, 0, false},      // too many placeholders
        {Meter(), {u"m"}, {}, 0, false},               // none
        {Meter(), {u""}, {0}, 1, false},               // no form 1
        {nullptr, {u""}, {0}, 0, false},
        {feetInches, {u"", u"′"}, {1, 0}, 0, true},
        {feetInches, {u"", u"′"}, {1, 1}, 0, false},  // repeated
        {feetInches, {u"", u"′"}, {0}, 0, false},
        {degrees, {u"", u"d", u"m"}, {2, 0, 1}, 0, true},
        {degrees, {u"", u"d", u"m"}, {2, 0, 3}, 0, false},
        {degrees, {u"", u"d", u"m"}, {-1, 0, 1}, 0, false},
    };
    for (const auto& row : rows) {
        const CustomSymbol symbol(row.parent, row.literals, row.indices, row.form);
        EXPECT_EQ(symbol.IsValid(), row.valid) << row.indices.size() << " placeholders";
        if (row.valid) {
            EXPECT_EQ(symbol.Parent(), row.parent);
            EXPECT_EQ(symbol.Literals(), row.literals);
            EXPECT_EQ(symbol.Indices(), row.indices);
            EXPECT_EQ(symbol.GetText(), row.parent->GetText());
        } else {
            EXPECT_EQ(symbol.Parent(), nullptr);
            EXPECT_TRUE(symbol.Literals().empty());
            EXPECT_TRUE(symbol.Indices().empty());
            EXPECT_EQ(symbol.GetText(), nullptr);
            EXPECT_EQ(symbol.LastPartIndex(row.form), -3);
        }
    }
}

TEST(CustomSymbol, FaceOfASymbol) {
    const CustomSymbol feet(Catalogued(0x702016), {u"", u" ft ", u"/", u" in"}, {0, 1, 2}, 1);
    ASSERT_TRUE(feet.IsValid());
    EXPECT_EQ(feet.LastPartIndex(1), 2);  // its own form: the parent's answer
    EXPECT_EQ(feet.LastPartIndex(0), -1);
    CustomSymbolList out;
    EXPECT_EQ(feet.MakeCustomSymbols(out, {u""}, {0}), ErrorCode::NotSet);
    EXPECT_TRUE(out.empty());
    // A plain symbol makes one object of form 0, or nothing.
    ASSERT_EQ(Meter()->MakeCustomSymbols(out, {u"", u" meters"}, {0}), ErrorCode::Success);
    ASSERT_EQ(out.size(), 1u);
    EXPECT_EQ(out[0]->Form(), 0);
    EXPECT_EQ(out[0]->Parent(), Meter());
    EXPECT_EQ(Meter()->MakeCustomSymbols(out, {u"", u" "}, {0, 1}), ErrorCode::Failure);
    EXPECT_TRUE(out.empty());
}

TEST(CustomSymbol, RendersLiteralsAndPartsInTheOrderOfTheText) {
    const NumberSettings impl;
    const struct {
        int parent;
        Texts literals;
        std::vector<int> indices;
        double value;  // in base units
        const char16_t* text;
        std::size_t extra;  // room beyond the terminator that the last number needs
    } rows[] = {
        {0x202001, {u"", u" meters"}, {0}, 5.5, u"5.50 meters", 0},
        // A number last needs room for the sign that it did not write.
        {0x202001, {u""}, {0}, 5.5, u"5.50", 1},
        {0x202001, {u"approx. ", u" m"}, {0}, -1, u"approx. -1.00 m", 0},
        {0x502016, {u"", u" ft ", u" in"}, {0, 1}, 66 * 0.0254, u"5 ft 6.00 in", 0},
        {0x502016, {u"", u" in ", u" ft"}, {1, 0}, 66 * 0.0254, u"6.00 in 5 ft", 0},
        {0x702016, {u"", u"′", u"″"}, {0, 1}, 66.25 * 0.0254, u"5′6 1/4″", 0},
        {0x22A002, {u"", u" C"}, {0}, 293.15, u"20.00 C", 0},  // through the scale's offset
    };
    for (const auto& row : rows) {
        const CustomSymbol symbol(Catalogued(row.parent), row.literals, row.indices, 0);
        ASSERT_TRUE(symbol.IsValid());
        const Dimensions dims = UnitTable::Instance().FindConverter(row.parent)->GetDimensions();
        const std::u16string text(row.text);
        char16_t buffer[40];
        const Result result = symbol.Render(row.value, dims, buffer, 40, impl);
        ASSERT_TRUE(result.Ok()) << Narrow(text);
        EXPECT_EQ(result.length, text.size());
        EXPECT_EQ(std::u16string(buffer), text);
        // The text and its terminator fit; one unit less does not.
        const std::size_t fits = text.size() + 1 + row.extra;
        EXPECT_TRUE(symbol.Render(row.value, dims, buffer, fits, impl).Ok()) << Narrow(text);
        EXPECT_EQ(symbol.Render(row.value, dims, buffer, fits - 1, impl).code, ErrorCode::Failure)
            << Narrow(text);
    }
    const CustomSymbol meters(Meter(), {u"", u" meters"}, {0}, 0);
    char16_t buffer[40];
    EXPECT_EQ(meters.Render(1.0, Dimensions{1}, nullptr, 40, impl).code, ErrorCode::Failure);
    // A dimension mismatch comes out as a plain failure.
    EXPECT_EQ(meters.Render(1.0, Dimensions{0, 1}, buffer, 40, impl).code, ErrorCode::Failure);
    EXPECT_EQ(meters.RenderPart(1, 1.0, Dimensions{1}, buffer, 40, impl).code, ErrorCode::Failure);
    EXPECT_EQ(meters.RenderPart(-1, 1.0, Dimensions{1}, buffer, 40, impl).code, ErrorCode::Failure);
    EXPECT_EQ(meters.RenderPart(0, 1.0, Dimensions{1}, buffer, 40, impl).length, 4u);  // "1.00"
    const CustomSymbol invalid(nullptr, {u""}, {0}, 0);
    EXPECT_EQ(invalid.Render(1.0, Dimensions{1}, buffer, 40, impl).code, ErrorCode::Failure);
    EXPECT_EQ(invalid.RenderPart(0, 1.0, Dimensions{1}, buffer, 40, impl).code, ErrorCode::Failure);
}

// The number written at position i goes to part indices[i], whatever the
// permutation, before the parent reads them: permutations that are not their
// own inverse tell the two ways apart.
TEST(CustomSymbol, ReadsTheNumbersInPartOrder) {
    const struct {
        int parent;
        int form;
        std::vector<int> indices;
        std::vector<double> written;
        double total;  // in the parent's unit
    } rows[] = {
        {0x202001, 0, {0}, {5}, 5},
        {0x502016, 0, {0, 1}, {5, 6}, 66},
        {0x502016, 0, {1, 0}, {6, 5}, 66},
        {0x408002, 0, {1, 2, 0}, {30, 36, 45}, 45.51},
        {0x408002, 0, {2, 0, 1}, {36, 45, 30}, 45.51},
        {0x702016, 2, {1, 2, 3, 0}, {6, 1, 4, 5}, 66.25},
        {0x702016, 2, {3, 2, 1, 0}, {4, 1, 6, 5}, 66.25},
        {0x702016, 1, {1, 2, 0}, {1, 4, 5}, 60.25},
    };
    for (const auto& row : rows) {
        const Texts literals(row.indices.size(), u"x");
        const CustomSymbol symbol(Catalogued(row.parent), literals, row.indices, row.form);
        ASSERT_TRUE(symbol.IsValid());
        SymbolList list;
        for (double number : row.written) list.PushBackNew<NumberSymbol>(number, 0u);
        list.PushBack(&symbol);
        ASSERT_EQ(
            EvaluateList(list, UnitTable::Instance().FindConverter(row.parent)->GetDimensions()),
            ErrorCode::Success)
            << row.total;
        ASSERT_EQ(list.size(), 1u);
        const auto* result = dynamic_cast<const ResultSymbol*>(list.begin().symbol());
        ASSERT_NE(result, nullptr);
        const double factor = UnitTable::Instance().FindConverter(row.parent)->GetFactor();
        EXPECT_DOUBLE_EQ(result->Value(), row.total * factor) << row.total;
    }
}

TEST(CustomSymbol, ReadingRefusals) {
    const CustomSymbol feet(Catalogued(0x502016), {u"", u"x"}, {1, 0}, 0);
    const auto refuses = [&feet](std::vector<double> numbers, int form) {
        SymbolList list;
        for (double number : numbers) list.PushBackNew<NumberSymbol>(number, 0u);
        return feet.ParsePart(list, form) != ErrorCode::Success;
    };
    EXPECT_FALSE(refuses({6, 5}, 0));
    EXPECT_TRUE(refuses({6, 5}, 1));     // another form
    EXPECT_TRUE(refuses({6}, 0));        // too few
    EXPECT_TRUE(refuses({6, 5, 4}, 0));  // too many
    SymbolList list;
    list.PushBack(&feet);  // no number in front
    EXPECT_EQ(EvaluateList(list, Dimensions{1}), ErrorCode::ParseFailure);
    const CustomSymbol invalid(nullptr, {u""}, {0}, 0);
    SymbolList one;
    one.PushBackNew<NumberSymbol>(1.0, 0u);
    EXPECT_NE(invalid.ParsePart(one, 0), ErrorCode::Success);
}

TEST(CustomDictionary, PathsOfLiteralsExcludeEachOther) {
    CustomDictionary dictionary;
    EXPECT_TRUE(dictionary.Empty());
    const CustomSymbol meters(Meter(), {u"", u" m"}, {0}, 0);
    const CustomSymbol bare(Meter(), {u""}, {0}, 0);
    const CustomSymbol feet(Catalogued(0x502016), {u"", u" ft ", u" in"}, {0, 1}, 0);
    const CustomSymbol other(Catalogued(0x202017), {u"", u" m"}, {0}, 0);  // on "ft"
    ASSERT_TRUE(meters.IsValid() && bare.IsValid() && feet.IsValid() && other.IsValid());
    EXPECT_EQ(dictionary.Put(meters), ErrorCode::Success);
    EXPECT_EQ(dictionary.Put(bare), ErrorCode::Success);
    EXPECT_EQ(dictionary.Put(feet), ErrorCode::Success);
    EXPECT_EQ(dictionary.Put(other), ErrorCode::Failure);  // the same literals
    EXPECT_EQ(dictionary.Put(meters), ErrorCode::Failure);
    EXPECT_FALSE(dictionary.Empty());

    std::size_t matched = 0;
    const CustomDictionary::Node* start = dictionary.Root().FindLongest(u"", &matched);
    ASSERT_NE(start, nullptr);
    EXPECT_EQ(start->Symbol(), &bare);
    EXPECT_EQ(start->FindLongest(u" m", &matched)->Symbol(), &meters);
    EXPECT_EQ(matched, 2u);
    const CustomDictionary::Node* ft = start->FindLongest(u" ft 6 in", &matched);
    ASSERT_NE(ft, nullptr);
    EXPECT_EQ(matched, 4u);
    EXPECT_EQ(ft->Symbol(), nullptr);
    EXPECT_EQ(ft->FindLongest(u" in", &matched)->Symbol(), &feet);

    dictionary.TakeOut(other);  // not there: nothing changes
    EXPECT_EQ(start->FindLongest(u" m", &matched)->Symbol(), &meters);
    dictionary.TakeOut(bare);
    EXPECT_EQ(dictionary.Root().FindLongest(u"", &matched)->Symbol(), nullptr);
    dictionary.TakeOut(feet);
    EXPECT_EQ(dictionary.Root().FindLongest(u"", &matched)->FindLongest(u" ft ", &matched),
              nullptr);  // the path's nodes went with it
    dictionary.TakeOut(meters);
    EXPECT_TRUE(dictionary.Empty());
    EXPECT_EQ(dictionary.Put(other), ErrorCode::Success);
    dictionary.TakeOut(meters);  // the slot holds another symbol: it stays
    EXPECT_FALSE(dictionary.Empty());
    dictionary.TakeOut(other);
    EXPECT_TRUE(dictionary.Empty());
    EXPECT_EQ(dictionary.Put(meters), ErrorCode::Success);
}

// One string changed back and forth while another ends at their first
// node and keeps it: a string on inches with fractions puts three texts into
// that node's tree, one for each form ("5 in", "5/8 in", "5 5/8 in"), which
// it empties again when it changes, and erasing leaves room unused behind
// it. Built anew as that room passes what they hold, the trees stay within
// twice their content, and do not grow with the number of changes.
TEST(SymbolStrings, ChangingAStringBackAndForthKeepsTheDictionarySmall) {
    SymbolStrings strings;
    ASSERT_EQ(strings.Set(SymbolStrings::Use::Parsing, 0x202001, Meter(), u"{0}"),
              ErrorCode::Success);
    const int inches = 0x902016;  // x x/2″
    const CustomDictionary& dictionary = strings.Dictionary();
    std::size_t most = 0;
    std::size_t early = 0;
    for (int round = 1; round < 20000; ++round) {
        const char16_t* text = round % 2 ? u"{0} in" : u"{0} inches";
        ASSERT_EQ(strings.Set(SymbolStrings::Use::Formatting, inches, Catalogued(inches), text),
                  ErrorCode::Success);
        const std::size_t pool = dictionary.PoolBytes();
        ASSERT_LE(pool, 2 * dictionary.LiveBytes() + 512) << round;
        most = std::max(most, pool);
        if (round == 100) early = most;
    }
    EXPECT_EQ(most, early);
    // Both strings still read, every form of the one that changed, and its
    // other text no longer.
    const NumberSettings numbers;
    const Dimensions length{1};
    const struct {
        const char16_t* rest;
        ErrorCode code;
        double value;
    } rows[] = {
        {u" in", ErrorCode::Success, 0.127},      {u" 1/2 in", ErrorCode::Success, 0.1397},
        {u"/8 in", ErrorCode::Success, 0.015875}, {u"", ErrorCode::Success, 5.0},
        {u" inches", ErrorCode::Failure, 0.0},
    };
    for (const auto& row : rows) {
        SymbolList leading;
        leading.PushBackNew<NumberSymbol>(5.0, 0u);
        double value = 0.0;
        EXPECT_EQ(strings.Read(numbers, leading, row.rest, value, length), row.code)
            << Narrow(row.rest);
        EXPECT_DOUBLE_EQ(value, row.value) << Narrow(row.rest);
    }
}

}  // namespace
}  // namespace Mensura
