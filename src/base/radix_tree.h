// A path-compressed character tree from 16-bit text to a value, for keys
// that change at run time: the number settings' tokens, the caller's symbol
// strings, the everyday words. One walk finds the longest key that begins a
// text, which is how a scanner tells "m" from "mm" from "m²". The parse
// dictionary, whose keys the build knows, is a double array instead
// (double_array.h).
//
// Layout: the tree keeps everything in three pools of its own, so that
// thousands of keys take a few allocations rather than a few a key.
// - The root lives in the tree itself, so that a lookup starts without a load,
//   and when it branches, its children by the Latin units and by those of the
//   block of primes and letterlike symbols are also found in a table of their
//   own: the root is the widest node by far, and every lookup and every
//   insertion passes it.
//   Every other node sits in one array and is named by its 32-bit index; 0
//   names none. A lookup thus reaches a child with one load. Released nodes
//   go on a free list for reuse.
// - Once a tree is built, IndexWideBranches gives the other wide branches
//   tables too; any change drops them.
// - `units` holds the texts of the run nodes, each a span of it; no two runs
//   share a unit.
// - `edges` holds the children of the branch nodes: each branch has a span of
//   (unit, child) pairs sorted by unit, with room to grow. A full span moves
//   to the end of the pool with twice the room and leaves its old place unused.
// Units and edges that erasing frees are reused only at the end of their pool;
// Compact builds the tree anew without them.
// The pools take their memory from the heap, or from a memory resource of the
// tree's owner: a structure built once can hold the tree in its own blocks.
// The pools' layout and the lookup over them stand apart from the tree's
// changes (RadixLayout).
#ifndef MENSURA_BASE_RADIX_TREE_H
#define MENSURA_BASE_RADIX_TREE_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Mensura {

