#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/settings_store.h"

namespace tidemark {

// Settings kept in memory, with the failures a test asks for.
class MemorySettingsStore : public SettingsStore {
  public:
    [[nodiscard]] std::string ReadText(const std::string& key,
                                       const std::string& default_text) const override;
    void WriteText(const std::string& key, const std::string& text) override;

    // From now on every read gives the default, or every write throws with this system code.
    void FailReads() { reads_fail_ = true; }
    void FailWrites(std::int32_t code) { write_failure_ = code; }
    void AllowWrites() { write_failure_ = 0; }

    [[nodiscard]] std::size_t Count() const { return texts_.size(); }

    // The keys of all successful writes, in their order and as they were given.
    [[nodiscard]] const std::vector<std::string>& Writes() const { return writes_; }
    void ForgetWrites() { writes_.clear(); }

  private:
    std::map<std::string, std::string> texts_;  // by key in lower case
    std::vector<std::string> writes_;
    bool reads_fail_ = false;
    std::int32_t write_failure_ = 0;
};

}  // namespace tidemark
