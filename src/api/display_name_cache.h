// Turns the locale ids that callers pass to the flat GetDisplayName into
// language indices, by keeping one formatter per locale id ever asked for.
#ifndef MENSURA_API_DISPLAY_NAME_CACHE_H
#define MENSURA_API_DISPLAY_NAME_CACHE_H

#include <map>
#include <memory>
#include <mutex>

#include "mensura/mensura.hpp"

namespace Mensura {

class DisplayNameCache {
public:
    DisplayNameCache() = default;
    ~DisplayNameCache();
    DisplayNameCache(const DisplayNameCache&) = delete;
    DisplayNameCache& operator=(const DisplayNameCache&) = delete;

    static DisplayNameCache& Instance() { return s_instance; }

    // The language of `locale`, by the rule of the Formatter constructor. The
    // first call for a locale id makes its formatter. Safe on several threads.
    int LanguageOf(int locale);
    // How many locale ids have a formatter.
    std::size_t Size();

private:
    static DisplayNameCache s_instance;

    std::mutex lock;
    std::map<int, std::unique_ptr<Formatter>> formatters;
};

}  // namespace Mensura

#endif  // MENSURA_API_DISPLAY_NAME_CACHE_H
