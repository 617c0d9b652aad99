#include "platform/memory/memory_settings_store.h"

#include <algorithm>

#include "platform/program_error.h"
#include "platform/text.h"

namespace tidemark {
namespace {

std::string LowerCaseKey(std::string key) {
    std::transform(key.begin(), key.end(), key.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return key;
}

}  // namespace

std::string MemorySettingsStore::ReadText(const std::string& key,
                                          const std::string& default_text) const {
    const auto found = texts_.find(LowerCaseKey(key));
    return reads_fail_ || found == texts_.end() ? default_text : found->second;
}

void MemorySettingsStore::WriteText(const std::string& key, const std::string& text) {
    if (write_failure_ != 0) {
        throw ProgramError(write_failure_, "Writing the setting " + key +
                                               " to memory failed with error " +
                                               std::to_string(write_failure_) + ".");
    }
    // The system keeps UTF-16 up to the first NUL; what that loses is lost here, too.
    texts_[LowerCaseKey(key)] = Utf8FromUtf16(Utf16FromUtf8(TrimNull(text)));
    writes_.push_back(key);
}

}  // namespace tidemark