// The layout of a tree's pools, and what reads them.
namespace RadixLayout {

using Index = std::uint32_t;
enum class Form : std::uint8_t { Leaf, Run, Branch };

template <typename Value>
struct Node {
    Value value{};
    Index first = 0;  // run: its first unit in `units`; branch: its first edge in `edges`
    Index count = 0;  // run: its length in units; branch: its number of edges
    Index link = 0;   // run: the node behind it; branch: the room of its span;
                      // released: the next free node
    Form form = Form::Leaf;
    std::uint16_t wide = 0;  // a branch's number in wideChildren, plus 1; 0 for none
};

struct Edge {
    char16_t unit;
    Index child;
};

// The root finds by table its children by the Latin units and by those
// of the block that holds primes, letterlike symbols and arrows.
inline constexpr unsigned kLatinUnits = 256;
inline constexpr unsigned kSymbolsFirst = 0x2000;
inline constexpr unsigned kSymbolUnits = 0x200;
inline constexpr unsigned kRootSlots = kLatinUnits + kSymbolUnits;
// A branch is wide from this many edges on.
inline constexpr Index kWideEdges = 8;
inline constexpr Index kWideUnits = 128;

// The place of unit in the root's table, or -1 when the table has none.
inline int RootSlot(char16_t unit) {
    if (unit < kLatinUnits) return unit;
    const unsigned symbol = unit - kSymbolsFirst;
    return symbol < kSymbolUnits ? static_cast<int>(kLatinUnits + symbol) : -1;
}

// Where a tree's pools stand, and how many elements each holds (the slot at
// index 0 of `nodes` holds no node).
template <typename Value>
struct Pools {
    const Node<Value>* root;
    const Index* rootChildren;  // kRootSlots of them
    const Node<Value>* nodes;
    std::size_t nodeCount;
    const char16_t* units;
    std::size_t unitCount;
    const Edge* edges;
    std::size_t edgeCount;
    const Index* wideChildren;  // kWideUnits for each wide branch
    std::size_t wideCount;
};

// The value of the longest key that is a prefix of text (see
// RadixTree::FindLongest); only a bounded lookup pays for the test of its
// limit.
template <bool Bounded, typename Value>
inline Value Find(const Pools<Value>& pools, const char16_t* text, std::size_t* matched,
                  std::size_t limit) {
    if (text == nullptr) return Value{};
    const Node<Value>* node = pools.root;
    Value best = node->value;
    std::size_t bestCount = 0;
    std::size_t count = 0;
    // The root, the widest node by far, is passed first, by its table where
    // that has the unit; no later step comes back to it.
    if (node->form == Form::Branch && !(Bounded && limit == 0)) {
        const char16_t unit = *text;
        Index child = 0;
        const int slot = RootSlot(unit);
        if (slot >= 0) {
            child = pools.rootChildren[slot];
        } else {
            const Edge* end = pools.edges + node->first + node->count;
            const Edge* edge =
                std::lower_bound(pools.edges + node->first, end, unit,
                                 [](const Edge& e, char16_t u) { return e.unit < u; });
            if (edge != end && edge->unit == unit) child = edge->child;
        }
        // No key begins with the terminator: the table has no child for it.
        if (child == 0) {
            if (best != Value{} && matched != nullptr) *matched = 0;
            return best;
        }
        node = pools.nodes + child;
        count = 1;
    }
    for (;;) {
        if (node->value != Value{}) {
            best = node->value;
            bestCount = count;
        }
        if (Bounded && count == limit) break;
        const char16_t unit = text[count];
        if (unit == 0) break;
        if (node->form == Form::Branch) {
            const Edge* edge = pools.edges + node->first;
            const Edge* end = edge + node->count;
            if (node->wide != 0) {
                // A wide branch finds a child by the units below 128 by table;
                // the few others stand last among its edges.
                if (unit < kWideUnits) {
                    const Index child =
                        pools.wideChildren[(node->wide - 1) * std::size_t{kWideUnits} + unit];
                    if (child == 0) break;
                    node = pools.nodes + child;
                    ++count;
                    continue;
                }
                while (edge != end && end[-1].unit > unit) --end;
                if (edge == end || end[-1].unit != unit) break;
                node = pools.nodes + end[-1].child;
                ++count;
                continue;
            }
            // Other branches have a few edges. Parsing looks up the same few
            // texts again and again: a scan with predicted jumps runs ahead
            // of its loads.
            while (edge != end && edge->unit < unit) ++edge;
            if (edge == end || edge->unit != unit) break;
            node = pools.nodes + edge->child;
            ++count;
        } else if (node->form == Form::Run) {
            const Index length = node->count;
            if (Bounded && length > limit - count) break;
            const char16_t* run = pools.units + node->first;
            const char16_t* rest = text + count;
            Index n = 0;
            while (n < length && run[n] == rest[n]) ++n;
            if (n < length) break;
            node = pools.nodes + node->link;
            count += length;
        } else {
            break;
        }
    }
    if (best != Value{} && matched != nullptr) *matched = bestCount;
    return best;
}

// Every key with its value, depth first: a key before the keys it begins.
template <typename Value>
std::vector<std::pair<std::u16string, Value>> Keys(const Pools<Value>& pools) {
    std::vector<std::pair<std::u16string, Value>> keys;
    std::u16string key;
    // Depth first, the key of the node at hand in `key`.
    auto visit = [&](const Node<Value>& node, auto& self) -> void {
        if (node.value != Value{}) keys.emplace_back(key, node.value);
        if (node.form == Form::Branch) {
            for (Index i = 0; i < node.count; ++i) {
                const Edge& edge = pools.edges[node.first + i];
                key.push_back(edge.unit);
                self(pools.nodes[edge.child], self);
                key.pop_back();
            }
        } else if (node.form == Form::Run) {
            const std::size_t length = key.size();
            key.append(pools.units + node.first, node.count);
            self(pools.nodes[node.link], self);
            key.resize(length);
        }
    };
    visit(*pools.root, visit);
    return keys;
}

}  // namespace RadixLayout

// Keys are null-terminated 16-bit texts, compared unit by unit with no case
// folding; the empty text is a key like any other and lives on the root.
// Value is a pointer or a small integer code. Its default (null, 0) means
// "no value": storing it leaves the key unbound. The tree never owns what a
// pointer value points to.
//
// A node takes one of three forms:
// - run node: a span of one unit or more; consuming all of them leads to the
//   node behind it;
// - branch node: a child is reached by consuming its one unit;
// - leaf node: nothing continues here.
// The key of a node is the sequence of units consumed from the root to it, and
// `value` is the value of that key. The root starts as a leaf without a value.
template <typename Value>
class RadixTree {
public:
    RadixTree() = default;
    // A tree whose pools take their memory from `memory`, which outlives the
    // tree; a tree moved to takes the memory of its pools along.
    explicit RadixTree(std::pmr::memory_resource* memory)
        : nodes(PoolAllocator<Node>(memory)),
          units(PoolAllocator<char16_t>(memory)),
          edges(PoolAllocator<Edge>(memory)) {}
    // A tree moved from is empty.
    RadixTree(RadixTree&& other) noexcept { *this = std::move(other); }
    RadixTree& operator=(RadixTree&& other) noexcept;

