#include "app/app_path.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/memory/memory_volume.h"

namespace tidemark {
namespace {

using testing::ElementsAre;

class LoggedRegistry : public MachineRegistry {
  public:
    RegistryKey CreateOrOpen(const std::string& path) override {
        log.push_back("create " + path);
        return refuses ? kNoRegistryKey : RegistryKey{7};
    }
    bool SetDefaultText(RegistryKey key, const std::string& text) override {
        EXPECT_EQ(key, RegistryKey{7});
        log.push_back("default = " + text);
        return !values_fail;
    }
    bool SetText(RegistryKey key, const std::string& name, const std::string& text) override {
        EXPECT_EQ(key, RegistryKey{7});
        log.push_back(name + " = " + text);
        return !values_fail;
    }
    bool Close(RegistryKey key) override {
        EXPECT_EQ(key, RegistryKey{7});
        log.push_back("close");
        return true;
    }

    bool refuses = false;
    bool values_fail = false;
    std::vector<std::string> log;
};

class AppPathTest : public testing::Test {
  protected:
    AppPathTest() { volume_.AddFile(R"(C:\Tools\Tidemark.exe)"); }
    void Register(const std::string& exe_name, const std::string& folder) {
        RegisterAppPath(registry_, volume_, exe_name, folder);
    }

    MemoryVolume volume_;
    LoggedRegistry registry_;
};

TEST_F(AppPathTest, RegistersTheExecutableUnderTheNameItsFolderLists) {
    Register("TIDEMARK.EXE", R"(C:\Tools)");
    EXPECT_THAT(
        registry_.log,
        ElementsAre(R"(create Software\Microsoft\Windows\CurrentVersion\App Paths\Tidemark.exe)",
                    R"(default = C:\Tools\TIDEMARK.EXE)", R"(Path = C:\Tools)", "close"));
    EXPECT_EQ(volume_.OpenSearchCount(), 0U);
}

TEST_F(AppPathTest, AddsTheExtensionWhereItIsMissing) {
    Register("Tidemark", R"(C:\Tools)");
    EXPECT_EQ(registry_.log[1], R"(default = C:\Tools\Tidemark.exe)");
}

TEST_F(AppPathTest, AFolderWithItsBackslashGivesTheSame) {
    Register("Tidemark.exe", R"(C:\Tools\)");
    EXPECT_EQ(registry_.log[1], R"(default = C:\Tools\Tidemark.exe)");
    EXPECT_EQ(registry_.log[2], R"(Path = C:\Tools)");
}

TEST_F(AppPathTest, WhatItsFolderDoesNotListAsAFileHasAnEmptyName) {
    Register("Other.exe", R"(C:\Tools)");
    EXPECT_EQ(registry_.log[0], R"(create Software\Microsoft\Windows\CurrentVersion\App Paths\)");
    volume_.AddFolder(R"(C:\Tools\Folder.exe)");
    registry_.log.clear();
    Register("Folder.exe", R"(C:\Tools)");
    EXPECT_EQ(registry_.log[0], R"(create Software\Microsoft\Windows\CurrentVersion\App Paths\)");
    EXPECT_EQ(volume_.OpenSearchCount(), 0U);
}

TEST_F(AppPathTest, ARegistryThatRefusesIsLeftAlone) {
    registry_.refuses = true;
    Register("Tidemark.exe", R"(C:\Tools)");
    EXPECT_EQ(registry_.log.size(), 1U);
}

TEST_F(AppPathTest, ValuesThatCannotBeSetDoNotKeepTheKeyOpen) {
    registry_.values_fail = true;
    Register("Tidemark.exe", R"(C:\Tools)");
    EXPECT_EQ(registry_.log.size(), 4U);
    EXPECT_EQ(registry_.log.back(), "close");
}

TEST_F(AppPathTest, ASecondStartRegistersAgain) {
    Register("Tidemark.exe", R"(C:\Tools)");
    const std::vector<std::string> first = registry_.log;
    registry_.log.clear();
    Register("Tidemark.exe", R"(C:\Tools)");
    EXPECT_EQ(registry_.log, first);
}

}  // namespace
}  // namespace tidemark
