#include "benchmarks/real_window.h"

#include "benchmarks/measure.h"
#include "ui/last_resort.h"
#include "ui/message_loop.h"

namespace tidemark {

class WatchedTimers::Timer final : public TimerObject, private ITimerObjectSink {
  public:
    Timer(WatchedTimers& watch, std::unique_ptr<TimerObject> timer)
        : watch_(watch), timer_(std::move(timer)) {
        timer_->SetSink(this);
    }
    void SetSink(ITimerObjectSink* sink) override { sink_ = sink; }
    void SetInterval(std::uint32_t milliseconds) override { timer_->SetInterval(milliseconds); }
    void SetEnabled(bool enabled) override { timer_->SetEnabled(enabled); }
    [[nodiscard]] bool Enabled() const override { return timer_->Enabled(); }

  private:
    // This may be gone when the tick returns.
    void ITimerObjectSink_Timer() override {
        if (sink_ != nullptr) {
            watch_.Tick(*sink_);
        }
    }

    WatchedTimers& watch_;
    std::unique_ptr<TimerObject> timer_;
    ITimerObjectSink* sink_ = nullptr;
};

std::unique_ptr<TimerObject> WatchedTimers::NewTimer(TickKind kind) {
    std::unique_ptr<TimerObject> timer = timers_.NewTimer(kind);
    if (kind != TickKind::kLong) {
        return timer;
    }
    return std::make_unique<Timer>(*this, std::move(timer));
}

void WatchedTimers::Tick(ITimerObjectSink& sink) {
    const double start = NowMs();
    ++depth_;
    sink.ITimerObjectSink_Timer();
    --depth_;
    last_end_ = NowMs();
    if (depth_ == 0) {
        long_ticks_ += last_end_ - start;
    }
}

RealSystem::RealSystem()
    : system_({.dispatch = [](MSG& message) { RouteMessage(message); },
               .on_quit = {},
               .report_exception = [] { ReportToLastResort(nullptr); }}),
      timers_(system_.Parts().timers) {
    SetLastResortReporter(
        [](const LastResortReport& report) { GiveUp("an exception: " + report.Text()); });
}

Platform RealSystem::PartsWith(TimerSource& timers) {
    const Platform parts = system_.Parts();
    return {parts.files, parts.file_system, timers, parts.pump, parts.locale};
}

void RunMessagesUntil(const std::function<bool()>& condition) {
    MSG message{};
    while (!condition()) {
        if (::GetMessageW(&message, nullptr, 0, 0) <= 0) {
            GiveUp("the message loop was asked to end");
        }
        RouteMessage(message);
    }
}

void RunPendingMessages() {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        RouteMessage(message);
    }
}

BoxAnswer NoBoxes::Show(const Window* /*owner*/, const BoxRequest& request) {
    return request.buttons == BoxButtons::kOk      ? BoxAnswer::kOk
           : request.buttons == BoxButtons::kYesNo ? BoxAnswer::kNo
                                                   : BoxAnswer::kIgnore;
}

RealWindow::RealWindow(const Platform& platform) : platform_(platform) {
    main_ = std::make_unique<frmMain>(MainWindowServices{
        .common = services_.On(platform_),
        .boxes = boxes_,
        .screen = screen_,
        .process = process_,
        .taskbar = SystemTaskbar,
        .errors_list_columns = [this]() -> ListColumns& { return errors_columns_; },
        .show_errors = [](const StampErrorList& /*errors*/, bool /*topmost*/) {},
        .show_about = [](bool /*topmost*/) {},
        .shut_down = [](bool /*unload_main*/) {},
        .closed = [] {}});
    main_->Form_Load();
    main_->InitializeDisplay();
    main_->LoadPosition(/*reset=*/true);
    main_->SetVisible(true);
    ::SetForegroundWindow(main_->Handle());
    RunPendingMessages();
}

RealWindow::~RealWindow() {
    main_.reset();
    RunPendingMessages();
}

void RealWindow::List(const std::vector<std::string>& paths) {
    main_->AddItems(paths);
    WaitForRest();
}

void RealWindow::Choose(const std::string& item) {
    main_->Send(WM_COMMAND, main_->menu[item].Id());
}

void RealWindow::WaitForRest() {
    // The end of a stamp is handled by the poll after it.
    RunMessagesUntil(
        [this] { return !main_->Busy() && main_->cmdStamp.Text() == std::string("Stamp"); });
    RunPendingMessages();
}

}  // namespace tidemark
