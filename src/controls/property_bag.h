#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <type_traits>
#include <variant>

#include "platform/win32/windows.h"

namespace tidemark {

// A pointer picture that several holders share; null for none.
using SharedCursor = std::shared_ptr<std::remove_pointer_t<HCURSOR>>;

// The values that controls keep with their form.
using PropertyValue = std::variant<std::int16_t, std::int32_t, SharedCursor>;

// Where a control's properties are kept, by name.
class PropertyBag {
  public:
    PropertyBag() = default;
    PropertyBag(const PropertyBag&) = delete;
    PropertyBag& operator=(const PropertyBag&) = delete;
    virtual ~PropertyBag() = default;

    // The kept value, or `fallback` when there is none.
    [[nodiscard]] virtual PropertyValue ReadProperty(std::string_view name,
                                                     const PropertyValue& fallback) const = 0;
    // Keeps a value whatever it is.
    virtual void WriteProperty(std::string_view name, const PropertyValue& value) = 0;
    // Keeps a value unless it is the default, which is not kept: reading brings it back.
    virtual void WriteProperty(std::string_view name, const PropertyValue& value,
                               const PropertyValue& default_value) = 0;
};

}  // namespace tidemark
