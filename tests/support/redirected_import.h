#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/win32/windows.h"

namespace tidemark {

// While alive, this program's calls of a function that it imports by name go to another function of
// the same type. Nobody else's do.
template <typename Function>
class RedirectedImport {
  public:
    RedirectedImport(std::string_view name, Function* replacement) : entry_(EntryOf(name)) {
        if (entry_ == nullptr) {
            ADD_FAILURE() << "this program does not import " << name;
            return;
        }
        std::memcpy(&original_, entry_, sizeof(original_));
        Write(replacement);
    }
    ~RedirectedImport() {
        if (entry_ != nullptr) {
            Write(original_);
        }
    }
    RedirectedImport(const RedirectedImport&) = delete;
    RedirectedImport& operator=(const RedirectedImport&) = delete;

    [[nodiscard]] Function* Original() const { return original_; }

  private:
    // The place in this program's table of imports that holds the function's address.
    static void* EntryOf(std::string_view name) {
        auto* const image = reinterpret_cast<char*>(::GetModuleHandleW(nullptr));
        const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
        const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + dos->e_lfanew);
        const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(
            image +
            headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
        for (; library->Name != 0; ++library) {
            const auto* names =
                reinterpret_cast<const IMAGE_THUNK_DATA*>(image + library->OriginalFirstThunk);
            auto* entries = reinterpret_cast<IMAGE_THUNK_DATA*>(image + library->FirstThunk);
            for (; names->u1.AddressOfData != 0; ++names, ++entries) {
                if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) {
                    continue;
                }
                const auto* by_name =
                    reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(image + names->u1.AddressOfData);
                if (name == reinterpret_cast<const char*>(by_name->Name)) {
                    return entries;
                }
            }
        }
        return nullptr;
    }
    void Write(Function* function) {
        DWORD before = 0;
        ::VirtualProtect(entry_, sizeof(function), PAGE_READWRITE, &before);
        std::memcpy(entry_, &function, sizeof(function));
        ::VirtualProtect(entry_, sizeof(function), before, &before);
    }

    void* entry_;
    Function* original_ = nullptr;
};

}  // namespace tidemark
