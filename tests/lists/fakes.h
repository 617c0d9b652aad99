#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "lists/keyed_image_list.h"
#include "platform/file_system_object.h"
#include "platform/memory/memory_user_locale.h"

namespace tidemark {

// Counts how often texts are lower-cased, sort keys asked for, and dates and times read.
class CountingLocale : public UserLocale {
  public:
    std::size_t lower_cased = 0;
    std::size_t sort_keys = 0;
    std::size_t dates_read = 0;

    std::string LowerCase(const std::string& text) override {
        ++lower_cased;
        return locale_.LowerCase(text);
    }
    std::string SortKey(const std::string& text) override {
        ++sort_keys;
        return locale_.SortKey(text);
    }
    std::string ThousandsSeparator() override { return locale_.ThousandsSeparator(); }
    std::string DateSeparator() override { return locale_.DateSeparator(); }
    std::string TimeSeparator() override { return locale_.TimeSeparator(); }
    double ReadDateTime(const std::string& text) override {
        ++dates_read;
        return locale_.ReadDateTime(text);
    }
    std::string DateTimeText(FileTime local) override { return locale_.DateTimeText(local); }

  private:
    MemoryUserLocale locale_;
};

// Files with their type names, and folders.
class FakeFileSystem : public FileSystemObject {
  public:
    std::map<std::string, std::string> files;
    std::set<std::string> folders;

    std::int32_t DriveCount() override { return 1; }
    bool FileExists(const std::string& path) override { return files.contains(path); }
    bool FolderExists(const std::string& path) override { return folders.contains(path); }
    std::string TypeName(const std::string& path) override {
        const auto file = files.find(path);
        return file != files.end() ? file->second : FolderExists(path) ? "File Folder" : "";
    }
};

// Yields an icon for every path of a file system that exists, and keeps which were asked for.
class FakePictures : public PictureStore {
  public:
    explicit FakePictures(FileSystemObject& file_system) : file_system_(file_system) {}

    std::vector<std::string> asked;

    bool AddSmallIcon(const std::string& path) override {
        asked.push_back(path);
        return PathExists(file_system_, path);
    }

  private:
    FileSystemObject& file_system_;
};

}  // namespace tidemark
