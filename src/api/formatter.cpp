// The Formatter class and the flat functions of its life and number settings.
#include <cstdint>
#include <limits>

#include "api/c_boundary.h"
#include "api/formatter_impl.h"
#include "mensura/mensura.hpp"
#include "units/unit_catalog.h"

namespace Mensura {

Formatter::Formatter() : Formatter(FormatterImpl::kEnglish) {}

Formatter::Formatter(int locale) : m_impl(new FormatterImpl(locale)) {
    m_impl->AddHandle();
}

Formatter::Formatter(const Formatter& other) : m_impl(other.m_impl) {
    m_impl->AddHandle();
}

Formatter& Formatter::operator=(const Formatter& other) {
    other.m_impl->AddHandle();  // first, so that assigning a formatter to itself keeps the state
    if (m_impl->DropHandle()) delete m_impl;
    m_impl = other.m_impl;
    return *this;
}

Formatter::~Formatter() {
    if (m_impl->DropHandle()) delete m_impl;
}

void Formatter::GetNativeDigits(char16_t* const digits) const {
    m_impl->GetNativeDigits(digits);
}

ErrorCode Formatter::SetNativeDigits(const char16_t* const digits) {
    return m_impl->SetNativeDigits(digits);
}

void Formatter::GetNegativeSign(char16_t* buffer, size_t size) const {
    m_impl->GetNegativeSign(buffer, size);
}

void Formatter::SetNegativeSign(const char16_t* text) {
    m_impl->SetNegativeSign(text);
}

void Formatter::GetPositiveSign(char16_t* buffer, size_t size) const {
    m_impl->GetPositiveSign(buffer, size);
}

void Formatter::SetPositiveSign(const char16_t* text) {
    m_impl->SetPositiveSign(text);
}

int Formatter::GetNumberDecimalDigits() const {
    return m_impl->GetNumberDecimalDigits();
}

ErrorCode Formatter::SetNumberDecimalDigits(int digits) {
    return m_impl->SetNumberDecimalDigits(digits);
}

void Formatter::GetNumberDecimalSeparator(char16_t* buffer, size_t size) const {
    m_impl->GetNumberDecimalSeparator(buffer, size);
}

ErrorCode Formatter::SetNumberDecimalSeparator(const char16_t* text) {
    return m_impl->SetNumberDecimalSeparator(text);
}

void Formatter::GetNumberGroupSeparator(char16_t* buffer, size_t size) const {
    m_impl->GetNumberGroupSeparator(buffer, size);
}

ErrorCode Formatter::SetNumberGroupSeparator(const char16_t* text) {
    return m_impl->SetNumberGroupSeparator(text);
}

size_t Formatter::GetNumberGroupSizes(int* const sizes) const {
    return m_impl->GetNumberGroupSizes(sizes);
}

ErrorCode Formatter::SetNumberGroupSizes(const int* const sizes, int count) {
    return m_impl->SetNumberGroupSizes(sizes, count);
}

NumberFormat Formatter::GetNumber() const {
    return m_impl->GetNumber();
}

void Formatter::SetNumber(NumberFormat format) {
    m_impl->SetNumber(format);
}

int Formatter::GetLocaleId() const {
    return m_impl->GetLocaleId();
}

ErrorCode Formatter::Format(double value, int unit, char16_t* buffer, size_t size, int symbol,
                            double* converted) const {
    return m_impl->Format(value, unit, buffer, size, symbol, converted);
}

ErrorCode Formatter::Format(double value, const int (&dimensions)[7], char16_t* buffer, size_t size,
                            int symbol, double* converted) const {
    Dimensions dims;
    for (std::size_t i = 0; i < dims.size(); ++i) dims[i] = dimensions[i];
    return m_impl->Format(value, dims, buffer, size, symbol, converted);
}

ErrorCode Formatter::Parse(const char16_t* text, double& value, int unit) const {
    return m_impl->ParseInUnit(text, value, unit);
}

ErrorCode Formatter::Parse(const char16_t* text, double& value, const int (&dimensions)[7],
                           int group) const {
    Dimensions dims;
    for (std::size_t i = 0; i < dims.size(); ++i) dims[i] = dimensions[i];
    return m_impl->ParseToBase(text, value, dims, group);
}

int Formatter::GetDefaultSymbol(int id) const {
    return m_impl->GetDefaultSymbol(id);
}

ErrorCode Formatter::SetDefaultSymbol(int id) {
    return m_impl->SetDefaultSymbol(id);
}

int Formatter::GetDefaultUnit(int id) const {
    return m_impl->GetDefaultUnit(id);
}

ErrorCode Formatter::SetDefaultUnit(int id) {
    return m_impl->SetDefaultUnit(id);
}

ErrorCode Formatter::SetSymbolFormattingString(int symbol, const char16_t* text) {
    return m_impl->SetSymbolFormattingString(symbol, text);
}

ErrorCode Formatter::SetSymbolParsingString(int symbol, const char16_t* text) {
    return m_impl->SetSymbolParsingString(symbol, text);
}

ErrorCode Formatter::GetSymbolFormattingString(int symbol, char16_t* buffer, size_t size) const {
    return m_impl->GetSymbolFormattingString(symbol, buffer, size);
}

ErrorCode Formatter::GetSymbolParsingString(int symbol, char16_t* buffer, size_t size) const {
    return m_impl->GetSymbolParsingString(symbol, buffer, size);
}

size_t Formatter::GetUnitSymbols(int id, int* const ids) {
    return UnitCatalog::Instance().ListUnitSymbols(id, ids);
}

ErrorCode Formatter::GetDisplayName(int id, char16_t* buffer, size_t size) const {
    return UnitCatalog::Instance().CopyDisplayName(id, buffer, size, m_impl->GetLanguageIndex());
}

}  // namespace Mensura

