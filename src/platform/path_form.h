#pragma once

#include <string>
#include <string_view>

namespace tidemark {

// How a path names its place, which decides what form of it the system's calls are given.
enum class PathAnchor {
    kDrive,     // C:\...
    kShare,     // \\server\share...
    kVerbatim,  // \\?\... and \\.\...: the system takes these as they stand
    kRelative,  // everything else: it depends on a current folder or drive
};
[[nodiscard]] PathAnchor AnchorOf(std::string_view path);

// Paths of this many UTF-16 units and more need the extended form: a folder's path may be no longer
// without it, whatever is in the folder.
inline constexpr std::size_t kExtendedLength = 248;

// Whether the system would refuse or misread the drive or share path as it stands: it is too long,
// or a component of it ends in a dot or a blank or is a reserved device name ("nul.txt"), so that
// another file or none would be meant. Never for the other anchors.
[[nodiscard]] bool NeedsExtendedForm(std::string_view path);

// The drive or share path with the prefix that makes the system take it literally: \\?\C:\... or
// \\?\UNC\server\share\.... What that form does not understand is resolved first (slashes, doubled
// separators, "." and ".."); nothing else about a component changes.
[[nodiscard]] std::string ExtendedForm(std::string_view path);

// A relative path as the place that the system has to be asked for ("." is the current folder,
// "C:." that of a drive, "\" the current drive's root) and what is below it.
struct RelativeParts {
    std::string place;
    std::string_view rest;
};
[[nodiscard]] RelativeParts SplitRelative(std::string_view path);

// Path of the folder that holds the entry, without a trailing backslash except at a drive's root;
// empty when the path has no parent.
[[nodiscard]] std::string ParentPath(std::string_view path);

}  // namespace tidemark
