// Converters: how a value in one unit becomes a value in the base unit of its
// dimensions, and back.
#ifndef MENSURA_UNITS_UNIT_CONVERTER_H
#define MENSURA_UNITS_UNIT_CONVERTER_H

#include "base/dimensions.h"
#include "mensura/mensura.hpp"

namespace Mensura {

// The operations are virtual, in this order: FromBase, ConvertTo, ToBase,
// FactorTo, Clone, then the destructor.
class UnitConverter {
public:
    // value is in base units of `dimensions`; writes it in this unit. Returns
    // UnitMismatch, with out left alone, when the dimensions are not this
    // unit's own.
    virtual ErrorCode FromBase(double value, const Dimensions& dimensions, double& out) const = 0;
    // Converts value in this unit into `target`. out holds the base value
    // even when the target refuses the dimensions.
    virtual ErrorCode ConvertTo(double value, double& out, const UnitConverter& target) const = 0;
    // Writes value, in this unit, in base units; refuses other dimensions.
    virtual ErrorCode ToBase(double value, double& out, const Dimensions& dimensions) const = 0;
    // The pure ratio of this unit to `other`; Failure where none exists.
    virtual ErrorCode FactorTo(const UnitConverter& other, double& out) const = 0;
    virtual UnitConverter* Clone() const = 0;
    virtual ~UnitConverter() = default;

    // What FromBase and ToBase do, for both classes, without a call: a parse
    // and a rendering go in and out of base at nearly every step.
    ErrorCode DirectFromBase(double value, const Dimensions& dims, double& out) const;
    ErrorCode DirectToBase(double value, double& out, const Dimensions& dims) const;
    // What ConvertTo does, for both classes, without a call; between two
    // units of the table their keys stand in for the seven exponents.
    ErrorCode DirectConvertTo(double value, double& out, const UnitConverter& target) const;

    // Names the unit's exponents by a number that every unit of the table
    // with the same exponents shares and no other has; 0, the default, names
    // nothing, and the exponents are then compared one by one. Set while the
    // table is built, before any reader sees it.
    void SetDimensionKey(std::uint32_t key) { dimensionKey = key; }

    const Dimensions& GetDimensions() const { return dimensions; }
    // The size of one unit in base units, whatever the class.
    double GetFactor() const { return factor; }
    // Whether the unit is a scale with an offset (a LinearConverter).
    bool HasOffset() const { return hasOffset; }

protected:
    // A value of this unit in base units, and back: the arithmetic of every
    // way in and out, with the exponents checked by the caller.
    double IntoBase(double value) const {
        return __builtin_expect(hasOffset, 0) ? value * factor + offset : value * factor;
    }
    double OutOfBase(double value) const {
        return __builtin_expect(hasOffset, 0) ? (value - offset) / factor : value / factor;
    }

    UnitConverter(const Dimensions& dims, double scale) : dimensions(dims), factor(scale) {}
    UnitConverter(const Dimensions& dims, double scale, double zero)
        : dimensions(dims), factor(scale), offset(zero), hasOffset(true) {}
    UnitConverter(const UnitConverter&) = default;
    UnitConverter& operator=(const UnitConverter&) = default;

