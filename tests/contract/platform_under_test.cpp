#include "contract/platform_under_test.h"

namespace tidemark {

const std::vector<PlatformKind>& PlatformKinds() {
    static const std::vector<PlatformKind> kinds = {
        {"Memory", MakeMemoryPlatform},
#ifdef _WIN32
        {"Win32", MakeWin32Platform},
#endif
    };
    return kinds;
}

}  // namespace tidemark
