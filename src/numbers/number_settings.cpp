// The number settings, and the table of number tokens kept in step with them.
#include "numbers/number_settings.h"

#include <algorithm>

namespace Mensura {

namespace {

constexpr int kMaxDecimalDigits = 99;
constexpr int kMaxGroupSize = 9;

// Copies as much of text as fits and always leaves a terminator in buffer.
void CopyTruncated(const std::u16string& text, char16_t* buffer, std::size_t size) {
    if (size == 0) return;
    const std::size_t n = std::min(size, text.size());
    std::copy_n(text.data(), n, buffer);
    buffer[n < size ? n : n - 1] = 0;
}

}  // namespace

NumberSettings::NumberSettings()
    : nativeDigits{u'0', u'1', u'2', u'3', u'4', u'5', u'6', u'7', u'8', u'9'},
      negativeSign(u"-"),
      groupSeparator(u","),
      decimalSeparator(u"."),
      groupSizes{3} {
    for (int d = 0; d < 10; ++d) {
        const char16_t digit[] = {nativeDigits[d], 0};
        numberTokens.InsertOrAssign(digit, NumberToken::Digit(d));
    }
    numberTokens.InsertOrAssign(u"e", NumberToken::Exponent);
    numberTokens.InsertOrAssign(u"E", NumberToken::Exponent);
    numberTokens.InsertOrAssign(positiveSign.c_str(), NumberToken::PositiveSign);
    numberTokens.InsertOrAssign(negativeSign.c_str(), NumberToken::NegativeSign);
    numberTokens.InsertOrAssign(groupSeparator.c_str(), NumberToken::GroupSeparator);
    numberTokens.InsertOrAssign(decimalSeparator.c_str(), NumberToken::DecimalSeparator);
    IndexTokens();
    NoteDigitsAlone();
}

NumberTokenTree NumberSettings::TokensWithout(const char16_t* const* texts,
                                              std::size_t count) const {
    // Built anew, the table also leaves behind the room that erasing would
    // leave unused: a caller that switches settings back and forth must not
    // make it grow.
    NumberTokenTree tokens;
    for (const auto& [key, code] : numberTokens.Keys()) {
        if (std::none_of(texts, texts + count,
                         [&key = key](const char16_t* text) { return key == text; })) {
            tokens.InsertOrAssign(key.c_str(), code);
        }
    }
    return tokens;
}

void NumberSettings::ReplaceToken(std::u16string& setting, const char16_t* text, int code) {
    // Everything that allocates comes first, on copies; the commit below
    // cannot fail, so that a setter that runs out of memory changes nothing.
    std::u16string replacement(text);
    const char16_t* old = setting.c_str();
    NumberTokenTree tokens = TokensWithout(&old, 1);
    tokens.InsertOrAssign(replacement.c_str(), code);
    setting.swap(replacement);
    numberTokens = std::move(tokens);
    IndexTokens();
}

void NumberSettings::IndexTokens() {
    emptyToken = numberTokens.FindLongest(u"", nullptr);
    asciiTokens.fill(kNoToken);
    otherTokenStarts = false;
    auto note = [this](const char16_t* text) {
        const char16_t unit = text[0];
        if (unit == 0) return;
        if (unit >= 128) {
            otherTokenStarts = true;
        } else if (text[1] != 0) {
            asciiTokens[unit] = kLongerToken;
        } else if (asciiTokens[unit] != kLongerToken) {
            const char16_t alone[] = {unit, 0};
            asciiTokens[unit] = static_cast<std::int8_t>(numberTokens.FindLongest(alone, nullptr));
        }
    };
    for (char16_t digit : nativeDigits) {
        const char16_t text[] = {digit, 0};
        note(text);
    }
    note(u"e");
    note(u"E");
    for (const std::u16string* text :
         {&positiveSign, &negativeSign, &groupSeparator, &decimalSeparator}) {
        note(text->c_str());
    }
    for (std::size_t unit = 0; unit < asciiTokens.size(); ++unit) {
        const std::int8_t code = asciiTokens[unit];
        const bool starts = code != NumberToken::Exponent && code != NumberToken::GroupSeparator;
        asciiStarts[unit] = starts ? code : kNoToken;
    }
}

void NumberSettings::GetNativeDigits(char16_t* digits) const {
    std::copy(nativeDigits.begin(), nativeDigits.end(), digits);
}

ErrorCode NumberSettings::SetNativeDigits(const char16_t* digits) {
    if (digits == nullptr) return ErrorCode::Failure;
    std::array<char16_t, 10> sorted;
    std::copy_n(digits, sorted.size(), sorted.begin());
    std::sort(sorted.begin(), sorted.end());
    if (std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end()) {
        return ErrorCode::Failure;
    }
    // The new table first, as ReplaceToken builds it.
    char16_t oldDigits[10][2] = {};
    const char16_t* erased[10];
    for (int d = 0; d < 10; ++d) {
        oldDigits[d][0] = nativeDigits[d];
        erased[d] = oldDigits[d];
    }
    NumberTokenTree tokens = TokensWithout(erased, 10);
    for (int d = 0; d < 10; ++d) {
        const char16_t digit[] = {digits[d], 0};
        tokens.InsertOrAssign(digit, NumberToken::Digit(d));
    }
    std::copy_n(digits, nativeDigits.size(), nativeDigits.begin());
    numberTokens = std::move(tokens);
    IndexTokens();
    return ErrorCode::Success;
}

void NumberSettings::GetPositiveSign(char16_t* buffer, std::size_t size) const {
    CopyTruncated(positiveSign, buffer, size);
}

void NumberSettings::GetNegativeSign(char16_t* buffer, std::size_t size) const {
    CopyTruncated(negativeSign, buffer, size);
}

void NumberSettings::GetNumberGroupSeparator(char16_t* buffer, std::size_t size) const {
    CopyTruncated(groupSeparator, buffer, size);
}

void NumberSettings::GetNumberDecimalSeparator(char16_t* buffer, std::size_t size) const {
    CopyTruncated(decimalSeparator, buffer, size);
}

void NumberSettings::SetPositiveSign(const char16_t* text) {
    if (text != nullptr) ReplaceToken(positiveSign, text, NumberToken::PositiveSign);
}

void NumberSettings::SetNegativeSign(const char16_t* text) {
    if (text != nullptr) ReplaceToken(negativeSign, text, NumberToken::NegativeSign);
}

ErrorCode NumberSettings::SetNumberGroupSeparator(const char16_t* text) {
    if (text == nullptr || *text == 0) return ErrorCode::Failure;
    ReplaceToken(groupSeparator, text, NumberToken::GroupSeparator);
    return ErrorCode::Success;
}

ErrorCode NumberSettings::SetNumberDecimalSeparator(const char16_t* text) {
    if (text == nullptr || *text == 0) return ErrorCode::Failure;
    ReplaceToken(decimalSeparator, text, NumberToken::DecimalSeparator);
    return ErrorCode::Success;
}

ErrorCode NumberSettings::SetNumberDecimalDigits(int digits) {
    if (digits < 0 || digits > kMaxDecimalDigits) return ErrorCode::Failure;
    decimalDigits = digits;
    return ErrorCode::Success;
}

std::size_t NumberSettings::GetNumberGroupSizes(int* sizes) const {
    if (sizes != nullptr) std::copy(groupSizes.begin(), groupSizes.end(), sizes);
    return groupSizes.size();
}

ErrorCode NumberSettings::SetNumberGroupSizes(const int* sizes, int count) {
    if (sizes == nullptr || count < 1) return ErrorCode::Failure;
    for (int i = 0; i < count; ++i) {
        const int lowest = i + 1 < count ? 1 : 0;
        if (sizes[i] < lowest || sizes[i] > kMaxGroupSize) return ErrorCode::Failure;
    }
    std::vector<int> copy(sizes, sizes + count);
    groupSizes.swap(copy);
    NoteDigitsAlone();
    return ErrorCode::Success;
}

}  // namespace Mensura
