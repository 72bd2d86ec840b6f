#include "api/display_name_cache.h"

namespace Mensura {

DisplayNameCache::~DisplayNameCache() {
    // In key order, each formatter, then the map.
    for (auto& entry : formatters) entry.second.reset();
    formatters.clear();
}

int DisplayNameCache::LanguageOf(int locale) {
    std::lock_guard<std::mutex> guard(lock);
    auto found = formatters.find(locale);
    if (found == formatters.end()) {
        found = formatters.emplace(locale, std::make_unique<Formatter>(locale)).first;
    }
    return found->second->GetLocaleId() == 2052 ? 1 : 0;
}

std::size_t DisplayNameCache::Size() {
    std::lock_guard<std::mutex> guard(lock);
    return formatters.size();
}

}  // namespace Mensura
