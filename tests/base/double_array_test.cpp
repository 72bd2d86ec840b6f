// The double array finds what a brute-force lookup over its keys finds, for
// keys that share stems and units of several pages, bounded or not; it
// lists the keys as the character tree does; and its layout is sound.
#include "base/double_array.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "base/double_array_builder.h"
#include "base/radix_tree.h"

namespace Mensura {
namespace {

using Keys = std::vector<std::pair<std::u16string, std::uint16_t>>;

std::vector<std::u16string> Texts(const std::u16string& alphabet, std::size_t length) {
    std::vector<std::u16string> texts = {u""};
    for (std::size_t i = 0; i < texts.size() && texts[i].size() < length; ++i) {
        for (char16_t unit : alphabet) texts.push_back(texts[i] + unit);
    }
    return texts;
}

// The value of the longest key that begins text within limit units, and its
// length, by trying every key.
std::pair<std::uint16_t, std::size_t> NaiveLongest(
    const std::map<std::u16string, std::uint16_t>& keys, const std::u16string& text,
    std::size_t limit) {
    std::pair<std::uint16_t, std::size_t> best{0, 0};
    for (const auto& [key, value] : keys) {
        if (key.size() <= limit && text.compare(0, key.size(), key) == 0 &&
            (best.first == 0 || key.size() > best.second)) {
            best = {value, key.size()};
        }
    }
    return best;
}

TEST(DoubleArray, AgreesWithBruteForceAndListsKeysAsTheTree) {
    // Units of the Latin page, of the page of primes and of a CJK page, and
    // a unit that no key holds.
    const std::u16string alphabet = u"ab\u00B2m/\u2032\u4E00";
    const std::vector<std::u16string> texts = Texts(alphabet + u"z", 4);
    std::mt19937 random(7);
    for (int round = 0; round < 6; ++round) {
        Keys keys;
        std::map<std::u16string, std::uint16_t> reference;
        RadixTree<std::uint16_t> tree;
        const std::vector<std::u16string> candidates = Texts(alphabet, 4);
        for (int i = 0; i < 40 + 60 * round; ++i) {
            const std::u16string& key = candidates[random() % candidates.size()];
            const auto value = static_cast<std::uint16_t>(1 + random() % 900);
            keys.emplace_back(key, value);
            reference.emplace(key, value);  // the first of equal keys stays
            tree.Insert(key.c_str(), value);
        }
        DoubleArray::Built built;
        ASSERT_TRUE(DoubleArray::Build(keys, built));
        const DoubleArray::Layout layout = built.View();
        ASSERT_TRUE(DoubleArray::Sound(layout));
        EXPECT_EQ(DoubleArray::Keys(layout), tree.Keys());
        for (const std::u16string& text : texts) {
            const auto whole = NaiveLongest(reference, text, text.size());
            std::size_t matched = 999;
            EXPECT_EQ(DoubleArray::Find<false>(layout, text.c_str(), &matched, 0), whole.first);
            EXPECT_EQ(matched, whole.first == 0 ? 999 : whole.second);
            const auto found = reference.find(text);
            EXPECT_EQ(DoubleArray::Exact(layout, text.c_str(), text.size()),
                      found != reference.end() ? found->second : 0);
            for (std::size_t limit : {std::size_t{0}, std::size_t{1}, std::size_t{3}}) {
                const auto bounded = NaiveLongest(reference, text, limit);
                matched = 999;
                EXPECT_EQ(DoubleArray::Find<true>(layout, text.c_str(), &matched, limit),
                          bounded.first)
                    << "limit " << limit;
                EXPECT_EQ(matched, bounded.first == 0 ? 999 : bounded.second);
            }
        }
    }
}

TEST(DoubleArray, EmptyKeyAndNoKeys) {
    DoubleArray::Built built;
    ASSERT_TRUE(DoubleArray::Build({}, built));
    ASSERT_TRUE(DoubleArray::Sound(built.View()));
    std::size_t matched = 999;
    EXPECT_EQ(DoubleArray::Find<false>(built.View(), u"m", &matched, 0), 0);
    EXPECT_EQ(DoubleArray::Find<false>(built.View(), nullptr, &matched, 0), 0);
    EXPECT_EQ(matched, 999u);

    ASSERT_TRUE(DoubleArray::Build({{u"", 5}, {u"mm", 6}}, built));
    EXPECT_EQ(DoubleArray::Find<false>(built.View(), u"m", &matched, 0), 5);
    EXPECT_EQ(matched, 0u);
    EXPECT_EQ(DoubleArray::Find<false>(built.View(), u"mm", &matched, 0), 6);
    EXPECT_EQ(matched, 2u);
}

// A layout whose walk could leave the array or find a slot of another
// state is refused.
TEST(DoubleArray, SoundRefusesBrokenLayouts) {
    DoubleArray::Built built;
    ASSERT_TRUE(DoubleArray::Build({{u"m", 1}, {u"mm", 2}, {u"kg", 3}}, built));
    ASSERT_TRUE(DoubleArray::Sound(built.View()));
    {
        DoubleArray::Built broken = built;
        broken.slots.pop_back();  // the last base no longer has room for every code
        EXPECT_FALSE(DoubleArray::Sound(broken.View()));
    }
    {
        DoubleArray::Built broken = built;
        broken.slots[0].parent = 0;
        EXPECT_FALSE(DoubleArray::Sound(broken.View()));
    }
    {
        DoubleArray::Built broken = built;
        broken.codes[u'm'] = 0;  // the unit of a code no longer has it
        EXPECT_FALSE(DoubleArray::Sound(broken.View()));
    }
    {
        DoubleArray::Built broken = built;
        broken.codes[0] = 1;  // the terminator would read as a unit
        EXPECT_FALSE(DoubleArray::Sound(broken.View()));
    }
}

// Keys that hold the terminator cannot be laid out.
TEST(DoubleArray, RefusesTheTerminatorInAKey) {
    DoubleArray::Built built;
    EXPECT_FALSE(DoubleArray::Build({{std::u16string(u"a\0b", 3), 1}}, built));
}

}  // namespace
}  // namespace Mensura
