#include "platform/win32/win32_kernel_files.h"

#include <gtest/gtest.h>

#include "platform/win32/windows.h"

namespace tidemark {
namespace {

TEST(Win32KernelFiles, LocalTimesMoveByTheBiasOfToday) {
    TIME_ZONE_INFORMATION zone{};
    const DWORD season = ::GetTimeZoneInformation(&zone);
    const LONG minutes = zone.Bias + (season == TIME_ZONE_ID_DAYLIGHT   ? zone.DaylightBias
                                      : season == TIME_ZONE_ID_STANDARD ? zone.StandardBias
                                                                        : 0);
    Win32KernelFiles files;
    const FileTime local{147'252LL * 864'000'000'000};
    FileTime system_time;
    ASSERT_TRUE(files.LocalToSystemTime(local, system_time));
    EXPECT_EQ(system_time.ticks - local.ticks, minutes * 600'000'000LL);
}

TEST(Win32KernelFiles, AnErrorOfAnotherCallOfTheThreadIsNotTakenForItsOwn) {
    Win32KernelFiles files;
    ::SetLastError(ERROR_GEN_FAILURE);
    EXPECT_NE(files.ReadAttributes("C:\\"), file_attribute::kInvalid);
    EXPECT_EQ(files.LastError(), system_error::kSuccess);
    EXPECT_EQ(files.ReadAttributes("C:\\tidemark, missing"), file_attribute::kInvalid);
    ::SetLastError(ERROR_GEN_FAILURE);
    EXPECT_EQ(files.LastError(), system_error::kFileNotFound);
}

}  // namespace
}  // namespace tidemark
