// Any texts as a stored placement: the window is moved once to their numbers or, where one is too
// large, ends in the middle of the screen; a reset always brings it back.

#include <cstdint>

#include "fuzz/fuzz_check.h"
#include "fuzz/split_texts.h"
#include "platform/memory/memory_screen.h"
#include "platform/memory/memory_settings_store.h"
#include "settings/fake_placed_window.h"
#include "settings/stored_text.h"
#include "settings/window_placement.h"

namespace {

bool FitsThirtyTwoBits(const tidemark::SettingsStore& store, const char* key) {
    const double number = tidemark::LeadingNumber(store.ReadText(key, "0"));
    return tidemark::RoundHalvesToEven(number).has_value();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tidemark::MemorySettingsStore store;
    tidemark::StoreTexts(store, data, size, {"Left", "Top", "Width", "Height"});
    const tidemark::MemoryScreen screen;
    tidemark::FakePlacedWindow window;
    tidemark::LoadWindowPlacement(store, screen, window, /*reset=*/false);
    if (FitsThirtyTwoBits(store, "Left") && FitsThirtyTwoBits(store, "Top") &&
        FitsThirtyTwoBits(store, "Width") && FitsThirtyTwoBits(store, "Height")) {
        FUZZ_CHECK(window.tried.size() == 1);
    } else {
        FUZZ_CHECK((window.bounds == tidemark::TwipsBounds{2880, 2160, 9600, 7200}));
    }
    tidemark::LoadWindowPlacement(store, screen, window, /*reset=*/true);
    FUZZ_CHECK((window.bounds == tidemark::TwipsBounds{2880, 2160, 640, 480}));
    return 0;
}
