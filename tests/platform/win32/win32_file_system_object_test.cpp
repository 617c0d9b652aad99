#include "platform/win32/win32_file_system_object.h"

#include <gtest/gtest.h>

#include <thread>

#include "platform/program_error.h"

namespace tidemark {
namespace {

TEST(Win32FileSystemObject, WithoutTheComponentTheDrivesFailAndNothingExists) {
    std::int32_t number = 0;
    std::string description;
    bool exists = true;
    // A thread that never initialised COM cannot create any component.
    std::thread([&] {
        Win32FileSystemObject object;
        exists = object.FolderExists("C:\\");
        try {
            (void)object.DriveCount();
        } catch (const ProgramError& error) {
            number = error.Number();
            description = error.Description();
        }
    }).join();
    EXPECT_EQ(number, static_cast<std::int32_t>(CO_E_NOTINITIALIZED));
    EXPECT_NE(description, "");
    EXPECT_FALSE(exists);
}

}  // namespace
}  // namespace tidemark