    Dimensions dimensions;
    double factor;
    // The offset lives here rather than in LinearConverter, so that the
    // direct paths read it without casting to a class the object may not be.
    double offset = 0.0;
    bool hasOffset = false;  // the object is a LinearConverter
    std::uint32_t dimensionKey = 0;
};

// A pure scale: one unit is `factor` base units.
class GenericConverter final : public UnitConverter {
public:
    // A dimensionless scale.
    explicit GenericConverter(double scale) : UnitConverter(Dimensions{}, scale) {}
    // A scale with the given exponents.
    GenericConverter(const Dimensions& dims, double scale) : UnitConverter(dims, scale) {}
    GenericConverter(const GenericConverter&) = default;
    GenericConverter& operator=(const GenericConverter&) = default;
    template <int L, int M, int T, int I, int Theta, int N, int J>
    explicit GenericConverter(Quantity<L, M, T, I, Theta, N, J> quantity)
        : UnitConverter(Dimensions{L, M, T, I, Theta, N, J}, quantity.Value()) {}
    // a times b, or with `quotient` a divided by b: exponents add or
    // subtract, factors multiply or divide, and an offset plays no part. False,
    // and `out` untouched, when an exponent leaves the range of its type.
    static bool Combine(const UnitConverter& a, const UnitConverter& b, bool quotient,
                        GenericConverter& out) {
        Dimensions exponents;
        if (!CombineDimensions(a.GetDimensions(), b.GetDimensions(), quotient, exponents))
            return false;
        out = GenericConverter(
            exponents, quotient ? a.GetFactor() / b.GetFactor() : a.GetFactor() * b.GetFactor());
        return true;
    }

    ErrorCode FromBase(double value, const Dimensions& dims, double& out) const override {
        return DirectFromBase(value, dims, out);
    }
    ErrorCode ConvertTo(double value, double& out, const UnitConverter& target) const override {
        return DirectConvertTo(value, out, target);
    }
    ErrorCode ToBase(double value, double& out, const Dimensions& dims) const override {
        return DirectToBase(value, out, dims);
    }
    ErrorCode FactorTo(const UnitConverter& other, double& out) const override;
    UnitConverter* Clone() const override { return new GenericConverter(*this); }
};

// A scale with an offset: v in the unit is v * factor + offset in base units.
// Only temperature scales are built this way.
class LinearConverter final : public UnitConverter {
public:
    LinearConverter(Quantity<0, 0, 0, 0, 1, 0, 0> scale, Quantity<0, 0, 0, 0, 1, 0, 0> offset)
        : UnitConverter(Dimensions{0, 0, 0, 0, 1, 0, 0}, scale.Value(), offset.Value()) {}
    LinearConverter(const LinearConverter&) = default;

    ErrorCode FromBase(double value, const Dimensions& dims, double& out) const override {
        return DirectFromBase(value, dims, out);
    }
    ErrorCode ConvertTo(double value, double& out, const UnitConverter& target) const override {
        return DirectConvertTo(value, out, target);
    }
    ErrorCode ToBase(double value, double& out, const Dimensions& dims) const override {
        return DirectToBase(value, out, dims);
    }
    ErrorCode FactorTo(const UnitConverter& other, double& out) const override;
    UnitConverter* Clone() const override { return new LinearConverter(*this); }

    double GetOffset() const { return offset; }
};

inline ErrorCode UnitConverter::DirectFromBase(double value, const Dimensions& dims,
                                               double& out) const {
    if (!SameDimensions(dims, dimensions)) return ErrorCode::UnitMismatch;
    out = OutOfBase(value);
    return ErrorCode::Success;
}

inline ErrorCode UnitConverter::DirectToBase(double value, double& out,
                                             const Dimensions& dims) const {
    if (!SameDimensions(dims, dimensions)) return ErrorCode::UnitMismatch;
    out = IntoBase(value);
    return ErrorCode::Success;
}

inline ErrorCode UnitConverter::DirectConvertTo(double value, double& out,
                                                const UnitConverter& target) const {
    // Into base by this unit, which cannot refuse its own dimensions; the way
    // out of base holds the one check, and out keeps the base value when the
    // target refuses it.
    out = IntoBase(value);
    const bool same = (dimensionKey != 0 && dimensionKey == target.dimensionKey) ||
                      SameDimensions(dimensions, target.dimensions);
    if (!same) return ErrorCode::UnitMismatch;
    out = target.OutOfBase(out);
    return ErrorCode::Success;
}

}  // namespace Mensura

#endif  // MENSURA_UNITS_UNIT_CONVERTER_H
