#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "platform/file_system_object.h"
#include "platform/user_locale.h"

namespace tidemark {

// Icon keys of many paths. A file's type goes by its extension, and naming it takes the shell
// longer than everything else about a row: this asks once for each extension.
class IconKeys {
  public:
    // Neither is owned; both outlive the object.
    IconKeys(FileSystemObject& file_system, UserLocale& locale)
        : file_system_(file_system), locale_(locale) {}

    // Which picture stands for a path: one for all folders, one for each program or icon file, one
    // for each other type of file. `fallback` is the answer for a path that exists as neither: its
    // type name would do, but that is empty, too. The text lives as long as the object. Asking the
    // shell may let messages run.
    const std::string& Of(const std::string& path, const std::string& fallback);

  private:
    const std::string& Kept(std::string key) { return *keys_.insert(std::move(key)).first; }

    FileSystemObject& file_system_;
    UserLocale& locale_;
    // By extension as it is written: the key of such files, or null when each has its own.
    std::unordered_map<std::string, const std::string*> by_extension_;
    std::unordered_set<std::string> keys_;
};

}  // namespace tidemark
