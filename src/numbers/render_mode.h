// The mode bits of FormatterImpl::RenderNumber, which turns one double into
// text by a formatter's number settings (frame/formatter_impl.h).
#ifndef MENSURA_FORMATTING_RENDER_NUMBER_H
#define MENSURA_FORMATTING_RENDER_NUMBER_H

namespace Mensura::RenderMode {

// Precision 0 in place of the formatter's decimal digits.
constexpr unsigned WholeNumber = 1u << 0;
// A value that is zero gets the negative sign in front. A caller that has
// split a negative value into parts uses it for a leading part of 0.
constexpr unsigned SignOnZero = 1u << 1;

}  // namespace Mensura::RenderMode

#endif  // MENSURA_FORMATTING_RENDER_NUMBER_H
