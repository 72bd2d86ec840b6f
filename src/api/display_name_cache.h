// The language in which the flat GetDisplayName answers a locale id. Nothing
// is kept per locale id: the answer follows from the id alone, so a caller
// that passes any number of distinct ids costs no memory and takes no lock.
#ifndef MENSURA_API_DISPLAY_NAME_CACHE_H
#define MENSURA_API_DISPLAY_NAME_CACHE_H

#include "api/formatter_impl.h"

namespace Mensura {

// The catalogue's language index of `locale`, by the rule of the Formatter
// constructor: 2052 is Simplified Chinese (1); every other id, 0 and negative
// ones included, is English (0).
constexpr int DisplayLanguageOf(int locale) {
    return locale == FormatterImpl::kSimplifiedChinese ? 1 : 0;
}

// Once a cache of one formatter per locale id; it holds nothing now. Its
// instance is still defined with the other process-wide objects in
// library.cpp, and the class goes with that definition.
class DisplayNameCache {
private:
    static DisplayNameCache s_instance;
};

}  // namespace Mensura

#endif  // MENSURA_API_DISPLAY_NAME_CACHE_H
