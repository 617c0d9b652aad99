#pragma once

#include <gtest/gtest.h>

#include <cstddef>

#include "support/process_resources.h"

namespace tidemark {

// The process holds what it held before, and no more memory than the margin beyond.
inline void ExpectNoLeaks(const ProcessResources& before, std::size_t memory_margin) {
    const ProcessResources after = ResourcesNow();
    EXPECT_EQ(after.handles, before.handles);
    EXPECT_EQ(after.gdi_objects, before.gdi_objects);
    EXPECT_EQ(after.user_objects, before.user_objects);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_LT(after.memory, before.memory + memory_margin);
}

}  // namespace tidemark
