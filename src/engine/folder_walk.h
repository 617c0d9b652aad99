#pragma once

#include <cstdint>
#include <string>

#include "platform/platform.h"

namespace tidemark {

// What a walk over folders does with what it meets.
class FolderVisitor {
  public:
    // Asked after every time messages ran: false ends the whole walk at once.
    [[nodiscard]] virtual bool MayGoOn() = 0;
    // Asked on entry to each folder, the first included: false leaves it unlisted, and the walk
    // goes on in the folder that holds it.
    [[nodiscard]] virtual bool MayEnter() = 0;
    // Full path of a file, or of a folder ("\" at its end) that is about to be entered, and its
    // attributes as they were listed.
    virtual void VisitFile(const std::string& path, std::uint32_t attributes) = 0;
    virtual void VisitFolder(const std::string& path, std::uint32_t attributes) = 0;
    // A file or folder whose name no path can hold (see IsOneComponent). `path` is for the user to
    // read and leads nowhere.
    virtual void VisitMisnamed(const std::string& path, bool folder) = 0;

  protected:
    ~FolderVisitor() = default;
};

// Walks a folder ("\" at its end) and everything below it, each folder before its contents, and
// lets pending messages run on entry to each folder, before and after each entry, and between tries
// to fetch an entry that the system fails to give. Folders whose name begins with a dot are left
// out with all they hold, which covers "." and ".."; links to folders are folders. A link to a
// folder that it lies in is visited and not entered; it may also lie above the folder that is
// walked. A folder that cannot be listed counts as empty. Searches are closed however the walk
// ends.
void WalkFolder(const Platform& platform, const std::string& folder, FolderVisitor& visitor);

}  // namespace tidemark