    // Binds the key `text` to value. Returns 0 when bound; 1, with nothing
    // changed, when text is null or the key already has a value.
    int Insert(const char16_t* text, Value value) { return Bind(text, value, false, nullptr); }
    // The same, and when the key already has a value, holder receives it.
    int Insert(const char16_t* text, Value value, Value& holder) {
        return Bind(text, value, false, &holder);
    }
    // Binds the key `text` to value, replacing the value it had. Returns 0,
    // or 1 for a null text.
    int InsertOrAssign(const char16_t* text, Value value) {
        return Bind(text, value, true, nullptr);
    }
    // Makes room for a tree of about this size at once, so that growing to
    // it moves nothing: a hint, the tree grows past it as needed.
    void Reserve(std::size_t nodeCount, std::size_t unitCount, std::size_t edgeCount) {
        ReserveNodes(nodeCount);
        units.reserve(unitCount);
        edges.reserve(edgeCount);
    }
    // The most bytes that Reserve of these counts takes for an empty tree,
    // the pools' alignment aside.
    static constexpr std::size_t ReserveBytes(std::size_t nodeCount, std::size_t unitCount,
                                              std::size_t edgeCount) {
        // The node at index 0 comes first, alone, and moves when the room is made.
        return (nodeCount + 2) * sizeof(Node) + unitCount * sizeof(char16_t) +
               edgeCount * sizeof(Edge);
    }
    // Unbinds the key `text`; nodes that no longer lead to a value go.
    // Returns 0 when the key had a value, else 1 (a null text included).
    int Erase(const char16_t* text);

    // Every key with its value, depth first: a key before the keys it begins.
    std::vector<std::pair<std::u16string, Value>> Keys() const {
        return RadixLayout::Keys(Layout());
    }
    // Builds the tree anew from its keys, so that its pools hold no room that
    // erasing left unused. On an allocation failure the tree stays as it was.
    void Compact();
    // The bytes of the pools' elements in use, the unused ones among them
    // included: what Compact shrinks.
    std::size_t PoolBytes() const {
        return nodes.size() * sizeof(Node) + units.size() * sizeof(char16_t) +
               edges.size() * sizeof(Edge);
    }
    // The part of PoolBytes that the tree's nodes hold: what Compact keeps,
    // give or take the room of the branches' spans. Allocates nothing; takes
    // a look at every node.
    std::size_t LiveBytes() const;

    // Gives every wide branch a table of its children by the units below
    // 128, for a tree that is done changing: a lookup then crosses such a
    // branch with one load. Any later change drops the tables.
    void IndexWideBranches();

    // The value of the longest key that is a prefix of text, or the default
    // when there is none or text is null. *matched, when matched is not null,
    // receives that key's length in units, and is written only when a value is
    // found. Allocates nothing. A key longer than `limit` units is not
    // looked at, as if the text ended there.
    Value FindLongest(const char16_t* text, std::size_t* matched) const {
        return RadixLayout::Find<false>(Layout(), text, matched, 0);
    }
    Value FindLongest(const char16_t* text, std::size_t* matched, std::size_t limit) const {
        return RadixLayout::Find<true>(Layout(), text, matched, limit);
    }

    // Where the pools stand as they are. Good until the tree changes.
    RadixLayout::Pools<Value> Layout() const {
        return {&root,
                rootChildren.data(),
                nodes.data(),
                nodes.size(),
                units.data(),
                units.size(),
                edges.data(),
                edges.size(),
                wideChildren.data(),
                wideChildren.size()};
    }

private:
    using Index = RadixLayout::Index;
    using Form = RadixLayout::Form;
    using Node = RadixLayout::Node<Value>;
    using Edge = RadixLayout::Edge;
    static bool UnitBelow(const Edge& edge, char16_t unit) { return edge.unit < unit; }

