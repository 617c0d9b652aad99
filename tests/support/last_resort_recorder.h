#pragma once

#include <utility>
#include <vector>

#include "ui/last_resort.h"

namespace tidemark {

// Records what reaches the last resort, instead of showing it, while alive.
class LastResortRecorder {
  public:
    LastResortRecorder()
        : before_(SetLastResortReporter(
              [this](const LastResortReport& report) { reports.push_back(report); })) {}
    LastResortRecorder(const LastResortRecorder&) = delete;
    LastResortRecorder& operator=(const LastResortRecorder&) = delete;
    ~LastResortRecorder() { SetLastResortReporter(std::move(before_)); }

    std::vector<LastResortReport> reports;

  private:
    LastResortReporter before_;
};

}  // namespace tidemark
