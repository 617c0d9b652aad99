#include "platform/path_form.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/text.h"

namespace tidemark {
namespace {

constexpr std::string_view kSeparators = "\\/";
constexpr std::size_t kShortestDevice = 3;  // "CON"
constexpr std::size_t kLongestDevice = 7;   // "CONOUT$"

bool IsSeparator(char c) {
    return c == '\\' || c == '/';
}

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool HasDrive(std::string_view path) {
    return path.size() >= 2 && IsLetter(path[0]) && path[1] == ':';
}

bool EqualsUpper(std::string_view text, std::string_view upper) {
    return std::equal(text.begin(), text.end(), upper.begin(), upper.end(), [](char a, char b) {
        return (a >= 'a' && a <= 'z' ? static_cast<char>(a - 'a' + 'A') : a) == b;
    });
}

// COM1 ... LPT9; the superscripts of Latin-1 count as digits.
bool IsPortName(std::string_view name) {
    if (name.size() < 4 ||
        !(EqualsUpper(name.substr(0, 3), "COM") || EqualsUpper(name.substr(0, 3), "LPT"))) {
        return false;
    }
    const std::string_view digit = name.substr(3);
    return (digit.size() == 1 && digit[0] >= '1' && digit[0] <= '9') || digit == "\xC2\xB9" ||
           digit == "\xC2\xB2" || digit == "\xC2\xB3";
}

bool IsDeviceName(std::string_view component) {
    const auto end = std::find_if(component.begin(), component.end(),
                                  [](char c) { return c == '.' || c == ':'; });
    std::string_view name = component.substr(0, static_cast<std::size_t>(end - component.begin()));
    name = name.substr(0, name.find_last_not_of(' ') + 1);
    if (name.size() < kShortestDevice || name.size() > kLongestDevice) {
        return false;
    }
    constexpr std::array<std::string_view, 6> kDevices = {"CON", "PRN",    "AUX",
                                                          "NUL", "CONIN$", "CONOUT$"};
    return IsPortName(name) || std::any_of(kDevices.begin(), kDevices.end(),
                                           [&](auto device) { return EqualsUpper(name, device); });
}

bool IsAltered(std::string_view component) {
    if (component.empty() || component == "." || component == "..") {
        return false;
    }
    return component.back() == '.' || component.back() == ' ' || IsDeviceName(component);
}

// Takes the next component off the front of `rest`, with the separator behind it.
std::string_view TakeComponent(std::string_view& rest) {
    const auto separator = std::find_if(rest.begin(), rest.end(), IsSeparator);
    const auto end = static_cast<std::size_t>(separator - rest.begin());
    const std::string_view component = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return component;
}

}  // namespace

PathAnchor AnchorOf(std::string_view path) {
    if (path.size() >= 2 && IsSeparator(path[0]) && IsSeparator(path[1])) {
        const bool device =
            path.size() >= 4 && (path[2] == '?' || path[2] == '.') && IsSeparator(path[3]);
        return device ? PathAnchor::kVerbatim : PathAnchor::kShare;
    }
    if (path.starts_with(R"(\??\)")) {
        return PathAnchor::kVerbatim;
    }
    if (HasDrive(path) && path.size() >= 3 && IsSeparator(path[2])) {
        return PathAnchor::kDrive;
    }
    return PathAnchor::kRelative;
}

bool NeedsExtendedForm(std::string_view path) {
    const PathAnchor anchor = AnchorOf(path);
    if (anchor != PathAnchor::kDrive && anchor != PathAnchor::kShare) {
        return false;
    }
    // UTF-8 never has fewer bytes than UTF-16 has units.
    if (path.size() >= kExtendedLength && Utf16FromUtf8(path).size() >= kExtendedLength) {
        return true;
    }
    std::string_view rest = path;
    if (anchor == PathAnchor::kShare) {
        rest.remove_prefix(2);
        TakeComponent(rest);
    }
    TakeComponent(rest);
    while (!rest.empty()) {
        if (IsAltered(TakeComponent(rest))) {
            return true;
        }
    }
    return false;
}

std::string ExtendedForm(std::string_view path) {
    const bool share = AnchorOf(path) == PathAnchor::kShare;
    std::string_view rest = path;
    std::string extended = R"(\\?\)";
    if (share) {
        rest.remove_prefix(2);
        extended += "UNC\\";
        extended += TakeComponent(rest);
        extended += '\\';
    }
    extended += TakeComponent(rest);
    std::vector<std::string_view> components;
    while (!rest.empty()) {
        const std::string_view component = TakeComponent(rest);
        if (component == "..") {
            if (!components.empty()) {
                components.pop_back();
            }
        } else if (!component.empty() && component != ".") {
            components.push_back(component);
        }
    }
    for (const std::string_view component : components) {
        extended += '\\';
        extended += component;
    }
    // A bare drive is a device, not its root folder.
    if (IsSeparator(path.back()) || (components.empty() && !share)) {
        extended += '\\';
    }
    return extended;
}

RelativeParts SplitRelative(std::string_view path) {
    if (HasDrive(path)) {
        return {std::string(path.substr(0, 2)) + ".", path.substr(2)};
    }
    if (!path.empty() && IsSeparator(path.front())) {
        return {"\\", path.substr(1)};
    }
    return {".", path};
}

std::string ParentPath(std::string_view path) {
    const std::size_t end = path.find_last_not_of(kSeparators) + 1;
    const std::string_view entry = path.substr(0, end);
    const std::size_t separator = entry.find_last_of(kSeparators);
    if (separator == std::string_view::npos) {
        return {};
    }
    const std::size_t parent_end = entry.substr(0, separator + 1).find_last_not_of(kSeparators) + 1;
    const std::string_view parent = entry.substr(0, parent_end);
    const std::size_t prefix = AnchorOf(path) == PathAnchor::kVerbatim ? 4 : 0;
    if (parent_end == prefix + 2 && HasDrive(parent.substr(prefix))) {
        return std::string(parent) + "\\";
    }
    // A share is the root of what it holds: \\server alone is no folder.
    if (AnchorOf(path) == PathAnchor::kShare &&
        parent.find_first_of(kSeparators, 2) == std::string_view::npos) {
        return {};
    }
    return std::string(parent);
}

}  // namespace tidemark
