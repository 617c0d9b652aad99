#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/settings_store.h"

namespace tidemark {

// A store whose texts are the input of a fuzzer, taken apart at its NULs: one text for each of the
// keys as long as there are any. Lean, because millions of inputs go through it.
class FuzzedStore : public SettingsStore {
  public:
    FuzzedStore(std::span<const std::string_view> keys, const std::uint8_t* data,
                std::size_t size) {
        std::string_view input(reinterpret_cast<const char*>(data), size);
        for (const std::string_view key : keys) {
            const std::size_t end = std::min(input.find('\0'), input.size());
            texts_.push_back({std::string(key), std::string(input.substr(0, end))});
            if (end == input.size()) {
                break;
            }
            input.remove_prefix(end + 1);
        }
    }

    [[nodiscard]] std::string ReadText(const std::string& key,
                                       const std::string& default_text) const override {
        const auto found = std::find_if(texts_.begin(), texts_.end(),
                                        [&](const Entry& entry) { return entry.key == key; });
        return found == texts_.end() ? default_text : found->text;
    }
    void WriteText(const std::string& key, const std::string& text) override {
        const auto found = std::find_if(texts_.begin(), texts_.end(),
                                        [&](const Entry& entry) { return entry.key == key; });
        if (found == texts_.end()) {
            texts_.push_back({key, text});
        } else {
            found->text = text;
        }
    }

  private:
    struct Entry {
        std::string key;
        std::string text;
    };
    std::vector<Entry> texts_;
};

}  // namespace tidemark
