#include "platform/win32/win32_screen.h"

#include <gtest/gtest.h>

#include "settings/mod_monitor_info.h"

namespace tidemark {
namespace {

Rect PrimaryScreen() {
    return {0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
}

TEST(Win32Screen, FindsTheMonitorFunctionsByName) {
    const auto functions = MonitorFunctions::Of(::GetModuleHandleW(L"user32.dll"));
    EXPECT_NE(functions.monitor_from_point, nullptr);
    EXPECT_NE(functions.get_monitor_info, nullptr);
}

TEST(Win32Screen, LibraryThatLacksTheFunctionsGivesThePrimaryScreen) {
    for (const HMODULE library : {::GetModuleHandleW(L"kernel32.dll"), HMODULE{}}) {
        const Win32Screen screen(MonitorFunctions::Of(library));
        EXPECT_EQ(screen.NearestMonitor({0, 0}), std::nullopt);
        EXPECT_EQ(MonitorRectAtPoint(screen, 5000, -5000), PrimaryScreen());
    }
}

TEST(Win32Screen, LibraryThatLacksOneOfTheFunctionsGivesThePrimaryScreen) {
    const auto all = MonitorFunctions::Of(::GetModuleHandleW(L"user32.dll"));
    EXPECT_EQ(MonitorRectAtPoint(Win32Screen({all.monitor_from_point, nullptr}), 1, 1),
              PrimaryScreen());
    EXPECT_EQ(MonitorRectAtPoint(Win32Screen({nullptr, all.get_monitor_info}), 1, 1),
              PrimaryScreen());
}

TEST(Win32Screen, MonitorThatCannotBeDescribedGivesThePrimaryScreen) {
    struct Failing {
        static BOOL WINAPI GetInfo(HMONITOR /*monitor*/, MONITORINFO* info) {
            EXPECT_EQ(info->cbSize, 40U);
            info->rcMonitor = {1, 2, 3, 4};
            return FALSE;
        }
        static HMONITOR WINAPI FromPoint(POINT /*point*/, DWORD flags) {
            EXPECT_EQ(flags, 2U);
            return nullptr;
        }
    };
    auto functions = MonitorFunctions::Of(::GetModuleHandleW(L"user32.dll"));
    functions.get_monitor_info = Failing::GetInfo;
    EXPECT_EQ(MonitorRectAtPoint(Win32Screen(functions), 1, 1), PrimaryScreen());
    functions = MonitorFunctions::Of(::GetModuleHandleW(L"user32.dll"));
    functions.monitor_from_point = Failing::FromPoint;
    EXPECT_EQ(MonitorRectAtPoint(Win32Screen(functions), 1, 1), PrimaryScreen());
}

TEST(Win32Screen, WholeMonitorCountsNotOnlyItsWorkArea) {
    EXPECT_EQ(MonitorRectAtPoint(Win32Screen(), 0, 0), PrimaryScreen());
    // The display may have no task bar that would make the two differ.
    struct WithTaskBar {
        static BOOL WINAPI GetInfo(HMONITOR /*monitor*/, MONITORINFO* info) {
            info->rcMonitor = {-10, -20, 300, 400};
            info->rcWork = {0, 0, 300, 360};
            return TRUE;
        }
    };
    auto functions = MonitorFunctions::Of(::GetModuleHandleW(L"user32.dll"));
    functions.get_monitor_info = WithTaskBar::GetInfo;
    EXPECT_EQ(MonitorRectAtPoint(Win32Screen(functions), 0, 0), (Rect{-10, -20, 300, 400}));
}

}  // namespace
}  // namespace tidemark