using Mensura::ErrorCode;
using Mensura::Formatter;
using Mensura::NumberFormat;

namespace {

// Selectors of FormatterNumberSetting.
enum NumberSetting : int {
    GetNativeDigits = 0,
    SetNativeDigits = 1,
    SetNativeDigitsToo = 2,
    GetNegativeSign = 3,
    SetNegativeSign = 4,
    GetDecimalDigits = 5,
    SetDecimalDigits = 6,
    GetDecimalSeparator = 7,
    SetDecimalSeparator = 8,
    GetNumber = 9,
    SetNumber = 10,
    GetGroupSeparator = 11,
    SetGroupSeparator = 12,
    GetGroupSizes = 13,
    SetGroupSizes = 14,
    GetPositiveSign = 15,
    SetPositiveSign = 16,
};

// Selectors of FormatterSymbolStringSetting.
enum SymbolStringSetting : int {
    GetFormattingString = 1,
    SetFormattingString = 2,
    GetParsingString = 3,
    SetParsingString = 4,
};

int Result(ErrorCode code) {
    return static_cast<int>(code);
}

int ApplyNumberSetting(MensuraFormatter* formatter, int selector, void* data, size_t size);
int ApplySymbolStringSetting(MensuraFormatter* formatter, int selector, int symbol,
                             MensuraChar16* data, size_t size);

}  // namespace

extern "C" {

MensuraFormatter* CreateFormatter(int locale) {
    try {
        return new Formatter(locale);
    } catch (...) {
        return nullptr;  // out of memory
    }
}

void DestroyFormatter(MensuraFormatter* formatter) {
    delete formatter;
}

int Parse(MensuraFormatter* formatter, const MensuraChar16* text, double* value, int unit) {
    if (formatter == nullptr || text == nullptr || value == nullptr) {
        return Result(ErrorCode::Failure);
    }
    return Mensura::CallFromC([&] { return Result(formatter->Parse(text, *value, unit)); });
}

int Format(MensuraFormatter* formatter, double value, int unit, MensuraChar16* buffer, size_t size,
           int symbol, double* converted) {
    if (formatter == nullptr || buffer == nullptr || converted == nullptr) {
        return Result(ErrorCode::Failure);
    }
    return Mensura::CallFromC(
        [&] { return Result(formatter->Format(value, unit, buffer, size, symbol, converted)); });
}

int FormatterNumberSetting(MensuraFormatter* formatter, int selector, void* data, size_t size) {
    return Mensura::CallFromC([&] { return ApplyNumberSetting(formatter, selector, data, size); });
}

int FormatterSymbolStringSetting(MensuraFormatter* formatter, int selector, int symbol,
                                 MensuraChar16* data, size_t size) {
    return Mensura::CallFromC(
        [&] { return ApplySymbolStringSetting(formatter, selector, symbol, data, size); });
}

}  // extern "C"

