#pragma once

#include <string>

namespace tidemark {

class Window;

enum class BoxButtons { kOk, kYesNo, kAbortRetryIgnore };
enum class BoxIcon { kInformation, kQuestion, kWarning, kCritical };
enum class BoxAnswer { kOk, kYes, kNo, kAbort, kRetry, kIgnore };

struct BoxRequest {
    std::string text{};
    std::string caption = "tidemark clock";
    BoxButtons buttons = BoxButtons::kOk;
    BoxIcon icon = BoxIcon::kInformation;
    int default_button = 1;  // counted from 1, left to right
    friend bool operator==(const BoxRequest&, const BoxRequest&) = default;
};

// Asks the user in a modal box. A form is handed one, so that a test can answer in the user's
// place.
class MessageBoxes {
  public:
    virtual ~MessageBoxes() = default;
    // Blocks until the user answers, while other windows' messages run. A box closed without an
    // answer counts as its mildest one (OK, No, Ignore). The owner may be gone or null.
    virtual BoxAnswer Show(const Window* owner, const BoxRequest& request) = 0;
};

// The system's own boxes. While the user works in another program, the taskbar button of a box's
// owner flashes.
class SystemMessageBoxes final : public MessageBoxes {
  public:
    BoxAnswer Show(const Window* owner, const BoxRequest& request) override;
};

}  // namespace tidemark
