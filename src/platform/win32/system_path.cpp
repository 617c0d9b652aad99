#include "platform/win32/system_path.h"

#include "platform/path_form.h"
#include "platform/text.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"

namespace tidemark {
namespace {

// Full path of a place without components of its own; empty on failure.
std::string FullPath(const std::string& place) {
    const std::wstring wide = WideFromUtf8(place);
    std::wstring full(MAX_PATH, L'\0');
    DWORD length = 0;
    // Another thread may change the current folder between two calls, hence the loop.
    while ((length = ::GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(),
                                        /*lpFilePart=*/nullptr)) > full.size()) {
        full.resize(length);
    }
    full.resize(length);
    return Utf8FromWide(full);
}

// The path from its drive or share on, its components untouched: the system's own way to make a
// path full would strip trailing dots and turn device names into devices.
std::string AbsolutePath(std::string_view path) {
    const RelativeParts parts = SplitRelative(path);
    std::string absolute = FullPath(parts.place);
    if (!absolute.ends_with('\\')) {
        absolute += '\\';
    }
    absolute += parts.rest;
    return absolute;
}

}  // namespace

bool AssignSystemPath(std::wstring& out, std::string_view path) {
    if (NeedsExtendedForm(path)) {
        AssignUtf16(out, ExtendedForm(path));
        return true;
    }
    if (!path.empty() && AnchorOf(path) == PathAnchor::kRelative) {
        const std::string absolute = AbsolutePath(path);
        if (NeedsExtendedForm(absolute)) {
            AssignUtf16(out, ExtendedForm(absolute));
            return true;
        }
    }
    AssignUtf16(out, path);
    return false;
}

std::wstring SystemPath(std::string_view path) {
    std::wstring wide;
    AssignSystemPath(wide, path);
    return wide;
}

}  // namespace tidemark
