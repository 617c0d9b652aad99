#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>

#include "platform/settings_store.h"

namespace tidemark {

// Takes an input apart into texts, each ended by a NUL, and stores one under each key as long as
// there are any.
inline void StoreTexts(SettingsStore& store, const std::uint8_t* data, std::size_t size,
                       std::initializer_list<const char*> keys) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    std::size_t start = 0;
    for (const char* key : keys) {
        if (start > input.size()) {
            return;
        }
        const std::size_t end = std::min(input.find('\0', start), input.size());
        store.WriteText(key, input.substr(start, end - start));
        start = end + 1;
    }
}

}  // namespace tidemark
