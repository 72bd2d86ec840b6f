#include "notations/symbol_strings.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Mensura {

namespace {

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

// The largest placeholder number that the split reads; CustomSymbol then
// refuses any that its symbol has no part for.
constexpr std::uint32_t kMaxPlaceholder = std::numeric_limits<std::int32_t>::max();

// Whether indices holds each of 0 to its count minus 1 exactly once.
bool IsPermutation(const std::vector<int>& indices) {
    std::vector<bool> seen(indices.size(), false);
    for (int index : indices) {
        if (index < 0 || static_cast<std::size_t>(index) >= indices.size() || seen[index]) {
            return false;
        }
        seen[index] = true;
    }
    return true;
}

// What a literal tree built anew may hold beyond twice its content: the
// slot before its first node and the units that its splits dropped.
constexpr std::size_t kTidySlack = 64;

// The element `steps` places behind the first one.
SymbolList::iterator At(SymbolList& list, int steps) {
    SymbolList::iterator it = list.begin();
    for (int i = 0; i < steps; ++i) ++it;
    return it;
}

}  // namespace

bool SplitSymbolString(const char16_t* text, SymbolStringParts& parts) {
    parts.literals.assign(1, std::u16string());
    parts.indices.clear();
    if (text == nullptr) return false;
    enum class State { Text, Open, Number, Close, After };
    State state = State::Text;
    const char16_t* pending = text;  // read since the last action
    std::uint32_t number = 0;
    const char16_t* at = text;
    for (; *at != 0; ++at) {
        const char16_t unit = *at;
        switch (state) {
            case State::Text:
                if (unit == u'{') state = State::Open;
                if (unit == u'}') state = State::Close;
                break;
            case State::Open:
                if (unit == u'{') {
                    // The pending text up to the first brace, and one brace.
                    parts.literals.back().append(pending, at - 1).push_back(u'{');
                    pending = at + 1;
                    state = State::Text;
                } else if (IsDigit(unit)) {
                    parts.literals.back().append(pending, at - 1);
                    number = unit - u'0';
                    state = State::Number;
                } else {
                    return false;
                }
                break;
            case State::Number:
                if (IsDigit(unit)) {
                    // No number that a symbol can use comes near the limit;
                    // one beyond it is refused before it can wrap.
                    const std::uint32_t digit = unit - u'0';
                    if (number > (kMaxPlaceholder - digit) / 10u) return false;
                    number = number * 10u + digit;
                } else if (unit == u'}') {
                    parts.indices.push_back(static_cast<int>(number));
                    state = State::After;
                } else {
                    return false;
                }
                break;
            case State::Close:
                if (unit != u'}') return false;
                parts.literals.back().append(pending, at - 1).push_back(u'}');
                pending = at + 1;
                state = State::Text;
                break;
            case State::After:
                if (unit == u'{' || unit == u'}') return false;
                parts.literals.emplace_back();
                pending = at;
                state = State::Text;
                break;
        }
    }
    if (state == State::Text) {
        parts.literals.back().append(pending, at);
        return true;
    }
    return state == State::After;
}

CustomSymbol::CustomSymbol(const IFormatSymbol* owner, const std::vector<std::u16string>& texts,
                           const std::vector<int>& numbers, int symbolForm)
    : IParseSymbol(ParseKind::Custom),
      indices(numbers),
      literals(texts),
      parent(owner),
      form(symbolForm) {
    const bool valid =
        parent != nullptr &&
        static_cast<std::int64_t>(indices.size()) == parent->LastPartIndex(form) + 1 &&
        (literals.size() == indices.size() || literals.size() == indices.size() + 1) &&
        IsPermutation(indices);
    if (!valid) {
        parent = nullptr;
        indices.clear();
        literals.clear();
    }
}

Result CustomSymbol::Render(double value, const Dimensions& dims, char16_t* buffer,
                            std::size_t size, const NumberSettings& settings) const {
    if (parent == nullptr || buffer == nullptr) return Result::Fail();
    std::size_t at = 0;
    for (std::size_t i = 0; i < literals.size(); ++i) {
        const std::u16string& literal = literals[i];
        if (size - at <= literal.size()) return Result::Fail();
        std::copy(literal.begin(), literal.end(), buffer + at);
        at += literal.size();
        if (i < indices.size()) {
            const Result part =
                RenderPart(static_cast<int>(i), value, dims, buffer + at, size - at, settings);
            if (!part.Ok()) return Result::Fail();
            at += part.length;
        }
    }
    if (at >= size) return Result::Fail();
    buffer[at] = 0;
    return Result::Done(at);
}

Result CustomSymbol::RenderPart(int part, double value, const Dimensions& dims, char16_t* buffer,
                                std::size_t size, const NumberSettings& settings) const {
    if (parent == nullptr || part < 0 || static_cast<std::size_t>(part) >= indices.size()) {
        return Result::Fail();
    }
    return parent->RenderPart(indices[part], value, dims, buffer, size, settings);
}

