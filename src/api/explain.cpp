// The parse report: a parse as Parse does it, then, only for the caller who
// asks, the work that finds why a text did not read and where.
#include <algorithm>
#include <string>

#include "api/formatter_impl.h"
#include "catalogue/everyday.h"
#include "catalogue/unit_catalog.h"
#include "grammar/parse_symbol.h"

namespace Mensura {

namespace {

constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

// The longest text, in 16-bit units, that the report reads again as each other
// kind of quantity. That search parses the text once a group, so beyond this
// a failed report would cost dozens of parses of a long text; nobody writes a
// quantity this long, and such a text is reported as making no single value.
constexpr std::size_t kLongestTextSearched = 1024;

// The characters that end a run of text: spaces, the operators and the marks
// of the notations. Letters and digits run on.
bool EndsRun(char16_t unit) {
    constexpr std::u16string_view kEnds =
        u" \t\u00A0\u2009\u202F\u3000/"
        u"·()（）^*⋅×²³°\u2032\u0027\u02B9\u2019\u02BC\u2018\u2033\u0022\u02BA\u201D\u201C"
        u"\u2010\u2012\u2013\u2014\u2015\u002D\u2043";
    return kEnds.find(unit) != std::u16string_view::npos;
}

bool IsUnit(const IParseSymbol* symbol) {
    return symbol != nullptr &&
           (symbol->Kind() == ParseKind::Operand || symbol->Kind() == ParseKind::Linear);
}

void Fill(ParseReport& report, const Dimensions& dimensions, int group) {
    std::copy(dimensions.begin(), dimensions.end(), report.dimensions);
    report.group = group;
}

}  // namespace

ParseReport FormatterImpl::Explain(const char16_t* text, int unit) const {
    ParseReport report;
    double value = 0.0;
    // Through the list, with the short ways off: what Parse gives must be
    // what the list makes of the text.
    ScanTrace longWay;
    report.code = ParseInUnit(text, value, unit, &longWay);
    const UnitTable& units = UnitTable::Instance();
    const UnitConverter* converter = units.FindConverter(unit);
    if (converter == nullptr) {
        report.reason = ParseReport::UnknownUnit;
        return report;
    }
    if (text == nullptr || *text == 0) {
        report.reason = ParseReport::EmptyText;
        return report;
    }
    const Dimensions& target = converter->GetDimensions();
    const int group = unit & static_cast<int>(UnitId::GroupMask);

    // The scan of the reading that decides: the everyday one takes more keys.
    ScanTrace trace;
    double ignored = 0.0;
    ReadText(text, ignored, target, group, everydayVocabulary, everydayVocabulary != nullptr,
             &trace);

    if (report.code == ErrorCode::Success) {
        report.reason = ParseReport::Read;
        report.value = value;
        Fill(report, target, group);
        // A symbol that the catalogue's reading took in a sense that a reader
        // may not mean.
        if (everydayVocabulary == nullptr) {
            const EverydayVocabulary& list = EverydayVocabulary::Instance();
            const bool us = localeId == kEnglish;
            for (const ScanTrace::Token& token : trace.tokens) {
                if (token.symbol != nullptr && list.Substitute(token.symbol, us) != token.symbol) {
                    report.note = true;
                    report.noteStart = token.start;
                    report.noteLength = token.length;
                    break;
                }
            }
        }
        return report;
    }

    // The first place where the text stops being numbers, keys and marks: a
    // place no key reads, or two units, or a unit and a number, run together
    // ("ftm", "km3"), which the grammar never reads.
    std::size_t culprit = trace.failedAt;
    std::size_t chainEnd = 0;  // where units and numbers run together, their end
    for (std::size_t i = 0; i + 1 < trace.tokens.size(); ++i) {
        const ScanTrace::Token& here = trace.tokens[i];
        if (here.start >= culprit) break;
        const auto glued = [&](std::size_t k) {
            const ScanTrace::Token& next = trace.tokens[k];
            const ScanTrace::Token& last = trace.tokens[k - 1];
            return next.start == last.start + last.length &&
                   (next.symbol == nullptr || IsUnit(next.symbol));
        };
        if (IsUnit(here.symbol) && glued(i + 1)) {
            culprit = here.start;
            std::size_t k = i + 1;
            while (k + 1 < trace.tokens.size() && glued(k + 1)) ++k;
            chainEnd = trace.tokens[k].start + trace.tokens[k].length;
            break;
        }
    }
    if (culprit != kNowhere) {
        std::size_t start = culprit;
        std::size_t end = std::max(culprit, chainEnd);
        if (EndsRun(text[culprit])) {
            // A space or mark that no key reads is its own span.
            end = culprit + 1;
        } else {
            // The whole run of letters and digits around that place, without
            // a number that leads it.
            while (start > 0 && !EndsRun(text[start - 1])) --start;
            while (text[end] != 0 && !EndsRun(text[end])) ++end;
            double number = 0.0;
            const Result leading =
                numbers.ScanNumber(text + start, &number, nullptr, everydayVocabulary != nullptr);
            if (leading.Ok() && start + leading.length <= culprit) start += leading.length;
        }
        report.reason = ParseReport::UnknownText;
        report.start = start;
        report.length = end - start;
        return report;
    }

    // A text that reads, only not as this kind of quantity: the first group
    // of other dimensions that takes it. Pure numbers come last, since angles
    // share their exponents: "5′6″" is first a length, "N 45°30′ E" an angle.
    const std::size_t count =
        std::char_traits<char16_t>::length(text) <= kLongestTextSearched ? units.GroupCount() : 0;
    for (std::size_t step = 0; step < count; ++step) {
        const int other = UnitId::Make(static_cast<int>(step + 1 < count ? step + 2 : 1), 0);
        const UnitConverter* first = units.FindConverter(other | 1);
        if (first == nullptr || SameDimensions(first->GetDimensions(), target)) continue;
        if (ParseToBase(text, ignored, first->GetDimensions(), other) == ErrorCode::Success) {
            report.reason = ParseReport::OtherQuantity;
            Fill(report, first->GetDimensions(), other);
            return report;
        }
    }
    report.reason = ParseReport::NoSingleValue;
    return report;
}

}  // namespace Mensura
