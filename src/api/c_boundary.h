// The flat functions are called from C, which no exception may reach. What
// can throw behind them is an allocation that fails: it ends at the boundary
// as Failure, after the library has put its state back.
#ifndef MENSURA_FRAME_C_BOUNDARY_H
#define MENSURA_FRAME_C_BOUNDARY_H

#include "mensura/mensura.hpp"

namespace Mensura {

template <typename Body>
int CallFromC(Body body) noexcept {
    try {
        return body();
    } catch (...) {
        return static_cast<int>(ErrorCode::Failure);
    }
}

}  // namespace Mensura

#endif  // MENSURA_FRAME_C_BOUNDARY_H
