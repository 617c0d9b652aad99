#include "platform/win32/win32_file_system_object.h"

#include <string_view>

#include "platform/win32/system_message.h"
#include "platform/win32/system_path.h"
#include "platform/win32/wide_text.h"

// Needs <windows.h> before it.
#include <shellapi.h>

namespace tidemark {
namespace {

// A result of the component; clears itself.
class Variant {
  public:
    Variant() { ::VariantInit(&value_); }
    ~Variant() { ::VariantClear(&value_); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;

    [[nodiscard]] VARIANT& Put() { return value_; }
    [[nodiscard]] bool IsTrue() const {
        return value_.vt == VT_BOOL && value_.boolVal != VARIANT_FALSE;
    }
    [[nodiscard]] IDispatch* Object() const {
        return value_.vt == VT_DISPATCH ? value_.pdispVal : nullptr;
    }
    [[nodiscard]] std::optional<std::int32_t> Number() const {
        return value_.vt == VT_I4 ? std::optional<std::int32_t>(value_.lVal) : std::nullopt;
    }
    [[nodiscard]] std::optional<std::wstring_view> Text() const {
        if (value_.vt != VT_BSTR) {
            return std::nullopt;
        }
        return std::wstring_view(value_.bstrVal, ::SysStringLen(value_.bstrVal));
    }

  private:
    VARIANT value_;
};

// A text argument of the component.
class Bstr {
  public:
    explicit Bstr(const std::wstring& text)
        : text_(::SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    ~Bstr() { ::SysFreeString(text_); }
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;

    [[nodiscard]] BSTR Get() const { return text_; }

  private:
    BSTR text_;
};

[[noreturn]] void ThrowComponentFailed(HRESULT result) {
    ThrowSystemError(static_cast<std::uint32_t>(result),
                     "Asking Scripting.FileSystemObject for its drives");
}

std::string ShellTypeName(const std::wstring& path, DWORD attributes, UINT flags) {
    SHFILEINFOW info{};
    if (::SHGetFileInfoW(path.c_str(), attributes, &info, sizeof info, SHGFI_TYPENAME | flags) ==
        0) {
        return {};
    }
    return Utf8FromWide(info.szTypeName);
}

}  // namespace

HRESULT DispatchMember::Invoke(IDispatch& object, const std::wstring* argument, VARIANT& result) {
    ::VariantInit(&result);
    if (!id_) {
        auto* name = const_cast<LPOLESTR>(name_);
        DISPID id = 0;
        const HRESULT found =
            object.GetIDsOfNames(IID_NULL, &name, /*cNames=*/1, LOCALE_USER_DEFAULT, &id);
        if (FAILED(found)) {
            return found;
        }
        id_ = id;
    }
    const Bstr text(argument != nullptr ? *argument : std::wstring());
    VARIANTARG value;
    ::VariantInit(&value);
    value.vt = VT_BSTR;
    value.bstrVal = text.Get();
    DISPPARAMS parameters{};
    parameters.rgvarg = &value;
    parameters.cArgs = argument != nullptr ? 1 : 0;
    return object.Invoke(*id_, IID_NULL, LOCALE_USER_DEFAULT,
                         DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters, &result,
                         /*pExcepInfo=*/nullptr, /*puArgErr=*/nullptr);
}

std::int32_t Win32FileSystemObject::DriveCount() {
    const HRESULT created = Create();
    if (FAILED(created)) {
        ThrowComponentFailed(created);
    }
    Variant drives;
    const HRESULT listed = drives_.Invoke(*component_.Get(), /*argument=*/nullptr, drives.Put());
    if (FAILED(listed) || drives.Object() == nullptr) {
        ThrowComponentFailed(FAILED(listed) ? listed : E_UNEXPECTED);
    }
    Variant count;
    const HRESULT counted = count_.Invoke(*drives.Object(), /*argument=*/nullptr, count.Put());
    if (FAILED(counted) || !count.Number()) {
        ThrowComponentFailed(FAILED(counted) ? counted : E_UNEXPECTED);
    }
    return *count.Number();
}

bool Win32FileSystemObject::FileExists(const std::string& path) {
    return Exists(path, Kind::kFile);
}

bool Win32FileSystemObject::FolderExists(const std::string& path) {
    return Exists(path, Kind::kFolder);
}

std::string Win32FileSystemObject::TypeName(const std::string& path) {
    const bool file = FileExists(path);
    if (!file && !FolderExists(path)) {
        return {};
    }
    std::wstring wide;
    const bool extended = AssignSystemPath(wide, path);
    if (const auto name = ComponentTypeName(wide, file ? Kind::kFile : Kind::kFolder)) {
        return *name;
    }
    if (!extended) {
        return ShellTypeName(wide, /*attributes=*/0, /*flags=*/0);
    }
    // The shell does not read extended paths: it is asked for a file or folder of that name, which
    // is all it looks at.
    const std::size_t end = wide.find_last_not_of(L'\\') + 1;
    const std::size_t start = wide.find_last_of(L'\\', end - 1) + 1;
    return ShellTypeName(wide.substr(start, end - start),
                         file ? FILE_ATTRIBUTE_NORMAL : FILE_ATTRIBUTE_DIRECTORY,
                         SHGFI_USEFILEATTRIBUTES);
}

HRESULT Win32FileSystemObject::Create() {
    if (component_) {
        return S_OK;
    }
    CLSID id{};
    const HRESULT found = ::CLSIDFromProgID(L"Scripting.FileSystemObject", &id);
    if (FAILED(found)) {
        return found;
    }
    return ::CoCreateInstance(id, /*pUnkOuter=*/nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                              component_.PutVoid());
}

bool Win32FileSystemObject::Exists(const std::string& path, Kind kind) {
    if (FAILED(Create())) {
        return false;
    }
    std::wstring wide;
    const bool extended = AssignSystemPath(wide, path);
    DispatchMember& member = kind == Kind::kFile ? file_exists_ : folder_exists_;
    Variant answer;
    if (SUCCEEDED(member.Invoke(*component_.Get(), &wide, answer.Put())) && answer.IsTrue()) {
        return true;
    }
    if (!extended) {
        return false;
    }
    // The component is documented for ordinary paths only. A "no" to an extended one is asked again
    // of the kernel, which understands them all.
    const DWORD attributes = ::GetFileAttributesW(wide.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) == (kind == Kind::kFolder);
}

// Nothing when the component or its member fails.
std::optional<std::string> Win32FileSystemObject::ComponentTypeName(const std::wstring& path,
                                                                    Kind kind) {
    DispatchMember& get = kind == Kind::kFile ? get_file_ : get_folder_;
    DispatchMember& type = kind == Kind::kFile ? file_type_ : folder_type_;
    Variant entry;
    if (FAILED(get.Invoke(*component_.Get(), &path, entry.Put())) || entry.Object() == nullptr) {
        return std::nullopt;
    }
    Variant name;
    if (FAILED(type.Invoke(*entry.Object(), /*argument=*/nullptr, name.Put())) || !name.Text()) {
        return std::nullopt;
    }
    return Utf8FromWide(*name.Text());
}

}  // namespace tidemark
