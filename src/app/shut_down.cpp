#include "app/shut_down.h"

namespace tidemark {
namespace {

// Runs one step of the way out; a step that fails leaves the rest to be done all the same.
template <typename Step>
void Attempt(Step&& step) {
    try {
        step();
    } catch (...) {
        // Nobody is left to be told: the windows that could show it are going.
    }
}

}  // namespace

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
