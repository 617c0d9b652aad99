#pragma once

#include <optional>

#include "platform/file_system_object.h"
#include "platform/win32/com_ptr.h"
#include "platform/win32/windows.h"

// Needs <windows.h> before it.
#include <oleauto.h>

namespace tidemark {

// One member of a component that is reached by name; the name is looked up once.
class DispatchMember {
  public:
    explicit DispatchMember(const wchar_t* name) : name_(name) {}

    // Calls the member of `object`, or reads it, with one text argument or none. `result` is
    // initialised here and cleared by the caller.
    HRESULT Invoke(IDispatch& object, const std::wstring* argument, VARIANT& result);

  private:
    const wchar_t* name_;
    std::optional<DISPID> id_;
};

// The Scripting Runtime's own component. COM must be initialised on the thread before its first
// use, and until it is destroyed.
class Win32FileSystemObject final : public FileSystemObject {
  public:
    [[nodiscard]] std::int32_t DriveCount() override;
    [[nodiscard]] bool FileExists(const std::string& path) override;
    [[nodiscard]] bool FolderExists(const std::string& path) override;
    [[nodiscard]] std::string TypeName(const std::string& path) override;

  private:
    enum class Kind { kFile, kFolder };

    HRESULT Create();
    [[nodiscard]] bool Exists(const std::string& path, Kind kind);
    [[nodiscard]] std::optional<std::string> ComponentTypeName(const std::wstring& path, Kind kind);

    ComPtr<IDispatch> component_;
    DispatchMember drives_{L"Drives"};
    DispatchMember count_{L"Count"};
    DispatchMember file_exists_{L"FileExists"};
    DispatchMember folder_exists_{L"FolderExists"};
    DispatchMember get_file_{L"GetFile"};
    DispatchMember get_folder_{L"GetFolder"};
    DispatchMember file_type_{L"Type"};
    DispatchMember folder_type_{L"Type"};
};

}  // namespace tidemark