namespace {

int ApplyNumberSetting(MensuraFormatter* formatter, int selector, void* data, size_t size) {
    if (formatter == nullptr || data == nullptr) return Result(ErrorCode::Failure);
    auto* const text = static_cast<char16_t*>(data);
    auto* const number = static_cast<std::int32_t*>(data);
    switch (selector) {
        case GetNativeDigits:
            formatter->GetNativeDigits(text);
            return Result(ErrorCode::Success);
        case SetNativeDigits:
        case SetNativeDigitsToo:
            return Result(formatter->SetNativeDigits(text));
        case GetNegativeSign:
            formatter->GetNegativeSign(text, size);
            return Result(ErrorCode::Success);
        case SetNegativeSign:
            formatter->SetNegativeSign(text);
            return Result(ErrorCode::Success);
        case GetDecimalDigits:
            *number = formatter->GetNumberDecimalDigits();
            return Result(ErrorCode::Success);
        case SetDecimalDigits:
            return Result(formatter->SetNumberDecimalDigits(*number));
        case GetDecimalSeparator:
            formatter->GetNumberDecimalSeparator(text, size);
            return Result(ErrorCode::Success);
        case SetDecimalSeparator:
            return Result(formatter->SetNumberDecimalSeparator(text));
        case GetNumber:
            *number = static_cast<std::int32_t>(formatter->GetNumber());
            return Result(ErrorCode::Success);
        case SetNumber:
            formatter->SetNumber(static_cast<NumberFormat>(*number));
            return Result(ErrorCode::Success);
        case GetGroupSeparator:
            formatter->GetNumberGroupSeparator(text, size);
            return Result(ErrorCode::Success);
        case SetGroupSeparator:
            return Result(formatter->SetNumberGroupSeparator(text));
        case GetGroupSizes:
            // size 0 asks for the count; any other size receives all the sizes.
            if (size == 0) {
                *static_cast<std::uint64_t*>(data) = formatter->GetNumberGroupSizes(nullptr);
            } else {
                formatter->GetNumberGroupSizes(number);
            }
            return Result(ErrorCode::Success);
        case SetGroupSizes:
            if (size > static_cast<size_t>(std::numeric_limits<int>::max())) {
                return Result(ErrorCode::Failure);
            }
            return Result(formatter->SetNumberGroupSizes(number, static_cast<int>(size)));
        case GetPositiveSign:
            formatter->GetPositiveSign(text, size);
            return Result(ErrorCode::Success);
        case SetPositiveSign:
            formatter->SetPositiveSign(text);
            return Result(ErrorCode::Success);
    }
    return Result(ErrorCode::Failure);
}

int ApplySymbolStringSetting(MensuraFormatter* formatter, int selector, int symbol,
                             MensuraChar16* data, size_t size) {
    if (formatter == nullptr || data == nullptr) return Result(ErrorCode::Failure);
    switch (selector) {
        case GetFormattingString:
            return Result(formatter->GetSymbolFormattingString(symbol, data, size));
        case SetFormattingString:
            return Result(formatter->SetSymbolFormattingString(symbol, data));
        case GetParsingString:
            return Result(formatter->GetSymbolParsingString(symbol, data, size));
        case SetParsingString:
            return Result(formatter->SetSymbolParsingString(symbol, data));
    }
    return Result(ErrorCode::Failure);
}

}  // namespace
