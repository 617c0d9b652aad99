#pragma once

#include <functional>
#include <utility>

namespace tidemark {

// Calls an event's handler, if there is one. The call runs a copy, so that the handler may replace
// itself or destroy the object that holds it.
template <typename Signature, typename... Arguments>
auto Raise(const std::function<Signature>& event, Arguments&&... arguments) {
    using Result = typename std::function<Signature>::result_type;
    if (!event) {
        return Result();
    }
    const std::function<Signature> handler = event;
    return handler(std::forward<Arguments>(arguments)...);
}

}  // namespace tidemark
