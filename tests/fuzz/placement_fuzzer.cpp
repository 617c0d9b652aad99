// Any texts as a stored placement: the window is moved once to their numbers or, where one is too
// large, ends in the middle of the screen; a reset always brings it back.

#include <algorithm>
#include <cstdint>

#include "fuzz/fuzz_check.h"
#include "fuzz/fuzzed_store.h"
#include "platform/memory/memory_screen.h"
#include "settings/fake_placed_window.h"
#include "settings/stored_text.h"
#include "settings/window_placement.h"

namespace {

constexpr std::string_view kKeys[] = {"Left", "Top", "Width", "Height"};

bool FitsThirtyTwoBits(const tidemark::SettingsStore& store, std::string_view key) {
    const double number = tidemark::LeadingNumber(store.ReadText(std::string(key), "0"));
    return tidemark::RoundHalvesToEven(number).has_value();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const tidemark::FuzzedStore store(kKeys, data, size);
    const tidemark::MemoryScreen screen;
    tidemark::FakePlacedWindow window;
    tidemark::LoadWindowPlacement(store, screen, window, /*reset=*/false);
    if (std::all_of(std::begin(kKeys), std::end(kKeys),
                    [&](std::string_view key) { return FitsThirtyTwoBits(store, key); })) {
        FUZZ_CHECK(window.tried.size() == 1);
    } else {
        FUZZ_CHECK((window.bounds == tidemark::TwipsBounds{2880, 2160, 9600, 7200}));
    }
    tidemark::LoadWindowPlacement(store, screen, window, /*reset=*/true);
    FUZZ_CHECK((window.bounds == tidemark::TwipsBounds{2880, 2160, 640, 480}));
    return 0;
}
