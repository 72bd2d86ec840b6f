// The character tree from text to value: the longest key that begins a text,
// node splits in every order of insertion, the empty key, replacement and
// erasure. A brute-force lookup over all keys is the reference.
#include "base/radix_tree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace Mensura {
namespace {

struct Thing {
    int id;
};

// The value of the longest key that begins text, and its length, by trying
// every key.
template <typename Value>
std::pair<Value, std::size_t> NaiveLongest(const std::map<std::u16string, Value>& keys,
                                           const std::u16string& text,
                                           std::size_t limit = std::u16string::npos) {
    std::pair<Value, std::size_t> best{Value{}, 0};
    for (const auto& [key, value] : keys) {
        if (key.size() <= limit && text.compare(0, key.size(), key) == 0 &&
            (best.first == Value{} || key.size() > best.second)) {
            best = {value, key.size()};
        }
    }
    return best;
}

template <typename Value>
void ExpectLikeNaive(const RadixTree<Value>& tree, const std::map<std::u16string, Value>& keys,
                     const std::u16string& text) {
    const auto expected = NaiveLongest(keys, text);
    std::size_t matched = 999;
    EXPECT_EQ(tree.FindLongest(text.c_str(), &matched), expected.first)
        << "text of " << text.size() << " units";
    EXPECT_EQ(matched, expected.first == Value{} ? 999 : expected.second);
}

// A limit makes the lookup stop there, as if the text ended: inside a run,
// at a branch and before the first unit.
TEST(RadixTree, FindsNoKeyLongerThanTheLimit) {
    const std::vector<std::u16string> keys = {u"m", u"m/s", u"m/s²", u"kg", u"kg/m", u"kg/m³"};
    std::map<std::u16string, Thing*> values;
    std::vector<Thing> things(keys.size());
    RadixTree<Thing*> tree;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        things[i].id = static_cast<int>(i);
        values[keys[i]] = &things[i];
        tree.Insert(keys[i].c_str(), &things[i]);
    }
    for (const std::u16string text : {u"kg/m³x", u"m/s²", u"kg/mm", u"m"}) {
        for (std::size_t limit = 0; limit <= text.size() + 1; ++limit) {
            const auto expected = NaiveLongest(values, text, limit);
            std::size_t matched = 999;
            EXPECT_EQ(tree.FindLongest(text.c_str(), &matched, limit), expected.first)
                << "limit " << limit;
            EXPECT_EQ(matched, expected.first == nullptr ? 999 : expected.second);
        }
    }
}

TEST(RadixTree, SplitsKeepEveryKeyInEveryOrderOfInsertion) {
    // Keys that end inside a run, continue one, diverge at its start, in its
    // middle and at its last unit, and that leave the root by another unit.
    const std::vector<std::u16string> keys = {u"m", u"mm", u"m²", u"me", u"meter", u"metre", u"ft"};
    const std::vector<std::u16string> probes = {u"m",     u"mm",     u"m²x",   u"me",  u"met",
                                                u"meter", u"metres", u"meteR", u"mx",  u"ft/s",
                                                u"f",     u"x",      u"",      u"mmm", u"metr"};
    std::vector<Thing> things(keys.size());
    std::vector<std::size_t> order(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        things[i].id = static_cast<int>(i);
        order[i] = i;
    }
    int orders = 0;
    do {
        RadixTree<const Thing*> tree;
        std::map<std::u16string, const Thing*> reference;
        for (std::size_t i : order) {
            ASSERT_EQ(tree.Insert(keys[i].c_str(), &things[i]), 0);
            reference[keys[i]] = &things[i];
        }
        for (const auto& key : keys) ExpectLikeNaive(tree, reference, key);
        for (const auto& probe : probes) ExpectLikeNaive(tree, reference, probe);
        if (HasFailure()) break;
        ++orders;
    } while (std::next_permutation(order.begin(), order.end()));
    EXPECT_EQ(orders, 5040);
}

// An insertion of a key that is there keeps the old value and tells who
// holds it; a new key leaves the holder alone.
TEST(RadixTree, InsertOfAnExistingKeyKeepsTheOldValue) {
    const Thing first{1}, second{2};
    RadixTree<const Thing*> tree;
    for (const char16_t* key : {u"meter", u"met", u"", u"m"}) {
        ASSERT_EQ(tree.Insert(key, &first), 0);
        const Thing* holder = nullptr;
        EXPECT_EQ(tree.Insert(key, &second, holder), 1);
        EXPECT_EQ(holder, &first);
        EXPECT_EQ(tree.FindLongest(key, nullptr), &first);
    }
    const Thing* untouched = &second;
    EXPECT_EQ(tree.Insert(u"metre", &first, untouched), 0);
    EXPECT_EQ(untouched, &second);
}

TEST(RadixTree, EmptyKeySitsOnTheRootAndIsTheFallback) {
    const Thing root{0}, meter{1};
    RadixTree<const Thing*> tree;
    std::size_t matched = 7;
    EXPECT_EQ(tree.FindLongest(u"", &matched), nullptr);
    ASSERT_EQ(tree.Insert(u"", &root), 0);
    ASSERT_EQ(tree.Insert(u"m", &meter), 0);
    EXPECT_EQ(tree.FindLongest(u"xyz", &matched), &root);
    EXPECT_EQ(matched, 0u);
    EXPECT_EQ(tree.FindLongest(u"", &matched), &root);
    EXPECT_EQ(tree.FindLongest(u"mm", &matched), &meter);
    EXPECT_EQ(matched, 1u);
}

