// The maths wrappers and the exported tolerance of the dimensionless quantity.
#include <cmath>

#include "mensura/mensura.hpp"

namespace Mensura {

template <>
double Quantity<0, 0, 0, 0, 0, 0, 0>::s_tolerance = 0.0;

namespace Detail {

double _fabs(double value) {
    return std::fabs(value);
}
double _sqrt(double value) {
    return std::sqrt(value);
}
double _sin(double value) {
    return std::sin(value);
}
double _cos(double value) {
    return std::cos(value);
}
double _tan(double value) {
    return std::tan(value);
}
double _pow(double base, double exponent) {
    return std::pow(base, exponent);
}
bool _isNaN(double value) {
    return std::isnan(value);
}
bool _isFinite(double value) {
    return std::isfinite(value);
}

}  // namespace Detail
}  // namespace Mensura
