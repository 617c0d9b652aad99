#include "controls/file_drop_data.h"

#include <ole2.h>

#include <span>
#include <string_view>

#include "controls/clipboard_format.h"
#include "controls/drop_files.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

// What GetData handed out, given back however the reading ends.
class Medium {
  public:
    Medium() = default;
    Medium(const Medium&) = delete;
    Medium& operator=(const Medium&) = delete;
    ~Medium() { ::ReleaseStgMedium(&medium_); }

    [[nodiscard]] STGMEDIUM* Put() { return &medium_; }
    [[nodiscard]] HGLOBAL Memory() const {
        return medium_.tymed == TYMED_HGLOBAL ? medium_.hGlobal : nullptr;
    }

  private:
    STGMEDIUM medium_{};
};

class LockedMemory {
  public:
    explicit LockedMemory(HGLOBAL memory) : memory_(memory) {
        if (memory_ != nullptr) {
            address_ = ::GlobalLock(memory_);
        }
    }
    LockedMemory(const LockedMemory&) = delete;
    LockedMemory& operator=(const LockedMemory&) = delete;
    ~LockedMemory() {
        if (address_ != nullptr) {
            ::GlobalUnlock(memory_);
        }
    }

    // Sized by the system's own books, not by what the block says about itself.
    [[nodiscard]] std::span<const std::byte> Bytes() const {
        if (address_ == nullptr) {
            return {};
        }
        return {static_cast<const std::byte*>(address_), ::GlobalSize(memory_)};
    }

  private:
    HGLOBAL memory_;
    void* address_ = nullptr;
};

std::optional<std::wstring> Decode(UINT code_page, DWORD flags, std::string_view text) {
    const int length = static_cast<int>(text.size());
    const int wide_length =
        ::MultiByteToWideChar(code_page, flags, text.data(), length, nullptr, 0);
    if (wide_length <= 0) {
        return std::nullopt;
    }
    std::wstring wide(static_cast<std::size_t>(wide_length), L'\0');
    ::MultiByteToWideChar(code_page, flags, text.data(), length, wide.data(), wide_length);
    return wide;
}

// An 8-bit name is UTF-8 when it can be read as such: hardly any other text can.
std::string DecodeNarrow(std::string_view name) {
    std::optional<std::wstring> wide = Decode(CP_UTF8, MB_ERR_INVALID_CHARS, name);
    if (!wide) {
        wide = Decode(CP_ACP, 0, name);
    }
    return wide ? Utf8FromWide(*wide) : std::string(name);
}

}  // namespace

std::vector<std::string> ReadFileDrop(IDataObject& data) {
    FORMATETC format = ContentsIn(kFileListFormat, TYMED_HGLOBAL);
    Medium medium;
    if (FAILED(data.GetData(&format, medium.Put()))) {
        return {};
    }
    const LockedMemory memory(medium.Memory());
    return ParseDropFiles(memory.Bytes(), DecodeNarrow).value_or(std::vector<std::string>{});
}

bool OffersFormat(IDataObject& data, std::int16_t format) {
    constexpr DWORD kAnyMedium = TYMED_HGLOBAL | TYMED_FILE | TYMED_ISTREAM | TYMED_ISTORAGE |
                                 TYMED_GDI | TYMED_MFPICT | TYMED_ENHMF;
    FORMATETC wanted = ContentsIn(format, kAnyMedium);
    return data.QueryGetData(&wanted) == S_OK;
}

bool ReceivedDragData::GetFormat(std::int16_t format) {
    return OffersFormat(*data_.Get(), format);
}

const std::vector<std::string>& ReceivedDragData::Files() {
    if (!files_) {
        files_ = ReadFileDrop(*data_.Get());
    }
    return *files_;
}

}  // namespace tidemark