    int Bind(const char16_t* text, Value value, bool replace, Value* holder);
    bool Unbind(Node& node, const char16_t* rest, bool& erased);
    // A new leaf without a value, from the free list when it has one.
    Index NewNode();
    void Release(Index at);
    // Adds to branch an edge by unit, which it does not have yet.
    void AddEdge(Node& branch, char16_t unit, Index child);
    static int RootSlot(char16_t unit) { return RadixLayout::RootSlot(unit); }
    // Keeps the root's table in step with an edge of the root.
    void NoteRootEdge(const Node& branch, char16_t unit, Index child) {
        if (&branch != &root) return;
        const int slot = RootSlot(unit);
        if (slot >= 0) rootChildren[slot] = child;
    }
    // The child by unit of a branch node, or 0.
    Index ChildOf(const Node& branch, char16_t unit) const {
        if (&branch == &root) {
            const int slot = RootSlot(unit);
            if (slot >= 0) return rootChildren[slot];
        }
        const Edge* edge = FindEdge(branch, unit);
        return edge != nullptr ? edge->child : 0;
    }
    // The edge by unit of a branch node, or null. Building walks thousands of
    // different keys, whose turns no predictor learns, so this binary search
    // picks each half without a jump.
    const Edge* FindEdge(const Node& branch, char16_t unit) const {
        const Edge* base = edges.data() + branch.first;
        for (Index n = branch.count; n > 1;) {
            const Index half = n / 2;
            base = base[half].unit <= unit ? base + half : base;
            n -= half;
        }
        return base->unit == unit ? base : nullptr;
    }
    // How many of the count units of run begin text; text's terminator ends the count.
    static Index CommonLength(const char16_t* run, Index count, const char16_t* text) {
        Index n = 0;
        while (n < count && run[n] == text[n]) ++n;
        return n;
    }

    Node& At(Index at) { return nodes[at]; }
    const Node& At(Index at) const { return nodes[at]; }
    // The node of an index, where 0 stands for the root.
    Node& NodeOrRoot(Index at) { return at == 0 ? root : nodes[at]; }
    // Makes room for `count` new nodes, so that making them moves no node
    // and a reference to one stays good.
    void ReserveNodes(std::size_t count) {
        if (nodes.empty()) nodes.emplace_back();  // index 0 leaves its slot unused
        if (nodes.capacity() - nodes.size() < count) {
            nodes.reserve(std::max(2 * nodes.capacity(), nodes.size() + count));
        }
    }

    static constexpr unsigned kLatinUnits = RadixLayout::kLatinUnits;
    static constexpr unsigned kSymbolUnits = RadixLayout::kSymbolUnits;
    static constexpr Index kWideEdges = RadixLayout::kWideEdges;
    static constexpr Index kWideUnits = RadixLayout::kWideUnits;

    void DropWideIndex();

    // The pools' allocator: the heap when it has no resource. It moves with
    // its pool, so that a move of a tree never copies a pool.
    template <typename T>
    struct PoolAllocator {
        using value_type = T;
        using propagate_on_container_move_assignment = std::true_type;
        using propagate_on_container_swap = std::true_type;

        PoolAllocator() = default;
        explicit PoolAllocator(std::pmr::memory_resource* source) : memory(source) {}
        template <typename Other>
        PoolAllocator(const PoolAllocator<Other>& other) : memory(other.memory) {}

        T* allocate(std::size_t count) {
            if (memory == nullptr) return std::allocator<T>().allocate(count);
            return static_cast<T*>(memory->allocate(count * sizeof(T), alignof(T)));
        }
        void deallocate(T* at, std::size_t count) {
            if (memory == nullptr) return std::allocator<T>().deallocate(at, count);
            memory->deallocate(at, count * sizeof(T), alignof(T));
        }
        friend bool operator==(const PoolAllocator& a, const PoolAllocator& b) {
            return a.memory == b.memory;
        }
        friend bool operator!=(const PoolAllocator& a, const PoolAllocator& b) {
            return a.memory != b.memory;
        }

        std::pmr::memory_resource* memory = nullptr;
    };
    template <typename T>
    using Pool = std::vector<T, PoolAllocator<T>>;

    Node root;
    std::array<Index, kLatinUnits + kSymbolUnits> rootChildren{};  // while the root branches
    std::vector<Index> wideChildren;  // kWideUnits children for each wide branch
    // The branches below the root as they became wide, so that indexing
    // finds them without a walk; some may have narrowed or gone since.
    std::vector<Index> wideBranches;
    Pool<Node> nodes;     // released ones included
    Index freeNodes = 0;  // the first released node; 0 ends the list
    Pool<char16_t> units;
    Pool<Edge> edges;
};

