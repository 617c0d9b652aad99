#pragma once

#include <cstddef>

namespace tidemark {

// What this process holds of the system. Equal before and after means that nothing was leaked.
struct ProcessResources {
    int handles = 0;         // of the kernel: files, searches, events ...
    int gdi_objects = 0;     // fonts, brushes, bitmaps, device contexts ...
    int user_objects = 0;    // windows, menus, icons ...; always 0 where the system does not count
    int windows = 0;         // of this thread, those inside others included
    std::size_t memory = 0;  // bytes, as the system has given them out: only growth over many
                             // rounds says something
};
[[nodiscard]] ProcessResources ResourcesNow();

}  // namespace tidemark
