#include "ui/taskbar_button.h"

#include <utility>

namespace tidemark {

ComPtr<ITaskbarList3> SystemTaskbar() {
    ComPtr<ITaskbarList3> taskbar;
    if (FAILED(::CoCreateInstance(CLSID_TaskbarList, /*pUnkOuter=*/nullptr, CLSCTX_INPROC_SERVER,
                                  IID_ITaskbarList3, taskbar.PutVoid())) ||
        FAILED(taskbar->HrInit())) {
        return {};
    }
    return taskbar;
}

TaskbarButton::TaskbarButton() {
    subclasser_.WndProc = [this](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        OnButtonCreated();
        return std::nullopt;
    };
}

void TaskbarButton::AttachTo(HWND window, TaskbarSource taskbar) {
    source_ = std::move(taskbar);
    const UINT button_created = ::RegisterWindowMessageW(L"TaskbarButtonCreated");
    // Were the program run as administrator, the shell's message would be kept from it.
    ::ChangeWindowMessageFilterEx(window, button_created, MSGFLT_ALLOW,
                                  /*pChangeFilterStruct=*/nullptr);
    subclasser_.RegisterMessages(window, {button_created});
}

void TaskbarButton::Show(const TaskbarProgress& progress) {
    if (progress != progress_) {
        progress_ = progress;
        Draw();
    }
}

void TaskbarButton::OnButtonCreated() {
    taskbar_ = source_();
    // A new button shows nothing by itself.
    if (progress_.working) {
        Draw();
    }
}

void TaskbarButton::Draw() {
    const HWND window = subclasser_.SubclassedWindow();
    if (!taskbar_ || window == nullptr) {
        return;
    }
    if (!progress_.working) {
        taskbar_->SetProgressState(window, TBPF_NOPROGRESS);
    } else if (progress_.total <= 0) {
        taskbar_->SetProgressState(window, TBPF_INDETERMINATE);
    } else {
        taskbar_->SetProgressState(window, TBPF_NORMAL);
        taskbar_->SetProgressValue(window, static_cast<ULONGLONG>(progress_.done),
                                   static_cast<ULONGLONG>(progress_.total));
    }
}

}  // namespace tidemark
