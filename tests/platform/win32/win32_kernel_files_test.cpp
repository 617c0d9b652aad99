#include "platform/win32/win32_kernel_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/win32/windows.h"
#include "support/replaced_import.h"

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

// What SetFileTime was called with: for each of the three times whether it was given.
struct TimesGiven {
    bool created = false;
    bool accessed = false;
    bool written = false;
    FILETIME time{};

    static TimesGiven& Last() {
        static TimesGiven last;
        return last;
    }
    static BOOL WINAPI SetFileTime(HANDLE /*file*/, const FILETIME* created,
                                   const FILETIME* accessed, const FILETIME* written) {
        const FILETIME* const given = created != nullptr ? created : written;
        Last() = {created != nullptr, accessed != nullptr, written != nullptr,
                  given != nullptr ? *given : FILETIME{}};
        return TRUE;
    }
};

// A disk shows this only where the file system keeps all three times.
TEST(Win32KernelFiles, EachOfTheTimesIsGivenToTheSystemAlone) {
    const ReplacedImport replaced("SetFileTime", TimesGiven::SetFileTime);
    Win32KernelFiles files;
    const TimesGiven& given = TimesGiven::Last();
    EXPECT_TRUE(files.SetLastWriteTime(FileHandle{4}, {0x0123456789ABCDEF}));
    EXPECT_TRUE(given.written);
    EXPECT_FALSE(given.created || given.accessed);
    EXPECT_EQ(given.time.dwHighDateTime, 0x01234567U);
    EXPECT_EQ(given.time.dwLowDateTime, 0x89ABCDEFU);
    EXPECT_TRUE(files.SetCreationTime(FileHandle{4}, {0x0223456789ABCDEF}));
    EXPECT_TRUE(given.created);
    EXPECT_FALSE(given.written || given.accessed);
    EXPECT_EQ(given.time.dwHighDateTime, 0x02234567U);
    EXPECT_EQ(given.time.dwLowDateTime, 0x89ABCDEFU);
}

// How FormatMessageW was called. It answers with a text that fills all it is given.
struct MessageAsked {
    DWORD flags = 0;
    DWORD code = 0;
    DWORD language = 1;
    DWORD size = 0;

    static MessageAsked& Last() {
        static MessageAsked last;
        return last;
    }
    static DWORD WINAPI FormatMessage(DWORD flags, LPCVOID /*source*/, DWORD code, DWORD language,
                                      LPWSTR buffer, DWORD size, char** inserts) {
        EXPECT_EQ(inserts, nullptr);
        Last() = {flags, code, language, size};
        std::fill_n(buffer, size - 1, L'x');
        buffer[size - 1] = L'\0';
        return size - 1;
    }
};

// Without its inserts left alone, a text that has some could not be had at all.
TEST(Win32KernelFiles, AMessageTextIsAskedForWithItsInsertsLeftAloneAndUpTo255Characters) {
    const ReplacedImport replaced("FormatMessageW", MessageAsked::FormatMessage);
    Win32KernelFiles files;
    EXPECT_EQ(files.MessageText(34), std::string(255, 'x'));
    const MessageAsked& asked = MessageAsked::Last();
    EXPECT_EQ(asked.flags, 4608U);
    EXPECT_EQ(asked.code, 34U);
    EXPECT_EQ(asked.language, 0U);
    EXPECT_EQ(asked.size, 256U);
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

// Some file systems have no number for a file, or none that fits 64 bits.
TEST(Win32KernelFiles, AFileNumberThatIsNoneGivesNoIdentity) {
    struct Answer {
        static std::uint64_t& Index() {
            static std::uint64_t index = 0;
            return index;
        }
        static BOOL WINAPI Information(HANDLE /*file*/, BY_HANDLE_FILE_INFORMATION* info) {
            *info = {};
            info->dwVolumeSerialNumber = 7;
            info->nFileIndexHigh = static_cast<DWORD>(Index() >> 32);
            info->nFileIndexLow = static_cast<DWORD>(Index() & 0xFFFFFFFF);
            return TRUE;
        }
    };
    const ReplacedImport replaced("GetFileInformationByHandle", Answer::Information);
    Win32KernelFiles files;
    FileIdentity identity;
    for (const std::uint64_t none : {std::uint64_t{0}, ~std::uint64_t{0}}) {
        Answer::Index() = none;
        EXPECT_FALSE(files.ReadIdentity("C:\\", identity));
        EXPECT_EQ(files.LastError(), static_cast<std::uint32_t>(ERROR_NOT_SUPPORTED));
    }
    Answer::Index() = 0x0123456789ABCDEF;
    EXPECT_TRUE(files.ReadIdentity("C:\\", identity));
}

}  // namespace
}  // namespace tidemark
