#pragma once

namespace tidemark {

// The two options that decide how the end of a stamp is announced.
struct EndOfStampOptions {
    bool prompt_when_done = false;
    bool clear_automatically = false;
};

enum class EndOfStampStep {
    kNothing,
    kTell,         // "Stamp Complete"
    kAskToRemove,  // "Stamp complete. Remove completed items?"
    kRemoveWithoutAsking
};

[[nodiscard]] constexpr EndOfStampStep StepAtEndOfStamp(const EndOfStampOptions& options) {
    if (options.prompt_when_done) {
        return options.clear_automatically ? EndOfStampStep::kAskToRemove : EndOfStampStep::kTell;
    }
    return options.clear_automatically ? EndOfStampStep::kRemoveWithoutAsking
                                       : EndOfStampStep::kNothing;
}

}  // namespace tidemark
