#include "settings/mod_options.h"

#include <exception>

#include "platform/program_error.h"
#include "settings/stored_text.h"

namespace tidemark {
namespace {

constexpr std::int32_t kMinimumColumnWidth = 10;

// The first-run widths of the item list differ from its reset widths on purpose.
struct ColumnDefinition {
    const char* key;
    const char* default_text;
    std::int32_t reset_width;
};
using ColumnDefinitions = std::array<ColumnDefinition, ListColumns::kCount>;

constexpr ColumnDefinitions kItemListColumns = {{
    {"1ColumnWidth", "300", 300},
    {"2ColumnWidth", "300", 150},
    {"3ColumnWidth", "300", 100},
}};
constexpr ColumnDefinitions kErrorsListColumns = {{
    {"1ErrorColumnWidth", "300", 300},
    {"2ErrorColumnWidth", "50", 50},
    {"3ErrorColumnWidth", "400", 400},
}};

const ColumnDefinitions& DefinitionsOf(ColumnSet set) {
    return set == ColumnSet::kItemList ? kItemListColumns : kErrorsListColumns;
}

const OptionDefinition& DefinitionOf(Option option) {
    return OptionDefinitions()[static_cast<std::size_t>(option)];
}

template <typename Steps>
void IgnoringErrors(Steps steps) {
    try {
        steps();
    } catch (const ProgramError&) {
        // Ignored: the caller goes on with what it has.
        return;
    }
}

bool StoredValue(const SettingsStore& store, Option option) {
    const OptionDefinition& definition = DefinitionOf(option);
    return TruthValue(store.ReadText(definition.key, definition.default_text)).value_or(false);
}

// The other layout option's value comes from the store and never from its check mark.
void ArrangeControls(const SettingsStore& store, OptionsHost& host, Option changed, bool value) {
    if (changed == Option::ShowDateCreated) {
        host.ArrangeControls(value, StoredValue(store, Option::ControlsOnTop));
    } else {
        host.ArrangeControls(StoredValue(store, Option::ShowDateCreated), value);
    }
}

}  // namespace

const std::array<OptionDefinition, 8>& OptionDefinitions() {
    using enum OptionEffect;
    static constexpr std::array<OptionDefinition, 8> kDefinitions = {{
        {Option::ShowDateCreated, "ShowDateCreated", "mnuViewDateCreated", nullptr, "False", false,
         kLayout},
        {Option::ControlsOnTop, "ControlsOnTop", "mnuViewControlsOnTop", "mnuViewControlsOnBottom",
         "True", true, kLayout},
        {Option::AlwaysOnTop, "AlwaysOnTop", "mnuViewAlwaysOnTop", nullptr, "False", false,
         kTopmost},
        {Option::ClearReadOnlyAttribute, "ClearReadOnlyAttribute", "mnuOptionsClearReadOnly",
         nullptr, "False", false, kNone},
        {Option::SyncFolderCreatedDates, "SyncFolderCreatedDates", "mnuOptionsSyncFolders", nullptr,
         "True", true, kNone},
        {Option::PromptWhenDone, "PromptWhenDone", "mnuOptionsPrompt", nullptr, "True", true,
         kNone},
        {Option::ClearAutomatically, "ClearAutomatically", "mnuOptionsClearAutomatically", nullptr,
         "True", true, kNone},
        {Option::ShowErrorsAutomatically, "ShowErrorsAutomatically",
         "mnuOptionsShowErrorsAutomatically", nullptr, "True", true, kNone},
    }};
    return kDefinitions;
}

bool OptionIsOn(const OptionsHost& host, Option option) {
    return host.IsChecked(DefinitionOf(option).item);
}

void LoadOption(SettingsStore& store, OptionsHost& host, Option option, bool useDefault) {
    IgnoringErrors([&] {
        ApplyOption(store, host, option,
                    useDefault ? DefinitionOf(option).reset_value : StoredValue(store, option));
    });
}

void ApplyOption(SettingsStore& store, OptionsHost& host, Option option, bool value) {
    const OptionDefinition& definition = DefinitionOf(option);
    host.SetChecked(definition.item, value);
    if (definition.opposite_item != nullptr) {
        host.SetChecked(definition.opposite_item, !value);
    }
    if (definition.effect == OptionEffect::kTopmost) {
        host.SetTopmost(value);
    }
    // The check mark has changed already, so a store that refuses must not keep the layout from
    // following it; the refusal surfaces once the window is in order.
    std::exception_ptr refusal;
    try {
        store.WriteText(definition.key, TextFromTruth(value));
    } catch (const ProgramError&) {
        refusal = std::current_exception();
    }
    if (definition.effect == OptionEffect::kLayout) {
        IgnoringErrors([&] { ArrangeControls(store, host, option, value); });
    }
    if (refusal) {
        std::rethrow_exception(refusal);
    }
}

void ToggleOption(SettingsStore& store, OptionsHost& host, Option option) {
    ApplyOption(store, host, option, !OptionIsOn(host, option));
}

void LoadColumnWidths(const SettingsStore& store, ListColumns& columns, ColumnSet set,
                      bool useDefault) {
    const ColumnDefinitions& definitions = DefinitionsOf(set);
    for (int column = 0; column < ListColumns::kCount; ++column) {
        const ColumnDefinition& definition = definitions[static_cast<std::size_t>(column)];
        if (useDefault) {
            columns.SetColumnWidth(column, definition.reset_width);
        } else {
            const std::string text = store.ReadText(definition.key, definition.default_text);
            columns.SetColumnWidth(column, RoundHalvesToEven(LeadingNumber(text)).value_or(0));
        }
    }
    for (int column = 0; column < ListColumns::kCount; ++column) {
        if (columns.ColumnWidth(column) < kMinimumColumnWidth) {
            columns.SetColumnWidth(column, kMinimumColumnWidth);
        }
    }
}

void SaveColumnWidths(SettingsStore& store, const ListColumns& columns, ColumnSet set) {
    const ColumnDefinitions& definitions = DefinitionsOf(set);
    for (int column = 0; column < ListColumns::kCount; ++column) {
        store.WriteText(definitions[static_cast<std::size_t>(column)].key,
                        TextFromSingle(static_cast<float>(columns.ColumnWidth(column))));
    }
}

void LoadOptions(SettingsStore& store, OptionsHost& host) {
    LoadColumnWidths(store, host.ItemListColumns(), ColumnSet::kItemList, /*useDefault=*/false);
    for (const OptionDefinition& definition : OptionDefinitions()) {
        LoadOption(store, host, definition.option, /*useDefault=*/false);
    }
    LoadColumnWidths(store, host.ItemListColumns(), ColumnSet::kItemList, /*useDefault=*/false);
}

void ResetOptions(SettingsStore& store, OptionsHost& host) {
    for (const OptionDefinition& definition : OptionDefinitions()) {
        LoadOption(store, host, definition.option, /*useDefault=*/true);
    }
    LoadColumnWidths(store, host.ItemListColumns(), ColumnSet::kItemList, /*useDefault=*/true);
    LoadColumnWidths(store, host.ErrorsListColumns(), ColumnSet::kErrorsList, /*useDefault=*/true);
    host.Form_Resize();
}

}  // namespace tidemark
