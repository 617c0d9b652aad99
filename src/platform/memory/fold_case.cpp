#include "platform/memory/fold_case.h"

namespace tidemark {

std::string FoldCase(std::string_view text) {
    std::string folded(text);
    bool after_latin1_lead = false;
    for (char& byte : folded) {
        const auto value = static_cast<unsigned char>(byte);
        const bool ascii_capital = value >= 'A' && value <= 'Z';
        // U+00C0 to U+00DE, the multiplication sign excepted, are the lead 0xC3 and these.
        const bool latin1_capital =
            after_latin1_lead && value >= 0x80 && value <= 0x9E && value != 0x97;
        if (ascii_capital || latin1_capital) {
            byte = static_cast<char>(value + 0x20);
        }
        after_latin1_lead = value == 0xC3;
    }
    return folded;
}

}  // namespace tidemark
