#include "notations/symbol_strings.h"

#include <algorithm>
#include <utility>

#include "api/formatter_impl.h"

namespace Mensura {

namespace {

constexpr std::int64_t kFailure = -static_cast<std::int64_t>(ErrorCode::Failure);

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

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
                    number = number * 10u + (unit - u'0');  // wraps in 32 bits
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
    : indices(numbers), literals(texts), parent(owner), form(symbolForm) {
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

std::int64_t CustomSymbol::Render(double value, const Dimensions& dims, char16_t* buffer,
                                  std::size_t size, const FormatterImpl& settings) const {
    if (parent == nullptr || buffer == nullptr) return kFailure;
    std::size_t at = 0;
    for (std::size_t i = 0; i < literals.size(); ++i) {
        const std::u16string& literal = literals[i];
        if (size - at <= literal.size()) return kFailure;
        std::copy(literal.begin(), literal.end(), buffer + at);
        at += literal.size();
        if (i < indices.size()) {
            const std::int64_t part =
                RenderPart(static_cast<int>(i), value, dims, buffer + at, size - at, settings);
            if (part < 1) return kFailure;
            at += static_cast<std::size_t>(part - 1);
        }
    }
    if (at >= size) return kFailure;
    buffer[at++] = 0;
    return static_cast<std::int64_t>(at);
}

std::int64_t CustomSymbol::RenderPart(int part, double value, const Dimensions& dims,
                                      char16_t* buffer, std::size_t size,
                                      const FormatterImpl& settings) const {
    if (parent == nullptr || part < 0 || static_cast<std::size_t>(part) >= indices.size()) {
        return kFailure;
    }
    return parent->RenderPart(indices[part], value, dims, buffer, size, settings);
}

int CustomSymbol::ParsePart(SymbolList& list, int asked) const {
    if (parent == nullptr || asked != form) return 1;
    int count = 0;
    for (SymbolList::iterator it = list.begin(); it != list.end() && it.symbol()->AsNumber();
         ++it) {
        ++count;
    }
    if (static_cast<std::size_t>(count) != indices.size()) return 1;
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

int CustomSymbol::MakeCustomSymbols(CustomSymbolList&, const std::vector<std::u16string>&,
                                    const std::vector<int>&) const {
    return 3;
}

const char16_t* CustomSymbol::GetText() const {
    return parent != nullptr ? parent->GetText() : nullptr;
}

int CustomSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool,
                           const Dimensions&) const {
    if (ParsePart(list, form) != 0) return 1;
    list.Erase(position);
    position = list.begin();
    return 0;
}

int AppendCustomSymbol(CustomSymbolList& out, const IFormatSymbol* parent,
                       const std::vector<std::u16string>& literals, const std::vector<int>& indices,
                       int form) {
    auto symbol = std::make_unique<CustomSymbol>(parent, literals, indices, form);
    if (!symbol->IsValid()) return 1;
    out.push_back(std::move(symbol));
    return 0;
}

CustomDictionary::Node* CustomDictionary::Child(const Node& node, const std::u16string& literal) {
    std::size_t matched = 0;
    Node* child = node.keys.FindLongest(literal.c_str(), &matched);
    return child != nullptr && matched == literal.size() ? child : nullptr;
}

int CustomDictionary::Put(const CustomSymbol& symbol) {
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
    if (node->symbol != nullptr) return 1;
    node->symbol = &symbol;
    return 0;
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

}  // namespace Mensura
