#include "app/version_text.h"

#include "platform/text.h"

namespace tidemark {

std::string VersionText(int major, int minor, int build) {
    return "version " + std::to_string(major) + "." + std::to_string(minor) + "  build " +
           ZeroPadded(build, 4);
}

}  // namespace tidemark
