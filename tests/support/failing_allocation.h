#pragma once

namespace tidemark {

// The next allocation of this thread fails with std::bad_alloc, if there is one while alive.
class FailingAllocation {
  public:
    FailingAllocation();
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    [[nodiscard]] static bool Failed();
};

}  // namespace tidemark