ErrorCode CustomSymbol::ParsePart(SymbolList& list, int asked) const {
    if (parent == nullptr || asked != form) return ErrorCode::ParseFailure;
    int count = 0;
    for (SymbolList::iterator it = list.begin(); it != list.end() && it.symbol()->AsNumber();
         ++it) {
        ++count;
    }
    if (static_cast<std::size_t>(count) != indices.size()) return ErrorCode::ParseFailure;
    // The number written at position i goes to position indices[i]: each cycle
    // of the permutation is rotated once, from its smallest position.
    for (int start = 0; start < count; ++start) {
        int next = indices[start];
        while (next > start) next = indices[next];
        if (next < start) continue;  // the cycle was rotated from a smaller position
        for (next = indices[start]; next != start; next = indices[next]) {
            list.Swap(At(list, start), At(list, next));
        }
    }
    return parent->ParsePart(list, form);
}

int CustomSymbol::LastPartIndex(int asked) const {
    if (parent == nullptr) return -3;
    return asked == form ? parent->LastPartIndex(form) : -1;
}

ErrorCode CustomSymbol::MakeCustomSymbols(CustomSymbolList&, const std::vector<std::u16string>&,
                                          const std::vector<int>&) const {
    return ErrorCode::NotSet;
}

const char16_t* CustomSymbol::GetText() const {
    return parent != nullptr ? parent->GetText() : nullptr;
}

ErrorCode CustomSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool,
                                 const Dimensions&) const {
    if (ParsePart(list, form) != ErrorCode::Success) return ErrorCode::ParseFailure;
    list.Erase(position);
    position = list.begin();
    return ErrorCode::Success;
}

ErrorCode AppendCustomSymbol(CustomSymbolList& out, const IFormatSymbol* parent,
                             const std::vector<std::u16string>& literals,
                             const std::vector<int>& indices, int form) {
    auto symbol = std::make_unique<CustomSymbol>(parent, literals, indices, form);
    if (!symbol->IsValid()) return ErrorCode::Failure;
    out.push_back(std::move(symbol));
    return ErrorCode::Success;
}

CustomDictionary::Node* CustomDictionary::Child(const Node& node, const std::u16string& literal) {
    std::size_t matched = 0;
    Node* child = node.keys.FindLongest(literal.c_str(), &matched);
    return child != nullptr && matched == literal.size() ? child : nullptr;
}

ErrorCode CustomDictionary::Put(const CustomSymbol& symbol) {
    // A path that ends in a taken slot existed whole: a refusal makes no node.
    Node* node = &root;
    for (const std::u16string& literal : symbol.Literals()) {
        Node* child = Child(*node, literal);
        if (child == nullptr) {
            node->children.push_back(std::make_unique<Node>());
            child = node->children.back().get();
            node->keys.Insert(literal.c_str(), child);
        }
        node = child;
    }
    if (node->symbol != nullptr) return ErrorCode::Failure;
    node->symbol = &symbol;
    return ErrorCode::Success;
}

void CustomDictionary::TakeOut(const CustomSymbol& symbol) {
    TakeOut(root, symbol, 0);
}

void CustomDictionary::TakeOut(Node& node, const CustomSymbol& symbol, std::size_t depth) {
    const std::vector<std::u16string>& literals = symbol.Literals();
    if (depth == literals.size()) {
        if (node.symbol == &symbol) node.symbol = nullptr;
        return;
    }
    Node* child = Child(node, literals[depth]);
    if (child == nullptr) return;
    TakeOut(*child, symbol, depth + 1);
    if (!child->LeadsNowhere()) return;
    node.keys.Erase(literals[depth].c_str());
    node.children.erase(std::find_if(node.children.begin(), node.children.end(),
                                     [child](const auto& owned) { return owned.get() == child; }));
}

void CustomDictionary::Tidy(const CustomSymbol& symbol) noexcept {
    Node* node = &root;
    for (const std::u16string& literal : symbol.Literals()) {
        RadixTree<Node*>& keys = node->keys;
        // A tree built anew holds at most about as much room unused as used
        // (the spans that its branches outgrew), and a few bytes besides.
        if (keys.PoolBytes() > 2 * keys.LiveBytes() + kTidySlack) {
            try {
                keys.Compact();
            } catch (...) {
            }
        }
        node = Child(*node, literal);
        if (node == nullptr) return;
    }
}

std::size_t CustomDictionary::Measure(const Node& node, bool live) {
    std::size_t bytes = live ? node.keys.LiveBytes() : node.keys.PoolBytes();
    for (const auto& child : node.children) bytes += Measure(*child, live);
    return bytes;
}

