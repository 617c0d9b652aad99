#pragma once

#include <algorithm>
#include <chrono>
#include <string>

#include "platform/win32/system_path.h"
#include "platform/win32/windows.h"
#include "support/below_wine.h"
#include "support/poll_until.h"

namespace tidemark {

// A link in a folder to another folder, while alive. Where the user may make none, it does not
// exist. Wine makes and removes none through the system's calls, but starts the programs below it
// that do.
class FolderLink {
  public:
    // `target` is a path from `folder` on: "." for the folder itself.
    FolderLink(const std::string& folder, const std::string& name, const std::string& target)
        : folder_(folder), name_(name), link_(SystemPath(folder + "\\" + name)) {
        // Told by number: older headers of the compiler do not know that the user needs no right.
        constexpr DWORD kToFolderWithoutPrivilege = 0x1 | 0x2;
        if (::CreateSymbolicLinkW(link_.c_str(), SystemPath(target).c_str(),
                                  kToFolderWithoutPrivilege) == 0 ||
            !Exists()) {
            std::string below = target;
            std::replace(below.begin(), below.end(), '\\', '/');
            RunBelowWine("ln -s \"" + below + "\" \"" + name + "\"", folder);
            static_cast<void>(PollUntil(std::chrono::seconds(5), [this] { return Exists(); }));
        }
    }
    ~FolderLink() {
        if (Exists() && ::RemoveDirectoryW(link_.c_str()) == FALSE) {
            RunBelowWine("rm \"" + name_ + "\"", folder_);
            static_cast<void>(PollUntil(std::chrono::seconds(5), [this] { return !Exists(); }));
        }
    }
    FolderLink(const FolderLink&) = delete;
    FolderLink& operator=(const FolderLink&) = delete;

    [[nodiscard]] bool Exists() const {
        return ::GetFileAttributesW(link_.c_str()) != INVALID_FILE_ATTRIBUTES;
    }

  private:
    std::string folder_;
    std::string name_;
    std::wstring link_;
};

}  // namespace tidemark
