#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <string>

#include "support/park_pointer.h"
#include "support/real_tree.h"
#include "support/remote_tidemark.h"
#include "support/settings_guard.h"

namespace tidemark {

// Items of the menus, counted from 0 without the separators.
enum FileItem {
    kOpenContainingFolder,
    kAddFiles,
    kAddFolder,
    kStamp,
    kRemoveSelected,
    kRemoveCompleted,
    kRemoveAll,
    kExit
};
enum EditItem { kSelectAll, kSelectNone };
enum ViewItem { kControlsOnTop, kControlsOnBottom, kDateCreated, kRecount, kErrors, kAlwaysOnTop };
enum OptionsItem {
    kClearReadOnly,
    kSyncFolders,
    kPrompt,
    kClearAutomatically,
    kShowErrors,
    kCreateSendTo,
    kReset
};
enum HelpItem { kAbout };

// Full path of the program that ships: it is in the folder above that of the test programs.
[[nodiscard]] std::string ProgramPath();

// The time that trees have before they are stamped.
[[nodiscard]] FileTime LongAgo();

// The path in quotes, as on a command line.
[[nodiscard]] std::string Quoted(const std::string& path);

// Makes folders "many 0" ... with so many files in each.
void MakeManyFiles(RealTree& tree, int folders, int files_in_each);

// A file that this process cannot open for writing, listed beside the tree; empty when there is no
// way to have one here. Root under Wine opens read-only files all the same, so ./test makes an
// immutable one and names it in the environment; in every other case `tree` gets a read-only file.
[[nodiscard]] std::string UnwritableFile(RealTree& tree);

// Whether the path, below a root, is in a folder whose name begins with a dot, or is one.
[[nodiscard]] bool IsInDotFolder(const std::map<std::string, TreeEntry>& entries,
                                 const std::string& path);

// A test of the program that ships: its own process, on the settings of a first run.
class EndToEnd : public testing::Test {
  protected:
    static constexpr std::chrono::seconds kWait{60};

    EndToEnd() { ParkPointer(); }

    [[nodiscard]] static RemoteTidemark Start(const std::string& arguments);
    // Presses Stamp, waits for the end and keeps the list.
    static void StampAll(const RemoteTidemark& program);
    // Closes the window and expects the program to end well.
    static void Close(const RemoteTidemark& program);
    // Waits until the program has stored the text under the key of an option.
    [[nodiscard]] static bool WaitForStored(const char* key, const std::string& text);
    // Tells the program that the user's session ends, and expects it to end well.
    static void EndSession(const RemoteTidemark& program);

  private:
    SettingsGuard settings_;
};

}  // namespace tidemark
