#include "controls/property_bag.h"

namespace tidemark {

PropertyValue MemoryPropertyBag::ReadProperty(std::string_view name,
                                              const PropertyValue& fallback) const {
    const auto found = values_.find(name);
    return found == values_.end() ? fallback : found->second;
}

void MemoryPropertyBag::WriteProperty(std::string_view name, const PropertyValue& value) {
    values_.insert_or_assign(std::string(name), value);
}

void MemoryPropertyBag::WriteProperty(std::string_view name, const PropertyValue& value,
                                      const PropertyValue& default_value) {
    if (value == default_value) {
        values_.erase(std::string(name));
    } else {
        WriteProperty(name, value);
    }
}

}  // namespace tidemark
