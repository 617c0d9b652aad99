#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "controls/property_bag.h"

namespace tidemark {

// Keeps properties in memory.
class MemoryPropertyBag final : public PropertyBag {
  public:
    [[nodiscard]] PropertyValue ReadProperty(std::string_view name,
                                             const PropertyValue& fallback) const override {
        const auto found = values_.find(name);
        return found == values_.end() ? fallback : found->second;
    }
    void WriteProperty(std::string_view name, const PropertyValue& value) override {
        values_.insert_or_assign(std::string(name), value);
    }
    void WriteProperty(std::string_view name, const PropertyValue& value,
                       const PropertyValue& default_value) override {
        if (value == default_value) {
            values_.erase(std::string(name));
        } else {
            WriteProperty(name, value);
        }
    }

    // Everything kept, by name.
    [[nodiscard]] const std::map<std::string, PropertyValue, std::less<>>& Values() const {
        return values_;
    }

  private:
    std::map<std::string, PropertyValue, std::less<>> values_;
};

}  // namespace tidemark
