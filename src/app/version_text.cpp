#include "app/version_text.h"

namespace tidemark {

std::string VersionText(int major, int minor, int build) {
    std::string digits = std::to_string(build);
    if (digits.size() < 4) {
        digits.insert(0, 4 - digits.size(), '0');
    }
    return "version " + std::to_string(major) + "." + std::to_string(minor) + "  build " + digits;
}

}  // namespace tidemark