template <typename Value>
RadixTree<Value>& RadixTree<Value>::operator=(RadixTree&& other) noexcept {
    if (this == &other) return *this;
    root = std::exchange(other.root, Node{});
    rootChildren = std::exchange(other.rootChildren, {});
    wideChildren = std::move(other.wideChildren);
    wideBranches = std::move(other.wideBranches);
    other.wideChildren.clear();
    other.wideBranches.clear();
    nodes = std::move(other.nodes);
    freeNodes = std::exchange(other.freeNodes, 0);
    units = std::move(other.units);
    edges = std::move(other.edges);
    other.nodes.clear();
    other.units.clear();
    other.edges.clear();
    return *this;
}

template <typename Value>
typename RadixTree<Value>::Index RadixTree<Value>::NewNode() {
    if (freeNodes != 0) {
        const Index at = freeNodes;
        freeNodes = At(at).link;
        At(at) = Node{};
        return at;
    }
    ReserveNodes(1);
    nodes.emplace_back();
    return static_cast<Index>(nodes.size() - 1);
}

template <typename Value>
void RadixTree<Value>::Release(Index at) {
    At(at) = Node{};
    At(at).link = freeNodes;
    freeNodes = at;
}

template <typename Value>
void RadixTree<Value>::AddEdge(Node& branch, char16_t unit, Index child) {
    if (branch.count + 1 == kWideEdges && &branch != &root) {
        wideBranches.push_back(static_cast<Index>(&branch - nodes.data()));
    }
    if (branch.count == branch.link) {  // the span is full: move it to the end with twice the room
        const auto first = static_cast<Index>(edges.size());
        edges.resize(edges.size() + 2 * branch.link);
        std::copy_n(edges.begin() + branch.first, branch.count, edges.begin() + first);
        branch.first = first;
        branch.link *= 2;
    }
    Edge* begin = edges.data() + branch.first;
    Edge* end = begin + branch.count;
    Edge* place = std::lower_bound(begin, end, unit, UnitBelow);
    std::copy_backward(place, end, end + 1);
    *place = Edge{unit, child};
    ++branch.count;
    NoteRootEdge(branch, unit, child);
}

template <typename Value>
int RadixTree<Value>::Bind(const char16_t* text, Value value, bool replace, Value* holder) {
    if (text == nullptr) return 1;
    DropWideIndex();
    Index current = 0;  // the root
    const char16_t* rest = text;
    // Whatever can fail to allocate happens before a node that is reachable
    // changes; a failure leaves at most an unreachable node behind.
    while (*rest != 0) {
        // One step makes three nodes at most.
        ReserveNodes(3);
        Node& node = NodeOrRoot(current);
        if (node.form == Form::Branch) {
            Index child = ChildOf(node, *rest);
            if (child == 0) {
                child = NewNode();
                AddEdge(node, *rest, child);
            }
            current = child;
            ++rest;
            continue;
        }
        if (node.form == Form::Leaf) {  // the rest of the key becomes its run
            const Index leaf = NewNode();
            const auto first = static_cast<Index>(units.size());
            units.insert(units.end(), rest, rest + std::char_traits<char16_t>::length(rest));
            At(leaf).value = value;
            node.first = first;
            node.count = static_cast<Index>(units.size()) - first;
            node.link = leaf;
            node.form = Form::Run;
            return 0;
        }
        const Index n = CommonLength(units.data() + node.first, node.count, rest);
        if (n == node.count) {  // the whole run matches: go on behind it
            current = node.link;
            rest += n;
            continue;
        }
        if (rest[n] == 0) {  // the key ends inside the run: split the run at its end
            const Index tail = NewNode();
            At(tail) = Node{value, node.first + n, node.count - n, node.link, Form::Run};
            node.count = n;
            node.link = tail;
            return 0;
        }
        // The texts differ at n: a branch node there leads on to the run's
        // remainder and to a new leaf for the key. The unit at n goes to the
        // branch; the node keeps the units before it, a new run those after.
        const Index newSide = NewNode();
        Index remainder = node.link;
        if (n + 1 < node.count) {
            remainder = NewNode();
            At(remainder) =
                Node{Value{}, node.first + n + 1, node.count - n - 1, node.link, Form::Run};
        }
        const Index branch = n > 0 ? NewNode() : 0;
        const auto first = static_cast<Index>(edges.size());
        const Edge oldSide{units[node.first + n], remainder};
        const Edge newEdge{rest[n], newSide};
        edges.push_back(oldSide.unit < newEdge.unit ? oldSide : newEdge);
        edges.push_back(oldSide.unit < newEdge.unit ? newEdge : oldSide);
        if (n > 0) {  // the run keeps its units before n and leads to the branch
            At(branch) = Node{Value{}, first, 2, 2, Form::Branch};
            node.count = n;
            node.link = branch;
        } else {  // the node itself becomes the branch
            node = Node{node.value, first, 2, 2, Form::Branch};
            NoteRootEdge(node, oldSide.unit, oldSide.child);
            NoteRootEdge(node, newEdge.unit, newEdge.child);
        }
        current = newSide;
        rest += n + 1;
    }
    Node& node = NodeOrRoot(current);
    if (node.value != Value{} && !replace) {
        if (holder != nullptr) *holder = node.value;
        return 1;
    }
    node.value = value;
    return 0;
}