ErrorCode SymbolStrings::Set(Use use, int symbol, const IFormatSymbol* parent,
                             const char16_t* text) {
    Strings& strings = Of(use);
    const auto found = strings.find(symbol);
    const bool removal = text == nullptr || *text == 0;
    if (found != strings.end()) {
        if (!removal && found->second.text == text) return ErrorCode::Success;
        if (removal) {
            for (const auto& old : found->second.symbols) dictionary.TakeOut(*old);
            for (const auto& old : found->second.symbols) dictionary.Tidy(*old);
            strings.erase(found);
            return ErrorCode::Success;
        }
    } else if (removal) {
        return ErrorCode::Success;
    }

    // Everything that can refuse comes before the first change.
    if (parent == nullptr) return ErrorCode::Failure;
    SymbolStringParts parts;
    if (!SplitSymbolString(text, parts)) return ErrorCode::Failure;
    CustomSymbolList made;
    if (parent->MakeCustomSymbols(made, parts.literals, parts.indices) != ErrorCode::Success ||
        made.empty()) {
        return ErrorCode::Failure;
    }
    std::u16string stored(text);

    // The entry exists before the dictionary changes; a fresh one holds no
    // objects yet. The old paths leave first, so that a new text with the
    // same literals on the same symbol finds its paths free.
    const auto entry = found != strings.end() ? found : strings.try_emplace(symbol).first;
    CustomSymbolList& old = entry->second.symbols;
    for (const auto& object : old) dictionary.TakeOut(*object);
    // Back to the state before the call: the new objects leave the paths,
    // the one being put included, and the old ones take theirs again.
    // Taking out allocates nothing.
    const auto restore = [&](std::size_t placed) {
        for (std::size_t i = 0; i < placed && i < made.size(); ++i) {
            dictionary.TakeOut(*made[i]);
        }
        for (const auto& object : old) dictionary.Put(*object);
        if (old.empty()) strings.erase(entry);
    };
    std::size_t put = 0;
    try {
        while (put < made.size() && dictionary.Put(*made[put]) == ErrorCode::Success) ++put;
    } catch (...) {
        // Out of memory midway: no path may keep a new object, which goes
        // with this call. Should the old paths not fit again either, their
        // objects stay out of the dictionary, which then reads less.
        try {
            restore(put + 1);
        } catch (...) {
        }
        throw;
    }
    // The paths that changed, the old ones and the new ones, leave room
    // unused in their trees. A fresh entry that is refused goes with its
    // (empty) list of old objects.
    const bool fresh = old.empty();
    if (put < made.size()) {
        restore(put);
        if (!fresh) {
            for (const auto& object : old) dictionary.Tidy(*object);
        }
        for (const auto& object : made) dictionary.Tidy(*object);
        return ErrorCode::Failure;
    }
    entry->second.text = std::move(stored);
    for (const auto& object : old) dictionary.Tidy(*object);
    for (const auto& object : made) dictionary.Tidy(*object);
    old = std::move(made);  // the old objects go
    return ErrorCode::Success;
}

ErrorCode SymbolStrings::Get(Use use, int symbol, char16_t* buffer, std::size_t size) const {
    const Strings& strings = Of(use);
    const auto found = strings.find(symbol);
    if (found == strings.end()) return ErrorCode::NotSet;
    const std::u16string& text = found->second.text;
    if (buffer == nullptr || size <= text.size()) return ErrorCode::Failure;
    std::copy(text.begin(), text.end(), buffer);
    buffer[text.size()] = 0;
    return ErrorCode::Success;
}

const IFormatSymbol* SymbolStrings::Renderer(int symbol) const {
    const auto found = formatting.find(symbol);
    if (found == formatting.end() || found->second.symbols.empty()) return nullptr;
    return found->second.symbols.front().get();
}

ErrorCode SymbolStrings::Read(const NumberSettings& numbers, SymbolList& leading,
                              const char16_t* rest, double& value,
                              const Dimensions& dimensions) const {
    // The work list borrows the leading numbers; what the pass adds, it owns,
    // and it all goes with the list, so that a failed pass leaves no trace.
    SymbolList work;
    for (SymbolList::iterator it = leading.begin(); it != leading.end(); ++it) {
        work.PushBack(it.symbol());
    }
    const CustomDictionary::Node* node = &dictionary.Root();
    std::size_t matched = 0;
    // A string that begins with a placeholder has an empty first literal.
    if (!work.empty()) {
        node = node->FindLongest(u"", &matched);
        if (node == nullptr) return ErrorCode::Failure;
    }
    const char16_t* cursor = rest;
    while (*cursor != 0) {
        node = node->FindLongest(cursor, &matched);
        if (node == nullptr) return ErrorCode::Failure;
        cursor += matched;
        if (*cursor == 0) break;
        double number = 0.0;
        std::uint32_t flags = 0;
        const Result scanned = numbers.ScanNumber(cursor, &number, &flags);
        if (!scanned.Ok()) break;
        work.PushBackNew<NumberSymbol>(number, flags);
        cursor += scanned.length;
    }
    if (*cursor != 0 || node->Symbol() == nullptr) return ErrorCode::Failure;
    work.PushBack(node->Symbol());
    if (EvaluateList(work, dimensions) != ErrorCode::Success) return ErrorCode::Failure;
    return ReadResult(work, value, dimensions);
}

}  // namespace Mensura
