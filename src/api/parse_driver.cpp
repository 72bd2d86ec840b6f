// From a text to one value: the pass through the caller's symbol strings, the
// scan of a text into a list of numbers and symbols, and the reading of the
// evaluated result. With the everyday reading on, a text that the catalogue's
// reading refuses is read a second time with the everyday vocabulary and
// forms, so that they only ever add readings.
#include "api/formatter_impl.h"
#include "base/ids.h"
#include "base/number_flags.h"
#include "catalogue/everyday.h"
#include "catalogue/unit_catalog.h"
#include "grammar/operators.h"
#include "grammar/parse_symbol.h"
#include "notations/everyday_forms.h"

namespace Mensura {

namespace {

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

// What may begin an exponent: "²", "³", "^" or a digit.
bool MayStartExponent(char16_t unit) {
    return IsDigit(unit) || unit == u'²' || unit == u'³' || unit == u'^';
}

// Whether the key of `length` units at key may have to be cut before an
// exponent behind it (CutBeforeExponent): a key of one unit has nothing to
// cut.
bool MayCut(const char16_t* key, std::size_t length) {
    return length > 1 && MayStartExponent(key[length]);
}

// Where a key that is a quotient or product of units ("kg/m", "m/s") must be
// cut when an exponent follows it directly, so that the exponent applies to
// its last unit: "kg/m²" is kilograms per square meter. The length in front
// of the key's last "/" or "·", or 0 when the key stays whole; the caller
// has seen that something like an exponent follows. A digit is an
// exponent only where the last unit takes one ("kg/m2"), and a key with
// brackets stays whole.
std::size_t CutBeforeExponent(const char16_t* key, std::size_t length,
                              const ParseDictionary& dictionary) {
    const bool digit = IsDigit(key[length]);
    std::size_t cut = 0;
    for (std::size_t i = 0; i < length; ++i) {
        const char16_t unit = key[i];
        if (unit == u'(' || unit == u')' || unit == u'（' || unit == u'）') return 0;
        if (unit == u'/' || unit == u'·') cut = i;
    }
    if (cut == 0) return 0;
    if (digit) {
        std::size_t matched = 0;
        if (dictionary.FindLongest(key + cut + 1, &matched) == nullptr ||
            matched <= length - cut - 1) {
            return 0;
        }
    }
    return cut;
}

// The dictionary's readers by number as a reading takes them: with the
// everyday meanings in place when `everyday` is given.
const IParseSymbol* const* ReadersOf(const EverydayVocabulary* everyday, bool us) {
    return everyday != nullptr ? everyday->Readers(us)
                               : UnitCatalog::Instance().Dictionary().Readers();
}

// The key that the scan reads at cursor: the longest key of the dictionary,
// or of the everyday words when `forms` is set and theirs is longer, short of
// `fence`, the end of a key that was cut before an exponent; up to there,
// keys are looked up no further. A key that has an exponent behind it is cut
// before its last unit, and the key up to the cut is read in its place. The
// symbol in its everyday meaning when `everyday` is given; null where no key
// begins.
const IParseSymbol* FindAnyKey(const char16_t* cursor, const char16_t*& fence, std::size_t& matched,
                               const EverydayVocabulary* everyday, bool forms, bool us) {
    const ParseDictionary& dictionary = UnitCatalog::Instance().Dictionary();
    const IParseSymbol* const* readers = ReadersOf(everyday, us);
    for (;;) {
        const bool fenced = fence != nullptr && cursor < fence;
        const std::size_t limit =
            fenced ? static_cast<std::size_t>(fence - cursor) : static_cast<std::size_t>(-1);
        const IParseSymbol* symbol = fenced
                                         ? dictionary.FindLongest(cursor, &matched, limit, readers)
                                         : dictionary.FindLongest(cursor, &matched, readers);
        if (forms) {
            std::size_t longer = 0;
            const IParseSymbol* word = everyday->FindLongest(cursor, &longer, limit, us);
            if (word != nullptr && (symbol == nullptr || longer > matched)) {
                symbol = everyday->Substitute(word, us);
                matched = longer;
            }
        }
        if (symbol == nullptr) return nullptr;
        if (!fenced && MayCut(cursor, matched)) {
            if (const std::size_t cut = CutBeforeExponent(cursor, matched, dictionary)) {
                fence = cursor + cut;
                continue;
            }
        }
        return symbol;
    }
}

// FindAnyKey, with its commonest case here: the dictionary's keys alone, read
// through `readers` (the catalogue's, or the everyday vocabulary's for the
// locale), and no fence ahead.
inline const IParseSymbol* FindKey(const char16_t* cursor, const char16_t*& fence,
                                   std::size_t& matched, const IParseSymbol* const* readers,
                                   const EverydayVocabulary* everyday, bool forms, bool us) {
    if (fence != nullptr && cursor >= fence) fence = nullptr;
    if (fence != nullptr || forms) return FindAnyKey(cursor, fence, matched, everyday, forms, us);
    const ParseDictionary& dictionary = UnitCatalog::Instance().Dictionary();
    const IParseSymbol* symbol = dictionary.FindLongest(cursor, &matched, readers);
    if (symbol == nullptr) return nullptr;
    if (MayCut(cursor, matched)) {
        if (const std::size_t cut = CutBeforeExponent(cursor, matched, dictionary)) {
            fence = cursor + cut;
            return FindAnyKey(cursor, fence, matched, everyday, false, us);
        }
    }
    return symbol;
}

}  // namespace

void FormatterImpl::SetEverydayReading(bool on) {
    everydayVocabulary = on ? &EverydayVocabulary::Instance() : nullptr;
}

ErrorCode FormatterImpl::ParseInUnit(const char16_t* text, double& value, int unit,
                                     ScanTrace* trace) const {
    const UnitConverter* converter = UnitTable::Instance().FindConverter(unit);
    if (converter == nullptr) return ErrorCode::ParseFailure;
    double base = 0.0;
    const Dimensions& dimensions = converter->GetDimensions();
    if (ParseToBase(text, base, dimensions, unit & static_cast<int>(UnitId::GroupMask), trace) !=
        ErrorCode::Success) {
        return ErrorCode::ParseFailure;
    }
    // The caller's value is written here alone, the offset of a scale taken off.
    if (converter->DirectFromBase(base, dimensions, value) != ErrorCode::Success) {
        return ErrorCode::ParseFailure;
    }
    return ErrorCode::Success;
}

ErrorCode FormatterImpl::ParseToBase(const char16_t* text, double& value,
                                     const Dimensions& dimensions, int group,
                                     ScanTrace* trace) const {
    if (text == nullptr || *text == 0) return ErrorCode::ParseFailure;
    if (everydayVocabulary == nullptr) {
        return ReadText(text, value, dimensions, group, nullptr, false, trace);
    }
    const EverydayVocabulary& everyday = *everydayVocabulary;
    if (trace == nullptr && symbolStrings.Empty()) {
        const ShortWay way = ReadEverydayShape(text, value, dimensions, everyday);
        if (way != ShortWay::Declined) {
            return way == ShortWay::Read ? ErrorCode::Success : ErrorCode::ParseFailure;
        }
    }
    // The catalogue's reading first, with the everyday meanings of the
    // symbols that the list replaces; the everyday forms only where it fails.
    const ErrorCode code = ReadText(text, value, dimensions, group, &everyday, false, trace);
    if (code == ErrorCode::Success) return code;
    if (ReadText(text, value, dimensions, group, &everyday, true, trace) == ErrorCode::Success) {
        return ErrorCode::Success;
    }
    return code;
}

ErrorCode FormatterImpl::ReadText(const char16_t* text, double& value, const Dimensions& dimensions,
                                  int group, const EverydayVocabulary* everyday, bool forms,
                                  ScanTrace* trace) const {
    const UnitCatalog& catalog = UnitCatalog::Instance();
    const char16_t* cursor = text;
    const bool commonSigns = everyday != nullptr;
    // The short way reads the commonest texts without the list; not in a
    // trace, whose reading always lays the list out. What it read of a text
    // that it leaves to the list, the list takes over.
    const bool shortWay = !forms && trace == nullptr;
    ReadAhead ahead;
    bool tried = false;

    double number = 0.0;
    std::uint32_t flags = 0;
    Result scanned = numbers.ScanNumber(cursor, &number, &flags, commonSigns);
    if (shortWay && scanned.Ok() && symbolStrings.Empty()) {
        if (ReadNumberAndUnit(cursor + scanned.length, number, value, dimensions, everyday,
                              ahead)) {
            return ErrorCode::Success;
        }
        tried = true;
    }

    SymbolList list;
    if (tried) {
        list.PushBackNew<NumberSymbol>(number, flags);
    } else {
        // The numbers at the very start, read once for both attempts.
        while (scanned.Ok()) {
            list.PushBackNew<NumberSymbol>(number, flags);
            if (trace != nullptr) {
                trace->tokens.push_back(
                    {static_cast<std::size_t>(cursor - text), scanned.length, nullptr});
            }
            cursor += scanned.length;
            if (*cursor == 0) break;
            scanned = numbers.ScanNumber(cursor, &number, &flags, commonSigns);
        }
        // The caller's symbol strings come first. Once one of them has read
        // the text, its result stands, even when it is not a value of
        // `dimensions`.
        if (!forms && !symbolStrings.Empty()) {
            const ErrorCode custom = symbolStrings.Read(numbers, list, cursor, value, dimensions);
            if (custom != ErrorCode::Failure) return custom;
            if (shortWay && list.size() == 1) {
                if (ReadNumberAndUnit(cursor, list.begin().symbol()->AsNumber()->value, value,
                                      dimensions, everyday, ahead)) {
                    return ErrorCode::Success;
                }
                tried = true;
            }
        }
    }

    const char16_t* fence = nullptr;
    if (tried) {
        for (std::size_t i = 0; i < ahead.count; ++i) {
            const ReadAhead::Token& token = ahead.tokens[i];
            if (token.symbol != nullptr) {
                list.PushBack(token.symbol);
            } else {
                list.PushBackNew<NumberSymbol>(token.number, token.flags);
            }
        }
        cursor = ahead.cursor;
        fence = ahead.fence;
    }
    if (shortWay && fence == nullptr && ReadTypedMarks(cursor, list, value, dimensions, everyday)) {
        return ErrorCode::Success;
    }
    if (Scan(text, cursor, fence, list, everyday, forms, trace) != ErrorCode::Success) {
        return ErrorCode::ParseFailure;
    }

    if (forms) {
        const EverydayVocabulary::Operators& marks = everyday->Marks();
        EverydayForms::MarkCompactBearing(list, {marks.degree, marks.prime, marks.doublePrime});
        EverydayForms::JoinMixedNumbers(list);
        const ErrorCode sum = EverydayForms::ReadSum(list, dimensions, value);
        if (sum != ErrorCode::Failure) return sum;
    }

    if (EvaluateList(list, dimensions) != ErrorCode::Success) {
        // A bare number takes the default symbol of the target's group.
        if (list.size() != 1 || list.begin().symbol()->AsNumber() == nullptr) {
            return ErrorCode::ParseFailure;
        }
        const int target = group != 0 ? group : catalog.Units().FindGroupByDimensions(dimensions);
        const ISymbol* found = catalog.FindSymbol(ResolveSymbol(target), languageIndex);
        const IParseSymbol* symbol = found != nullptr ? found->AsParse() : nullptr;
        if (symbol == nullptr) return ErrorCode::Failure;
        list.PushBack(symbol);
        if (EvaluateList(list, dimensions) != ErrorCode::Success) return ErrorCode::ParseFailure;
    }
    return ReadResult(list, value, dimensions);
}

namespace {

// The unit that a letter of a bearing or "d" stands for in a text that is
// not an angle.
const UnitConverter& LetterUnit(ParseKind kind) {
    const int unit = kind == ParseKind::North   ? kNewton
                     : kind == ParseKind::South ? kSiemens
                     : kind == ParseKind::West  ? kWatt
                                                : kDay;
    return *UnitTable::Instance().FindConverter(unit);
}

// A unit in the making: its exponents and its factor, as a product or
// quotient of converters makes them (GenericConverter).
struct Operand {
    Dimensions exponents;
    double factor;
};

}  // namespace

bool FormatterImpl::ReadNumberAndUnit(const char16_t* cursor, double number, double& value,
                                      const Dimensions& dimensions,
                                      const EverydayVocabulary* everyday, ReadAhead& ahead) const {
    // What the scan lays out behind the number is read token by token, the
    // way the scan reads it, and evaluated as the list's two passes would:
    // - first pass: a blank is a product where an operand stands before it
    //   and another directly behind it, and nothing anywhere else;
    // - second pass: "²", "³" and "^n" apply at once to the operand on their
    //   left, "·" and "/" from left to right; each of these looks ahead past
    //   its right operand and lets one power there go first, so that a second
    //   power behind it ("a·b²³") applies to the product;
    // - the number joins the finished operand by its ToBase.
    // Anything else, or anything in another order, is left to the list.
    enum class Last { Nothing, Operand, Power, Operator, Caret };
    const bool us = localeId == kEnglish;
    const bool commonSigns = everyday != nullptr;
    const IParseSymbol* const* readers = ReadersOf(everyday, us);
    const char16_t* fence = nullptr;

    Last last = Last::Nothing;
    // The first operand stays a symbol of its own, offset and all, until
    // something applies to it; then `left` holds what it has become.
    const UnitConverter* first = nullptr;
    Operand left;
    Operand right;
    bool quotient = false;  // the waiting operator
    bool pending = false;   // an operator has its right operand and may apply
    bool rightRaised = false;
    bool blank = false;  // a blank behind an operand, a product if an operand follows

    auto hold = [&]() {
        if (first != nullptr) {
            left = {first->GetDimensions(), first->GetFactor()};
            first = nullptr;
        }
    };
    // The waiting operator applies: left and right become one. False when
    // an exponent leaves its range, as the list's operator then fails.
    auto apply = [&]() {
        if (!pending) return true;
        hold();
        if (!CombineDimensions(left.exponents, right.exponents, quotient, left.exponents))
            return false;
        left.factor = quotient ? left.factor / right.factor : left.factor * right.factor;
        pending = false;
        return true;
    };
    // A power: to the right operand if it has none yet, else to what stands
    // on the left once the operator has applied.
    auto raise = [&](int power) {
        if (pending && !rightRaised) {
            rightRaised = true;
            return RaiseToPower(right.exponents, right.factor, power);
        }
        if (!apply()) return false;
        hold();
        return RaiseToPower(left.exponents, left.factor, power);
    };

    // Every number and key read goes to `ahead` first; the list takes them
    // over from there when the text is left to it.
    ReadAhead::Token* token = ahead.tokens;
    auto leave = [&]() {
        ahead.count = static_cast<std::size_t>(token - ahead.tokens);
        ahead.cursor = cursor;
        ahead.fence = fence;
        return false;
    };
    while (*cursor != 0) {
        if (token == ahead.tokens + ReadAhead::kTokens) return leave();
        double exponent = 0.0;
        std::uint32_t flags = 0;
        const Result scanned = numbers.ScanNumber(cursor, &exponent, &flags, commonSigns);
        if (scanned.Ok()) {
            *token++ = {nullptr, exponent, flags};
            cursor += scanned.length;
            // A number is only the exponent behind a caret.
            if (last != Last::Caret) return leave();
            const int power = CaretPower(exponent, flags);
            if (power == 0 || !raise(power)) return leave();
            last = Last::Power;
            continue;
        }
        std::size_t matched = 0;
        const IParseSymbol* symbol = FindKey(cursor, fence, matched, readers, everyday, false, us);
        if (symbol == nullptr) return leave();
        // Only units have everyday meanings, and a meaning is a unit again:
        // the kind is the catalogue symbol's.
        const ParseKind kind = symbol->Kind();
        token++->symbol = symbol;
        cursor += matched;
        if (kind == ParseKind::Space) {
            // A blank stays one only between two operands.
            blank = last == Last::Operand;
            continue;
        }
        const bool product = blank;
        blank = false;
        const UnitConverter* letterUnit = nullptr;
        switch (kind) {
            case ParseKind::North:
            case ParseKind::South:
            case ParseKind::West:
            case ParseKind::D:
                // For anything but an angle, the letters of a bearing and
                // "d" are the newton, the siemens, the watt and the day. The
                // letter becomes its unit before the blank in front of it is
                // looked at, so that blank is no product.
                if (SameDimensions(dimensions, Dimensions{}) || product) return leave();
                letterUnit = &LetterUnit(kind);
                [[fallthrough]];
            case ParseKind::Operand: {
                const UnitConverter& converter =
                    letterUnit != nullptr ? *letterUnit : symbol->AsOperand()->GetConverter();
                if (last == Last::Nothing) {
                    first = &converter;
                } else if (last == Last::Operator || product) {
                    if (!apply()) return leave();
                    quotient = quotient && !product;
                    right = {converter.GetDimensions(), converter.GetFactor()};
                    pending = true;
                    rightRaised = false;
                } else {
                    return leave();
                }
                last = Last::Operand;
                break;
            }
            case ParseKind::Multiplication:
            case ParseKind::Division:
                if (last != Last::Operand && last != Last::Power) return leave();
                if (!apply()) return leave();
                quotient = kind == ParseKind::Division;
                last = Last::Operator;
                break;
            case ParseKind::Square:
            case ParseKind::Cubic:
                if (last != Last::Operand && last != Last::Power) return leave();
                if (!raise(kind == ParseKind::Square ? 2 : 3)) return leave();
                last = Last::Power;
                break;
            case ParseKind::Caret:
                if (last != Last::Operand && last != Last::Power) return leave();
                last = Last::Caret;
                break;
            default:
                return leave();
        }
    }
    if (last != Last::Operand && last != Last::Power) return leave();
    if (!apply()) return leave();
    const Dimensions& exponents = first != nullptr ? first->GetDimensions() : left.exponents;
    if (!SameDimensions(exponents, dimensions)) return leave();
    if (first != nullptr)
        return first->DirectToBase(number, value, dimensions) == ErrorCode::Success;
    value = number * left.factor;
    return true;
}

ErrorCode FormatterImpl::Scan(const char16_t* text, const char16_t* cursor, const char16_t* fence,
                              SymbolList& list, const EverydayVocabulary* everyday, bool forms,
                              ScanTrace* trace) const {
    auto note = [&](std::size_t length, const IParseSymbol* symbol) {
        if (trace != nullptr) {
            trace->tokens.push_back({static_cast<std::size_t>(cursor - text), length, symbol});
        }
    };
    const bool us = localeId == kEnglish;
    const IParseSymbol* const* readers = ReadersOf(everyday, us);
    // Every place holds a number or a key of the dictionary: numbers first.
    while (*cursor != 0) {
        double number = 0.0;
        std::uint32_t flags = 0;
        const Result scanned = numbers.ScanNumber(cursor, &number, &flags, everyday != nullptr);
        if (scanned.Ok()) {
            list.PushBackNew<NumberSymbol>(number, flags);
            note(scanned.length, nullptr);
            cursor += scanned.length;
            continue;
        }
        if (forms) {
            // "6½″" reads as "6 1/2″".
            if (const auto* fraction = EverydayVocabulary::FindFraction(*cursor)) {
                const EverydayVocabulary::Operators& marks = everyday->Marks();
                if (!list.empty() && list.end().previous().symbol()->AsNumber() != nullptr) {
                    list.PushBack(marks.space);
                }
                list.PushBackNew<NumberSymbol>(fraction->numerator, NumberFlags::IntegerDigits);
                list.PushBack(marks.division);
                list.PushBackNew<NumberSymbol>(fraction->denominator, NumberFlags::IntegerDigits);
                note(1, nullptr);
                ++cursor;
                continue;
            }
        }
        std::size_t matched = 0;
        const IParseSymbol* symbol = FindKey(cursor, fence, matched, readers, everyday, forms, us);
        if (symbol == nullptr) {
            if (trace != nullptr) trace->failedAt = static_cast<std::size_t>(cursor - text);
            return ErrorCode::ParseFailure;
        }
        list.PushBack(symbol);
        note(matched, symbol);
        cursor += matched;
    }
    return ErrorCode::Success;
}

}  // namespace Mensura
