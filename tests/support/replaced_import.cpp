#include "support/replaced_import.h"

#include <gtest/gtest.h>

#include <cstring>

#include "platform/win32/windows.h"

namespace tidemark {
namespace {

// Where the program keeps the address of an imported function; null when it imports none of that
// name.
void** SlotOf(const char* function) {
    auto* const image = reinterpret_cast<BYTE*>(::GetModuleHandleW(nullptr));
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& imports =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* library =
        reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(image + imports.VirtualAddress);
    for (; library->Name != 0; ++library) {
        const auto* name =
            reinterpret_cast<const IMAGE_THUNK_DATA*>(image + library->OriginalFirstThunk);
        auto* slot = reinterpret_cast<void**>(image + library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++slot) {
            const auto* const entry =
                reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(image + name->u1.AddressOfData);
            if (!IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal) &&
                std::strcmp(reinterpret_cast<const char*>(entry->Name), function) == 0) {
                return slot;
            }
        }
    }
    return nullptr;
}

void Write(void** slot, void* function) {
    DWORD before = 0;
    ::VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &before);
    *slot = function;
    ::VirtualProtect(slot, sizeof *slot, before, &before);
}

}  // namespace

ReplacedImport::ReplacedImport(const char* function, void* stand_in) : slot_(SlotOf(function)) {
    EXPECT_NE(slot_, nullptr) << function << " is not imported";
    if (slot_ != nullptr) {
        original_ = *slot_;
        Write(slot_, stand_in);
    }
}

ReplacedImport::~ReplacedImport() {
    if (slot_ != nullptr) {
        Write(slot_, original_);
    }
}

}  // namespace tidemark
