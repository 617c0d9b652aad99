#pragma once

#include <string>
#include <string_view>

namespace tidemark {

// The path as the system's W calls are to be given it: wide, and in its extended form where it
// needs one (see platform/path_form.h). Replaces the contents of `out`, whose memory is used again.
// Changes the thread's last error at will. True when the form is an extended one that the path
// itself was not.
bool AssignSystemPath(std::wstring& out, std::string_view path);
[[nodiscard]] std::wstring SystemPath(std::string_view path);

}  // namespace tidemark
