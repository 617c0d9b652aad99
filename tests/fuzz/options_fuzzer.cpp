// Any texts as stored options and column widths: start-up loads them without an error, leaves no
// column narrower than 10 and the options in their canonical form.

#include <algorithm>
#include <cstdint>

#include "fuzz/fuzz_check.h"
#include "fuzz/fuzzed_store.h"
#include "settings/fake_options_host.h"
#include "settings/stored_text.h"

namespace {

constexpr std::string_view kKeys[] = {"1ColumnWidth", "2ColumnWidth", "ShowDateCreated",
                                      "ControlsOnTop"};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tidemark::FuzzedStore store(kKeys, data, size);
    tidemark::FakeOptionsHost host;
    tidemark::LoadOptions(store, host);
    const auto& widths = host.item_columns.widths;
    FUZZ_CHECK(std::all_of(widths.begin(), widths.end(), [](auto width) { return width >= 10; }));
    for (const tidemark::OptionDefinition& definition : tidemark::OptionDefinitions()) {
        FUZZ_CHECK(store.ReadText(definition.key, "") ==
                   tidemark::TextFromTruth(tidemark::OptionIsOn(host, definition.option)));
    }
    return 0;
}
