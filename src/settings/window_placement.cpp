#include "settings/window_placement.h"

#include <string>

#include "platform/program_error.h"
#include "settings/stored_text.h"

namespace tidemark {
namespace {

constexpr const char* kLeft = "Left";
constexpr const char* kTop = "Top";
constexpr const char* kWidth = "Width";
constexpr const char* kHeight = "Height";

// Pixels where the default place and the last resort are computed, twips as the default size.
constexpr std::int32_t kDefaultWidth = 640;
constexpr std::int32_t kDefaultHeight = 480;

struct WholeBounds {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
};

std::int32_t Whole(double value) {
    const auto whole = RoundHalvesToEven(value);
    if (!whole) {
        throw ProgramError(error_number::kOverflow, "Overflow: a placement is too large.");
    }
    return *whole;
}

WholeBounds DefaultPlacement(const Screen& screen) {
    return {Whole(screen.Width() - kDefaultWidth * screen.TwipsPerPixelX()) / 2,
            Whole(screen.Height() - kDefaultHeight * screen.TwipsPerPixelY()) / 2, kDefaultWidth,
            kDefaultHeight};
}

std::int32_t StoredNumber(const SettingsStore& store, const char* key, std::int32_t default_value) {
    return Whole(LeadingNumber(store.ReadText(key, std::to_string(default_value))));
}

WholeBounds StoredPlacement(const SettingsStore& store, const WholeBounds& defaults) {
    WholeBounds stored;
    stored.left = StoredNumber(store, kLeft, defaults.left);
    stored.top = StoredNumber(store, kTop, defaults.top);
    stored.width = StoredNumber(store, kWidth, defaults.width);
    stored.height = StoredNumber(store, kHeight, defaults.height);
    return stored;
}

void Move(PlacedWindow& window, const WholeBounds& bounds) {
    window.MoveTo({static_cast<float>(bounds.left), static_cast<float>(bounds.top),
                   static_cast<float>(bounds.width), static_cast<float>(bounds.height)});
}

void GiveDefaultSizeInPixels(const Screen& screen, PlacedWindow& window) {
    TwipsBounds bounds = window.Placement();
    bounds.width = static_cast<float>(kDefaultWidth * screen.TwipsPerPixelX());
    bounds.height = static_cast<float>(kDefaultHeight * screen.TwipsPerPixelY());
    window.MoveTo(bounds);
}

template <typename Step>
bool Succeeds(Step step) {
    try {
        step();
        return true;
    } catch (const ProgramError&) {
        return false;
    }
}

}  // namespace

void LoadWindowPlacement(const SettingsStore& store, const Screen& screen, PlacedWindow& window,
                         bool reset) {
    const bool placed = Succeeds([&] {
        const WholeBounds defaults = DefaultPlacement(screen);
        Move(window, reset ? defaults : StoredPlacement(store, defaults));
    });
    if (!placed) {
        // Each step counts by itself: a window that cannot be sized may still be moved.
        Succeeds([&] { GiveDefaultSizeInPixels(screen, window); });
        Succeeds([&] { CenterOnScreen(screen, window); });
    }
}

void SaveWindowPlacement(SettingsStore& store, const PlacedWindow& window) {
    if (window.State() != WindowState::kNormal) {
        return;
    }
    const TwipsBounds bounds = window.Placement();
    store.WriteText(kLeft, TextFromSingle(bounds.left));
    store.WriteText(kTop, TextFromSingle(bounds.top));
    store.WriteText(kWidth, TextFromSingle(bounds.width));
    store.WriteText(kHeight, TextFromSingle(bounds.height));
}

void CenterOnScreen(const Screen& screen, PlacedWindow& window) {
    TwipsBounds bounds = window.Placement();
    // Whole numbers are halved, so that the fraction is dropped.
    const std::int32_t left = Whole(screen.Width() - static_cast<double>(bounds.width)) / 2;
    const std::int32_t top = Whole(screen.Height() - static_cast<double>(bounds.height)) / 2;
    bounds.left = static_cast<float>(left);
    bounds.top = static_cast<float>(top);
    window.MoveTo(bounds);
}

}  // namespace tidemark
