#pragma once

#include <functional>
#include <optional>

#include "platform/raise.h"
#include "ui/form.h"

namespace tidemark {

// A form for tests: its handlers call what the test puts in.
class TestForm : public Form {
  public:
    explicit TestForm(const FormSpec& spec = DefaultSpec()) { Create(L"TidemarkTestForm", spec); }
    ~TestForm() override { Destroy(); }

    static FormSpec DefaultSpec() {
        FormSpec spec;
        spec.caption = "form under test";
        spec.bounds = {40, 40, 500, 400};
        return spec;
    }

    std::function<std::optional<LRESULT>(UINT, WPARAM, LPARAM)> on_message;
    std::function<void(Size)> on_resize;
    std::function<void()> on_destroy;

    LRESULT OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) override {
        const auto handler = on_message;
        if (handler) {
            if (const auto answer = handler(message, wparam, lparam)) {
                return *answer;
            }
        }
        return Form::OnMessage(window, message, wparam, lparam);
    }

  protected:
    void OnResize(Size client) override { Raise(on_resize, client); }
    void OnDestroy() override { Raise(on_destroy); }
};

}  // namespace tidemark
