#pragma once

#include <optional>

#include "platform/kernel_files.h"

namespace tidemark {

// The kernel's file calls themselves. For one thread.
class Win32KernelFiles final : public KernelFiles {
  public:
    [[nodiscard]] SearchHandle SearchFirst(const std::string& pattern, FoundEntry& entry) override;
    [[nodiscard]] bool SearchNext(SearchHandle search, FoundEntry& entry) override;
    bool SearchClose(SearchHandle search) override;
    [[nodiscard]] std::uint32_t ReadAttributes(const std::string& path) override;
    bool WriteAttributes(const std::string& path, std::uint32_t attributes) override;
    bool ReadIdentity(const std::string& path, FileIdentity& identity) override;
    [[nodiscard]] FileHandle OpenForTimes(const std::string& path,
                                          std::uint32_t flags_and_attributes) override;
    [[nodiscard]] std::uint32_t ReadAttributesOf(FileHandle file) override;
    bool SetLastWriteTime(FileHandle file, FileTime time) override;
    bool SetCreationTime(FileHandle file, FileTime time) override;
    bool CloseFile(FileHandle file) override;
    bool LocalToSystemTime(FileTime local, FileTime& system) override;
    [[nodiscard]] std::string MessageText(std::uint32_t code) override;
    [[nodiscard]] bool IsNtFamily() override;
    [[nodiscard]] std::uint32_t LastError() const override { return last_error_; }

  private:
    // Makes the one system call in `call`; what error it leaves is its own and no earlier one's.
    template <typename Call>
    auto Captured(Call call);
    const wchar_t* ForCall(const std::string& path);

    std::uint32_t last_error_ = 0;
    std::optional<bool> is_nt_family_;
    // The wide path of the call being made: its memory serves all calls.
    std::wstring wide_path_;
};

}  // namespace tidemark
