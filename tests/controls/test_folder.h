#pragma once

#include <string>

namespace tidemark {

// A folder of its own for a test, in the user's temporary folder; goes with all it holds. Paths are
// UTF-8, full, without a final backslash.
class TestFolder {
  public:
    TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder();

    [[nodiscard]] const std::string& Path() const { return path_; }
    // The full path of what was made.
    std::string AddFolder(const std::string& name) const;
    std::string AddFile(const std::string& name) const;

  private:
    std::string path_;
};

}  // namespace tidemark
