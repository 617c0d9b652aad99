#pragma once

#include <cstdint>
#include <functional>

#include "controls/file_drag_source.h"
#include "controls/ole_drag_drop.h"
#include "controls/popup_menu_system.h"
#include "platform/command_runner.h"
#include "platform/platform.h"
#include "platform/settings_store.h"

namespace tidemark {

// What every window with a list of files asks of the rest of the program. Everything outlives the
// window.
struct ListWindowServices {
    const Platform& platform;
    SettingsStore& settings;
    CommandRunner& command_runner;
    PopupMenuSystem& popup_menus;
    // Runs a drag that starts at the source with these mouse buttons held.
    std::function<void(OleDragDropSink& source, std::int16_t button)> drag_files = DragFiles;
};

}  // namespace tidemark
