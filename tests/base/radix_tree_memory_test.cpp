// Where a character tree takes its memory: from a resource of its owner when
// it is given one, every pool returned to that resource in the size it was
// lent, and a move of the tree carrying its pools and their resource along.
#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <memory_resource>
#include <string>
#include <utility>
#include <vector>

#include "base/radix_tree.h"

namespace Mensura {
namespace {

struct Thing {
    int id;
};

// Lends from the heap and holds every return to the loan it answers.
class LedgerResource : public std::pmr::memory_resource {
public:
    std::size_t Outstanding() const { return loans.size(); }
    std::size_t BytesLent() const { return lent; }
    int BadReturns() const { return badReturns; }

private:
    struct Loan {
        std::size_t bytes;
        std::size_t alignment;
    };

    void* do_allocate(std::size_t bytes, std::size_t alignment) override {
        void* at = std::pmr::new_delete_resource()->allocate(bytes, alignment);
        loans[at] = Loan{bytes, alignment};
        lent += bytes;
        return at;
    }
    void do_deallocate(void* at, std::size_t bytes, std::size_t alignment) override {
        const auto loan = loans.find(at);
        if (loan == loans.end()) {
            ++badReturns;  // not lent here: left alone
            return;
        }
        if (loan->second.bytes != bytes || loan->second.alignment != alignment) ++badReturns;
        std::pmr::new_delete_resource()->deallocate(at, loan->second.bytes, loan->second.alignment);
        loans.erase(loan);
    }
    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
        return this == &other;
    }

    std::map<void*, Loan> loans;
    std::size_t lent = 0;
    int badReturns = 0;
};

// Keys enough to grow every pool several times over: runs split, branches
// widen and their edges move.
std::vector<std::u16string> ManyKeys() {
    std::vector<std::u16string> keys;
    const std::u16string stems[] = {u"m", u"meter", u"metre", u"foot", u"ft (", u"米"};
    for (const auto& stem : stems) {
        for (char16_t a = u'a'; a <= u'z'; ++a) {
            keys.push_back(stem + a);
            keys.push_back(stem + a + u" per " + a);
        }
    }
    return keys;
}

void ExpectAllFound(const RadixTree<const Thing*>& tree, const std::vector<std::u16string>& keys,
                    const std::vector<Thing>& things) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        std::size_t matched = 0;
        EXPECT_EQ(tree.FindLongest(keys[i].c_str(), &matched), &things[i]) << i;
        EXPECT_EQ(matched, keys[i].size()) << i;
    }
}

TEST(RadixTreeMemory, PoolsComeFromTheResourceAndGoBackInTheirSize) {
    const std::vector<std::u16string> keys = ManyKeys();
    std::vector<Thing> things(keys.size());
    LedgerResource ledger;
    {
        RadixTree<const Thing*> tree(&ledger);
        for (std::size_t i = 0; i < keys.size(); ++i) {
            ASSERT_EQ(tree.Insert(keys[i].c_str(), &things[i]), 0);
        }
        ExpectAllFound(tree, keys, things);
        EXPECT_GE(ledger.Outstanding(), 3u);  // nodes, units and edges at least
        ASSERT_EQ(tree.Erase(keys[0].c_str()), 0);
        EXPECT_EQ(tree.FindLongest(keys[0].c_str(), nullptr), nullptr);
    }
    EXPECT_EQ(ledger.Outstanding(), 0u);
    EXPECT_EQ(ledger.BadReturns(), 0);
}

TEST(RadixTreeMemory, AMoveCarriesThePoolsAndTheirResource) {
    const std::vector<std::u16string> keys = ManyKeys();
    std::vector<Thing> things(keys.size());
    const std::size_t half = keys.size() / 2;
    LedgerResource ledger;
    RadixTree<const Thing*> tree(&ledger);
    for (std::size_t i = 0; i < half; ++i) ASSERT_EQ(tree.Insert(keys[i].c_str(), &things[i]), 0);
    const std::size_t loans = ledger.Outstanding();
    const std::size_t lent = ledger.BytesLent();

    RadixTree<const Thing*> moved(std::move(tree));
    // Nothing was copied, and nothing went back.
    EXPECT_EQ(ledger.Outstanding(), loans);
    EXPECT_EQ(ledger.BytesLent(), lent);
    EXPECT_EQ(tree.FindLongest(keys[0].c_str(), nullptr), nullptr);
    // The moved tree grows on the same resource.
    for (std::size_t i = half; i < keys.size(); ++i) {
        ASSERT_EQ(moved.Insert(keys[i].c_str(), &things[i]), 0);
    }
    ExpectAllFound(moved, keys, things);
    EXPECT_GT(ledger.BytesLent(), lent);

    // A tree on the heap moved over it returns its pools to the resource and
    // leaves it out of every later growth.
    moved = RadixTree<const Thing*>();
    EXPECT_EQ(ledger.Outstanding(), 0u);
    const std::size_t lentBefore = ledger.BytesLent();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        ASSERT_EQ(moved.Insert(keys[i].c_str(), &things[i]), 0);
    }
    ExpectAllFound(moved, keys, things);
    EXPECT_EQ(ledger.BytesLent(), lentBefore);
    EXPECT_EQ(ledger.BadReturns(), 0);
}

TEST(RadixTreeMemory, ReserveTakesNoMoreThanItsBytesAndGrowingToItTakesNothing) {
    const std::vector<std::u16string> keys = ManyKeys();
    std::vector<Thing> things(keys.size());
    std::size_t nodes = 0;
    std::size_t units = 0;
    for (const auto& key : keys) {
        nodes += 3;  // a step makes three nodes at most, and a key ends in one more
        units += key.size();
    }
    nodes += keys.size();
    const std::size_t edges = 8 * keys.size();
    LedgerResource ledger;
    RadixTree<const Thing*> tree(&ledger);
    tree.Reserve(nodes, units, edges);
    const std::size_t lent = ledger.BytesLent();
    EXPECT_GT(lent, 0u);
    EXPECT_LE(lent, (RadixTree<const Thing*>::ReserveBytes(nodes, units, edges)));
    for (std::size_t i = 0; i < keys.size(); ++i)
        ASSERT_EQ(tree.Insert(keys[i].c_str(), &things[i]), 0);
    ExpectAllFound(tree, keys, things);
    EXPECT_EQ(ledger.BytesLent(), lent);
}

}  // namespace
}  // namespace Mensura
