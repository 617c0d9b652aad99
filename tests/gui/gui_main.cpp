#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/win32/windows.h"
// After the system's main header.
#include <commctrl.h>
#include <ole2.h>

#include "support/park_pointer.h"
#include "ui/last_resort.h"

namespace {

// A box of the last resort would wait for a user for ever: an exception that a test does not expect
// is a failure of that test.
void FailOnReport(const tidemark::LastResortReport& report) {
    ADD_FAILURE() << "reached the last resort: " << report.Text();
}

class PointerParker final : public ::testing::EmptyTestEventListener {
    void OnTestStart(const ::testing::TestInfo& /*test*/) override { tidemark::ParkPointer(); }
};

}  // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleMock(&argc, argv);
    if (FAILED(::OleInitialize(nullptr))) {
        return 2;
    }
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof(controls);
    controls.dwICC = ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES;
    ::InitCommonControlsEx(&controls);
    tidemark::SetLastResortReporter(FailOnReport);
    // The list of listeners owns what is in it.
    ::testing::UnitTest::GetInstance()->listeners().Append(new PointerParker);
    const int result = RUN_ALL_TESTS();
    ::OleUninitialize();
    return result;
}
