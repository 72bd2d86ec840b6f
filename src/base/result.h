// The one result of the library's inner operations that write or read text,
// beside a plain ErrorCode: the code, and with Success the length of what was
// written (its terminator not counted) or read. Operations that have no
// length to tell return an ErrorCode alone.
#ifndef MENSURA_BASE_RESULT_H
#define MENSURA_BASE_RESULT_H

#include <cstddef>

#include "mensura/mensura.hpp"

namespace Mensura {

struct Result {
    ErrorCode code;
    std::size_t length;  // 16-bit units; 0 unless code is Success

    bool Ok() const { return code == ErrorCode::Success; }

    static constexpr Result Done(std::size_t units) { return {ErrorCode::Success, units}; }
    static constexpr Result Fail(ErrorCode why = ErrorCode::Failure) { return {why, 0}; }
};

}  // namespace Mensura

#endif  // MENSURA_BASE_RESULT_H
