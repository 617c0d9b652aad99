#pragma once

#include <string>
#include <unordered_map>

namespace tidemark {

// Where a KeyedImageList's pictures really are: an image list of the system, or a test's.
class PictureStore {
  public:
    virtual ~PictureStore() = default;
    // Adds the shell's small icon of a path as the next picture. False when the path yields none,
    // and nothing was added.
    virtual bool AddSmallIcon(const std::string& path) = 0;
};

// Pictures found by key, numbered from 1 in the order they were added.
class KeyedImageList {
  public:
    // The store is not owned and outlives the list.
    explicit KeyedImageList(PictureStore& store) : store_(store) {}

    [[nodiscard]] int Count() const { return count_; }
    // 1-based index of the picture under the key, or -1 when there is none (an empty key is none).
    [[nodiscard]] int Index(const std::string& key) const;
    // Adds the small icon of the path under the key; a path that yields no icon adds nothing.
    // With an empty key the picture has none. Throws ProgramError (duplicate key) when the key is
    // taken.
    void Add(const std::string& key, const std::string& path);

  private:
    PictureStore& store_;
    std::unordered_map<std::string, int> indices_;
    int count_ = 0;
};

}  // namespace tidemark