TEST(RadixTree, NullTextIsRefusedEverywhere) {
    const Thing thing{1};
    RadixTree<const Thing*> tree;
    ASSERT_EQ(tree.Insert(u"", &thing), 0);
    std::size_t matched = 7;
    EXPECT_EQ(tree.Insert(nullptr, &thing), 1);
    EXPECT_EQ(tree.InsertOrAssign(nullptr, &thing), 1);
    EXPECT_EQ(tree.Erase(nullptr), 1);
    EXPECT_EQ(tree.FindLongest(nullptr, &matched), nullptr);
    EXPECT_EQ(matched, 7u);
}

TEST(RadixTree, MatchesExactUnitsOnly) {
    const Thing meganewton{1}, millinewton{2}, script{3};
    RadixTree<const Thing*> tree;
    const char16_t scriptX[] = {0xD835, 0xDC65, 0};  // one character, two units
    const char16_t highHalf[] = {0xD835, u'x', 0};
    ASSERT_EQ(tree.Insert(u"MN", &meganewton), 0);
    ASSERT_EQ(tree.Insert(u"mN", &millinewton), 0);
    ASSERT_EQ(tree.Insert(scriptX, &script), 0);
    std::size_t matched = 0;
    EXPECT_EQ(tree.FindLongest(u"MN", &matched), &meganewton);
    EXPECT_EQ(tree.FindLongest(u"mN", &matched), &millinewton);
    EXPECT_EQ(tree.FindLongest(u"mn", nullptr), nullptr);
    EXPECT_EQ(tree.FindLongest(scriptX, &matched), &script);
    EXPECT_EQ(matched, 2u);
    EXPECT_EQ(tree.FindLongest(highHalf, nullptr), nullptr);
}

// Every text of up to `length` units of the alphabet, the empty one first.
std::vector<std::u16string> Probes(const std::u16string& alphabet, std::size_t length) {
    std::vector<std::u16string> probes = {u""};
    for (std::size_t i = 0; i < probes.size() && probes[i].size() < length; ++i) {
        for (char16_t unit : alphabet) probes.push_back(probes[i] + unit);
    }
    return probes;
}

// Random insertions, replacements and erasures over a small alphabet, so that
// keys share stems, end inside runs and diverge everywhere; after each step
// every short text must find what the brute-force lookup finds.
TEST(RadixTree, AgreesWithBruteForceUnderRandomChanges) {
    // The root finds its children below 256 by table and the others by search.
    const std::vector<std::u16string> probes = Probes(u"ab\u00B2c\u2032", 4);
    std::mt19937 random(4);
    RadixTree<int> tree;
    std::map<std::u16string, int> reference;
    for (int step = 0; step < 400 && !HasFailure(); ++step) {
        const std::u16string key = probes[random() % probes.size()];
        const int value = 1 + static_cast<int>(random() % 60);
        switch (random() % 3) {
            case 0:
                EXPECT_EQ(tree.Insert(key.c_str(), value), reference.count(key) ? 1 : 0);
                reference.emplace(key, value);
                break;
            case 1:
                EXPECT_EQ(tree.InsertOrAssign(key.c_str(), value), 0);
                reference[key] = value;
                break;
            default:
                EXPECT_EQ(tree.Erase(key.c_str()), reference.erase(key) ? 0 : 1);
                break;
        }
        for (const auto& probe : probes) ExpectLikeNaive(tree, reference, probe + u"z");
        // Building the tree anew keeps every key and drops the unused room.
        if (step % 50 == 49) {
            const std::size_t before = tree.PoolBytes();
            tree.Compact();
            EXPECT_LE(tree.PoolBytes(), before);
            for (const auto& probe : probes) ExpectLikeNaive(tree, reference, probe + u"z");
        }
    }
}

// Branches of many edges get tables once indexed. Lookups must agree with the
// brute force through the index, after changes that drop it, and after a new
// index over branches that narrowed, vanished or widened again.
TEST(RadixTree, WideBranchIndexAgreesWithBruteForce) {
    const std::vector<std::u16string> probes = Probes(u"abcdefghijkl\u00B2\u2032", 3);
    std::mt19937 random(11);
    RadixTree<int> tree;
    std::map<std::u16string, int> reference;
    for (int round = 0; round < 6 && !HasFailure(); ++round) {
        for (int step = 0; step < 300; ++step) {
            const std::u16string key = probes[random() % probes.size()];
            // Early rounds mostly insert, later ones mostly erase.
            if (static_cast<int>(random() % 6) >= round) {
                const int value = 1 + static_cast<int>(random() % 60);
                tree.InsertOrAssign(key.c_str(), value);
                reference[key] = value;
            } else {
                EXPECT_EQ(tree.Erase(key.c_str()), reference.erase(key) ? 0 : 1);
            }
        }
        tree.IndexWideBranches();
        for (const auto& probe : probes) ExpectLikeNaive(tree, reference, probe + u"z");
        const std::u16string key = probes[random() % probes.size()];
        tree.InsertOrAssign(key.c_str(), 99);
        reference[key] = 99;
        for (const auto& probe : probes) ExpectLikeNaive(tree, reference, probe + u"z");
    }
}

}  // namespace
}  // namespace Mensura
