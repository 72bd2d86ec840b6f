// The Formatter class: a handle on its shared state.
#include <string>

#include <limits>

#include "api/formatter_impl.h"
#include "catalogue/everyday.h"
#include "catalogue/unit_catalog.h"
#include "mensura/mensura.hpp"
#include "notations/format_symbol.h"

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
    m_impl->numbers.GetNativeDigits(digits);
}

ErrorCode Formatter::SetNativeDigits(const char16_t* const digits) {
    return m_impl->numbers.SetNativeDigits(digits);
}

void Formatter::GetNegativeSign(char16_t* buffer, size_t size) const {
    m_impl->numbers.GetNegativeSign(buffer, size);
}

void Formatter::SetNegativeSign(const char16_t* text) {
    m_impl->numbers.SetNegativeSign(text);
}

void Formatter::GetPositiveSign(char16_t* buffer, size_t size) const {
    m_impl->numbers.GetPositiveSign(buffer, size);
}

void Formatter::SetPositiveSign(const char16_t* text) {
    m_impl->numbers.SetPositiveSign(text);
}

int Formatter::GetNumberDecimalDigits() const {
    return m_impl->numbers.GetNumberDecimalDigits();
}

ErrorCode Formatter::SetNumberDecimalDigits(int digits) {
    return m_impl->numbers.SetNumberDecimalDigits(digits);
}

void Formatter::GetNumberDecimalSeparator(char16_t* buffer, size_t size) const {
    m_impl->numbers.GetNumberDecimalSeparator(buffer, size);
}

ErrorCode Formatter::SetNumberDecimalSeparator(const char16_t* text) {
    return m_impl->numbers.SetNumberDecimalSeparator(text);
}

void Formatter::GetNumberGroupSeparator(char16_t* buffer, size_t size) const {
    m_impl->numbers.GetNumberGroupSeparator(buffer, size);
}

ErrorCode Formatter::SetNumberGroupSeparator(const char16_t* text) {
    return m_impl->numbers.SetNumberGroupSeparator(text);
}

size_t Formatter::GetNumberGroupSizes(int* const sizes) const {
    return m_impl->numbers.GetNumberGroupSizes(sizes);
}

ErrorCode Formatter::SetNumberGroupSizes(const int* const sizes, int count) {
    return m_impl->numbers.SetNumberGroupSizes(sizes, count);
}

NumberFormat Formatter::GetNumber() const {
    return m_impl->numbers.GetNumber();
}

void Formatter::SetNumber(NumberFormat format) {
    m_impl->numbers.SetNumber(format);
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

void Formatter::SetEverydayReading(bool on) {
    m_impl->SetEverydayReading(on);
}

bool Formatter::GetEverydayReading() const {
    return m_impl->GetEverydayReading();
}

ParseReport Formatter::ExplainParse(const char16_t* text, int unit) const {
    return m_impl->Explain(text, unit);
}

size_t Formatter::ParseMany(const char16_t* texts, size_t count, int unit, double* values,
                            ErrorCode* codes) const {
    if (texts == nullptr || values == nullptr) return 0;
    size_t read = 0;
    const char16_t* text = texts;
    for (size_t i = 0; i < count; ++i) {
        double value = std::numeric_limits<double>::quiet_NaN();
        const ErrorCode code = m_impl->ParseInUnit(text, value, unit);
        if (code == ErrorCode::Success) ++read;
        values[i] = value;
        if (codes != nullptr) codes[i] = code;
        while (*text != 0) ++text;
        ++text;
    }
    return read;
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
    return m_impl->SetSymbolString(SymbolStrings::Use::Formatting, symbol, text);
}

ErrorCode Formatter::SetSymbolParsingString(int symbol, const char16_t* text) {
    return m_impl->SetSymbolString(SymbolStrings::Use::Parsing, symbol, text);
}

ErrorCode Formatter::GetSymbolFormattingString(int symbol, char16_t* buffer, size_t size) const {
    return m_impl->GetSymbolString(SymbolStrings::Use::Formatting, symbol, buffer, size);
}

ErrorCode Formatter::GetSymbolParsingString(int symbol, char16_t* buffer, size_t size) const {
    return m_impl->GetSymbolString(SymbolStrings::Use::Parsing, symbol, buffer, size);
}

size_t Formatter::GetUnitSymbols(int id, int* const ids) {
    return UnitCatalog::Instance().ListUnitSymbols(id, ids);
}

size_t Formatter::CopyUnitSymbols(int id, int* const ids, size_t capacity) {
    return UnitCatalog::Instance().CopyUnitSymbols(id, ids, capacity);
}

ErrorCode Formatter::GetDisplayName(int id, char16_t* buffer, size_t size) const {
    return UnitCatalog::Instance().CopyDisplayName(id, buffer, size, m_impl->GetLanguageIndex());
}

ErrorCode Formatter::FindUnit(const char16_t* text, int& unit) {
    if (text == nullptr) return ErrorCode::Failure;
    std::size_t matched = 0;
    const IParseSymbol* symbol = UnitCatalog::Instance().Dictionary().FindLongest(text, &matched);
    // The key must be the whole text, not only a beginning of it.
    if (symbol == nullptr || matched != std::char_traits<char16_t>::length(text)) {
        return ErrorCode::Failure;
    }
    // Only unit symbols name a unit; operators and marks hold keys too.
    const int found = UnitOfKey(symbol);
    if (found == 0) return ErrorCode::Failure;
    unit = found & static_cast<int>(UnitId::UnitMask);
    return ErrorCode::Success;
}

}  // namespace Mensura
