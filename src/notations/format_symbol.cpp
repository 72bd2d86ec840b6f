#include "notations/format_symbol.h"

#include "notations/symbol_strings.h"

namespace Mensura {

std::int64_t SimpleFormatSymbol::Render(double, const Dimensions&, char16_t* buffer,
                                        std::size_t size, const NumberSettings&) const {
    if (buffer == nullptr || size == 0) return -static_cast<std::int64_t>(ErrorCode::Failure);
    std::size_t at = 0;
    if (!(flags & NoSpace)) buffer[at++] = u' ';
    // The text and its terminator must fit.
    if (at + text.size() + 1 > size) return -static_cast<std::int64_t>(ErrorCode::Failure);
    text.copy(buffer + at, text.size());
    at += text.size();
    buffer[at++] = 0;
    return static_cast<std::int64_t>(at);
}

std::int64_t NumberedSymbol::Render(double value, const Dimensions& dims, char16_t* buffer,
                                    std::size_t size, const NumberSettings& settings) const {
    const std::int64_t number = RenderPart(0, value, dims, buffer, size, settings);
    if (number < 1) return number;
    const std::size_t used = static_cast<std::size_t>(number - 1);
    return SimpleFormatSymbol::Render(value, dims, buffer + used, size - used, settings);
}

std::int64_t NumberedSymbol::RenderPart(int part, double value, const Dimensions& dims,
                                        char16_t* buffer, std::size_t size,
                                        const NumberSettings& settings) const {
    if (part != 0) return -static_cast<std::int64_t>(ErrorCode::Failure);
    double inUnit = 0.0;
    const ErrorCode result = NumberConverter().DirectFromBase(value, dims, inUnit);
    if (result != ErrorCode::Success) return -static_cast<std::int64_t>(result);
    return settings.RenderNumber(inUnit, buffer, size, 0);
}

int NumberedSymbol::ParsePart(SymbolList& list, int form) const {
    if (form != 0 || list.empty()) return 1;
    const SymbolList::iterator head = list.begin();
    if (head.symbol()->AsNumber() == nullptr) return 1;
    return MakeResult(list, head, NumberConverter());
}

int NumberedSymbol::MakeCustomSymbols(CustomSymbolList& out,
                                      const std::vector<std::u16string>& literals,
                                      const std::vector<int>& indices) const {
    out.clear();
    return AppendCustomSymbol(out, this, literals, indices, 0);
}

int LinearSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                           const Dimensions&) const {
    const SymbolList::iterator self = position;
    if (firstPass) {
        // Beside any other unit, this is a size of degree, not a temperature.
        bool besideUnit = false;
        for (SymbolList::iterator it = self; it != list.begin() && !besideUnit;) {
            --it;
            besideUnit = it.symbol()->AsOperand() != nullptr;
        }
        for (SymbolList::iterator it = self.next(); it != list.end() && !besideUnit; ++it) {
            besideUnit = it.symbol()->AsOperand() != nullptr;
        }
        if (besideUnit) {
            list.Replace<GenericOperand>(self, *sizeConverter);
        }
        ++position;
        return 0;
    }
    return JoinNumberBefore(list, position, NumberConverter());
}

int UnitOfKey(const IParseSymbol* holder) {
    if (const auto* generic = dynamic_cast<const GenericSymbol*>(holder)) return generic->Unit();
    if (const auto* linear = dynamic_cast<const LinearSymbol*>(holder)) return linear->ScaleUnit();
    return 0;
}

}  // namespace Mensura
