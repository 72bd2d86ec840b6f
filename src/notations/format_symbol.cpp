#include "notations/format_symbol.h"

#include "notations/symbol_strings.h"

namespace Mensura {

Result SimpleFormatSymbol::Render(double, const Dimensions&, char16_t* buffer, std::size_t size,
                                  const NumberSettings&) const {
    if (buffer == nullptr || size == 0) return Result::Fail();
    std::size_t at = 0;
    if (!(flags & NoSpace)) buffer[at++] = u' ';
    // The text and its terminator must fit.
    const std::u16string_view text = Text();
    if (at + text.size() + 1 > size) return Result::Fail();
    text.copy(buffer + at, text.size());
    at += text.size();
    buffer[at] = 0;
    return Result::Done(at);
}

Result NumberedSymbol::Render(double value, const Dimensions& dims, char16_t* buffer,
                              std::size_t size, const NumberSettings& settings) const {
    const Result number = RenderPart(0, value, dims, buffer, size, settings);
    if (!number.Ok()) return number;
    const std::size_t used = number.length;
    const Result symbol =
        SimpleFormatSymbol::Render(value, dims, buffer + used, size - used, settings);
    return symbol.Ok() ? Result::Done(used + symbol.length) : symbol;
}

Result NumberedSymbol::RenderPart(int part, double value, const Dimensions& dims, char16_t* buffer,
                                  std::size_t size, const NumberSettings& settings) const {
    if (part != 0) return Result::Fail();
    double inUnit = 0.0;
    const ErrorCode result = NumberConverter().DirectFromBase(value, dims, inUnit);
    if (result != ErrorCode::Success) return Result::Fail(result);
    return settings.RenderNumber(inUnit, buffer, size, 0);
}

ErrorCode NumberedSymbol::ParsePart(SymbolList& list, int form) const {
    if (form != 0 || list.empty()) return ErrorCode::ParseFailure;
    const SymbolList::iterator head = list.begin();
    if (head.symbol()->AsNumber() == nullptr) return ErrorCode::ParseFailure;
    return MakeResult(list, head, NumberConverter());
}

ErrorCode NumberedSymbol::MakeCustomSymbols(CustomSymbolList& out,
                                            const std::vector<std::u16string>& literals,
                                            const std::vector<int>& indices) const {
    out.clear();
    return AppendCustomSymbol(out, this, literals, indices, 0);
}

ErrorCode LinearSymbol::Evaluate(SymbolList& list, SymbolList::iterator& position, bool firstPass,
                                 const Dimensions&) const {
    const SymbolList::iterator self = position;
    if (firstPass) {
        // Beside any other unit, this is a size of degree, not a temperature.
        // A scale that stayed one in front of this one found no unit in the
        // whole list, and only what stands between the two has changed
        // since: the look stops there, so that a text of many scales is
        // looked through once rather than once for each.
        bool besideUnit = false;
        bool scaleInFront = false;
        for (SymbolList::iterator it = self; it != list.begin() && !besideUnit && !scaleInFront;) {
            --it;
            besideUnit = it.symbol()->AsOperand() != nullptr;
            scaleInFront = it.symbol()->Kind() == ParseKind::Linear;
        }
        for (SymbolList::iterator it = self.next();
             it != list.end() && !besideUnit && !scaleInFront; ++it) {
            besideUnit = it.symbol()->AsOperand() != nullptr;
        }
        if (besideUnit) {
            list.Replace<GenericOperand>(self, *sizeConverter);
        }
        ++position;
        return ErrorCode::Success;
    }
    return JoinNumberBefore(list, position, NumberConverter());
}

int UnitOfKey(const IParseSymbol* holder) {
    if (const auto* generic = dynamic_cast<const GenericSymbol*>(holder)) return generic->Unit();
    if (const auto* linear = dynamic_cast<const LinearSymbol*>(holder)) return linear->ScaleUnit();
    return 0;
}

}  // namespace Mensura
