#pragma once

#include <array>

#include "platform/settings_store.h"
#include "settings/options_host.h"

namespace tidemark {

// The on/off options. The live value of each is the check mark of its menu item and nothing else;
// the store only carries it from one run to the next.
enum class Option {
    ShowDateCreated,
    ControlsOnTop,
    AlwaysOnTop,
    ClearReadOnlyAttribute,
    SyncFolderCreatedDates,
    PromptWhenDone,
    ClearAutomatically,
    ShowErrorsAutomatically,
};

// What happens, besides the check mark and the store, when an option is applied.
enum class OptionEffect { kNone, kLayout, kTopmost };

struct OptionDefinition {
    Option option;
    const char* key;
    const char* item;           // of the menu; its check mark is the live value
    const char* opposite_item;  // always shows the opposite; null when there is none
    const char* default_text;   // stands in for a missing key
    bool reset_value;
    OptionEffect effect;
};

// Everything about the options, in the order in which they are loaded and reset; each stands at
// the index of its Option.
[[nodiscard]] const std::array<OptionDefinition, 8>& OptionDefinitions();

// The live value.
[[nodiscard]] bool OptionIsOn(const OptionsHost& host, Option option);

// Takes the value from the store, or the reset value when useDefault, and applies it. A text that
// is no truth value is false. Errors are ignored.
void LoadOption(SettingsStore& store, OptionsHost& host, Option option, bool useDefault);

// Sets the check mark, performs the effect and writes the store. Throws ProgramError when one of
// these fails, except for the layout, whose errors are ignored; a layout option takes effect even
// when the store cannot be written.
void ApplyOption(SettingsStore& store, OptionsHost& host, Option option, bool value);

// Applies the opposite of the live value.
void ToggleOption(SettingsStore& store, OptionsHost& host, Option option);

// The lists whose column widths are kept.
enum class ColumnSet { kItemList, kErrorsList };

// Sets the three widths from the store, or to the reset values when useDefault; then widens every
// column narrower than 10 to 10. Takes any stored text: its leading number, rounded, halves to
// even; one that 32 bits cannot hold counts as none, that is zero.
void LoadColumnWidths(const SettingsStore& store, ListColumns& columns, ColumnSet set,
                      bool useDefault);

// Writes the three widths. Throws ProgramError when the store cannot be written.
void SaveColumnWidths(SettingsStore& store, const ListColumns& columns, ColumnSet set);

// Start-up: the item list's widths, every option, and the widths again, because the layout steps
// in between may have resized the list.
void LoadOptions(SettingsStore& store, OptionsHost& host);

// Back to the reset values: every option, the widths of both lists, then the layout once. The
// window's place and size stay.
void ResetOptions(SettingsStore& store, OptionsHost& host);

}  // namespace tidemark
