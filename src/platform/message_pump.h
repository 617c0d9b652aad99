#pragma once

namespace tidemark {

// Lets pending window messages run from inside long work. Anything can happen in there: another
// timer's tick, a command, a cancel, the window closing.
//
// A quit message met while pumping is put back; from then on both calls do nothing, so that the
// work on the stack unwinds to the message loop.
class MessagePump {
  public:
    virtual ~MessagePump() = default;

    // Asked between the entries of a walk, hundreds of thousands of times a second: costs next to
    // nothing while no message can have waited long, and lets none wait longer than about 10 ms.
    virtual void LetPendingMessagesRun() = 0;

    // Runs whatever is pending now, however short the wait was. For single commands and for the
    // display: no long tick begins in this call. A modal loop that a message opens runs every tick.
    virtual void RunPendingMessagesNow() = 0;

    // For work in slices that lets no messages run by itself: starts a slice, and tells whether it
    // has lasted about 10 ms. The work then returns to the message loop. Slices do not nest.
    virtual void StartSlice() = 0;
    [[nodiscard]] virtual bool SliceIsOver() = 0;
};

}  // namespace tidemark