template <typename Value>
int RadixTree<Value>::Erase(const char16_t* text) {
    if (text == nullptr) return 1;
    DropWideIndex();
    bool erased = false;
    Unbind(root, text, erased);
    return erased ? 0 : 1;
}

// Unbinds the key `rest` below node. Returns true when node has
// become a leaf without a value, which its parent then releases.
template <typename Value>
bool RadixTree<Value>::Unbind(Node& node, const char16_t* rest, bool& erased) {
    if (*rest == 0) {
        erased = node.value != Value{};
        node.value = Value{};
    } else if (node.form == Form::Branch) {
        const Edge* found = FindEdge(node, *rest);
        if (found == nullptr) return false;
        if (Unbind(At(found->child), rest + 1, erased)) {
            Release(found->child);
            NoteRootEdge(node, found->unit, 0);
            const auto edge = edges.begin() + (found - edges.data());
            std::copy(edge + 1, edges.begin() + node.first + node.count, edge);
            if (--node.count == 0) {
                if (node.first + node.link == edges.size()) edges.resize(node.first);
                node.form = Form::Leaf;
            }
        }
    } else if (node.form == Form::Run) {
        if (CommonLength(units.data() + node.first, node.count, rest) < node.count) return false;
        if (Unbind(At(node.link), rest + node.count, erased)) {
            Release(node.link);
            if (node.first + node.count == units.size()) units.resize(node.first);
            node.count = 0;
            node.form = Form::Leaf;
        }
    } else {
        return false;
    }
    return node.value == Value{} && node.form == Form::Leaf;
}

template <typename Value>
void RadixTree<Value>::Compact() {
    RadixTree fresh(nodes.get_allocator().memory);
    for (const auto& [text, value] : Keys()) fresh.InsertOrAssign(text.c_str(), value);
    *this = std::move(fresh);
}

template <typename Value>
std::size_t RadixTree<Value>::LiveBytes() const {
    std::size_t released = 0;
    for (Index at = freeNodes; at != 0; at = At(at).link) ++released;
    // Released nodes are leaves, and the slot at index 0 holds no node.
    std::size_t bytes =
        (nodes.size() - std::min<std::size_t>(nodes.size(), released + 1)) * sizeof(Node);
    const auto add = [&bytes](const Node& node) {
        if (node.form == Form::Run) bytes += node.count * sizeof(char16_t);
        if (node.form == Form::Branch) bytes += node.link * sizeof(Edge);
    };
    add(root);
    for (const Node& node : nodes) add(node);
    return bytes;
}

template <typename Value>
void RadixTree<Value>::IndexWideBranches() {
    DropWideIndex();
    std::uint16_t wide = 0;
    for (const Index at : wideBranches) {
        Node& node = At(at);
        // A branch that became wide twice is listed twice; it has one table.
        if (node.form == Form::Branch && node.count >= kWideEdges && node.wide == 0 &&
            wide < UINT16_MAX) {
            node.wide = ++wide;
        }
    }
    wideChildren.assign(std::size_t{wide} * kWideUnits, 0);
    for (const Index at : wideBranches) {
        const Node& node = At(at);
        if (node.wide == 0) continue;
        Index* children = wideChildren.data() + (node.wide - 1) * std::size_t{kWideUnits};
        for (Index i = 0; i < node.count; ++i) {
            const Edge& edge = edges[node.first + i];
            if (edge.unit < kWideUnits) children[edge.unit] = edge.child;
        }
    }
}

template <typename Value>
void RadixTree<Value>::DropWideIndex() {
    if (wideChildren.empty()) return;
    for (const Index at : wideBranches) At(at).wide = 0;
    wideChildren.clear();
}

}  // namespace Mensura

#endif  // MENSURA_BASE_RADIX_TREE_H
