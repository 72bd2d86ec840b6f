// The evaluation engine on lists built by hand from numbers, unit operands and
// the product, quotient and square operators.
#include <gtest/gtest.h>

#include <vector>

#include "grammar/operators.h"
#include "grammar/parse_symbol.h"
#include "support/same_bits.h"

namespace Mensura {
namespace {

using MensuraTest::SameBits;

// A unit as an operand, with a converter of its own: the catalogue may not
// stand yet while the test's statics are made.
using UnitOperand = GenericOperand;

const UnitOperand kMeter({1, 0, 0, 0, 0, 0, 0}, 1.0), kFoot({1, 0, 0, 0, 0, 0, 0}, 0.3048),
    kKilogram({0, 1, 0, 0, 0, 0, 0}, 1.0), kSecond({0, 0, 1, 0, 0, 0, 0}, 1.0);
const MultiplicationSymbol kTimes;
const DivisionSymbol kOver;
const SquareSymbol kSquare;
const Dimensions kLength{1, 0, 0, 0, 0, 0, 0};

// An element of a hand-built list: a number, or a borrowed symbol.
struct Item {
    Item(double v) : number(true), value(v) {}
    Item(const IParseSymbol& s) : symbol(&s) {}
    bool number = false;
    double value = 0.0;
    const IParseSymbol* symbol = nullptr;
};

void Build(SymbolList& list, const std::vector<Item>& items) {
    for (const Item& item : items) {
        if (item.number) {
            list.PushBackNew<NumberSymbol>(item.value, 0u);
        } else {
            list.PushBack(item.symbol);
        }
    }
}

const ResultSymbol* OnlyResult(SymbolList& list) {
    if (list.size() != 1 || list.begin().symbol()->Kind() != ParseKind::Result) return nullptr;
    return dynamic_cast<const ResultSymbol*>(list.begin().symbol());
}

// The one result that a list reduces to, or nullptr when it does not reduce.
const ResultSymbol* Reduce(SymbolList& list, const std::vector<Item>& items,
                           const Dimensions& dimensions) {
    Build(list, items);
    if (EvaluateList(list, dimensions) != ErrorCode::Success) return nullptr;
    return OnlyResult(list);
}

// The order in which the operators apply is held through Parse, on texts;
// here, what the lists themselves come to.
TEST(EvaluateList, ANumberAndAUnitReduceToAResultInBaseUnits) {
    SymbolList list;
    const ResultSymbol* result = Reduce(list, {5.0, kFoot}, kLength);
    ASSERT_NE(result, nullptr);
    EXPECT_TRUE(SameBits(result->Value(), 1.524));
    EXPECT_EQ(result->GetConverter().GetDimensions(), kLength);
}

TEST(EvaluateList, RefusesListsThatCannotReduce) {
    const std::vector<std::vector<Item>> refused = {
        {},                           // empty
        {5.0},                        // a number may not stand last
        {kMeter},                     // no number joins the operand
        {5.0, kMeter, 3.0},           // a second number
        {5.0, kMeter, 3.0, kSecond},  // a result made behind something else
        {kTimes},                     // nothing on the right
        {5.0, kMeter, kTimes},        // nothing on the right
        {5.0, kOver, kMeter},         // a number is no operand
        {kSquare},                    // nothing on the left
    };
    for (std::size_t i = 0; i < refused.size(); ++i) {
        SymbolList list;
        Build(list, refused[i]);
        EXPECT_EQ(EvaluateList(list, kLength), ErrorCode::ParseFailure) << "row " << i;
    }
}

// 5 kg/m²: the quotient sees the square behind the meter and lets it go
// first; 2 ft² is 2 square feet, not (2 ft)². Units combine before the number
// joins, and no dimensions are checked here: 5 ft/s reduces whatever the
// target.
TEST(EvaluateList, OperatorsApplyToTheUnitsBeforeTheNumber) {
    const struct {
        std::vector<Item> items;
        double value;
        Dimensions dimensions;
    } rows[] = {
        {{5.0, kKilogram, kOver, kMeter, kSquare}, 5.0, {-2, 1, 0, 0, 0, 0, 0}},
        {{2.0, kFoot, kSquare}, 2.0 * (0.3048 * 0.3048), {2, 0, 0, 0, 0, 0, 0}},
        {{5.0, kFoot, kOver, kSecond}, 5.0 * 0.3048, {1, 0, -1, 0, 0, 0, 0}},
    };
    for (const auto& row : rows) {
        SymbolList list;
        const ResultSymbol* result = Reduce(list, row.items, kLength);
        ASSERT_NE(result, nullptr) << row.value;
        EXPECT_TRUE(SameBits(result->Value(), row.value));
        EXPECT_EQ(result->GetConverter().GetDimensions(), row.dimensions);
    }
}

TEST(SymbolList, IteratorsSurviveInsertionAndErasureOfOthers) {
    SymbolList list;
    SymbolList::iterator first = list.PushBackNew<NumberSymbol>(1.0, 0u);
    SymbolList::iterator third = list.PushBackNew<NumberSymbol>(3.0, 0u);
    SymbolList::iterator second = list.InsertNew<NumberSymbol>(third, 2.0, 0u);
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(first.next(), second);
    EXPECT_EQ(list.end().previous(), third);
    list.Erase(second);
    EXPECT_EQ(first.next(), third);
    EXPECT_EQ(third.symbol()->AsNumber()->value, 3.0);
    list.Replace<NumberSymbol>(first, 7.0, 1u);
    EXPECT_EQ(list.begin().symbol()->AsNumber()->value, 7.0);
    list.ReplaceBorrowed(third, &kMeter);
    EXPECT_FALSE(list.Owns(third));
    EXPECT_TRUE(list.Owns(first));
}

TEST(SymbolList, LongListsSpillOntoTheHeapAndStillWork) {
    SymbolList list;
    for (int i = 0; i < 200; ++i) list.PushBackNew<ResultSymbol>(kLength, static_cast<double>(i));
    EXPECT_EQ(list.size(), 200u);
    double sum = 0.0;
    for (SymbolList::iterator it = list.begin(); it != list.end(); ++it) {
        sum += dynamic_cast<const ResultSymbol*>(it.symbol())->Value();
    }
    EXPECT_EQ(sum, 199.0 * 200.0 / 2.0);
    // Erasing every other element and adding again reuses nodes.
    for (SymbolList::iterator it = list.begin(); it != list.end();) {
        it = list.Erase(it);
        if (it != list.end()) ++it;
    }
    EXPECT_EQ(list.size(), 100u);
    for (int i = 0; i < 50; ++i) list.PushBackNew<NumberSymbol>(1.0, 0u);
    EXPECT_EQ(list.size(), 150u);
}

}  // namespace
}  // namespace Mensura
