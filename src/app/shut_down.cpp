#include "app/shut_down.h"

#include "platform/attempt.h"

namespace tidemark {

void ShutDownSequence::ShutDown(bool unload_main) {
    begun_ = true;
    for (const std::string& name : windows_.Names()) {
        Attempt([&] { windows_.Hide(name); });
    }
    Attempt([&] { pump_.RunPendingMessagesNow(); });
    for (const std::string& name : windows_.Names()) {
        if (name != kMainWindowName) {
            Attempt([&] { windows_.Unload(name); });
        }
    }
    if (unload_main) {
        Attempt([&] { windows_.Unload(kMainWindowName); });
    }
    process_.ReplaceErrorMode(error_mode::kNoFaultErrorBox);
}

}  // namespace tidemark
