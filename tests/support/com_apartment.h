#pragma once

#include "platform/win32/windows.h"

// Needs <windows.h> before it.
#include <objbase.h>

namespace tidemark {

// COM on the thread of a test, which the Scripting Runtime needs, for as long as it lives.
class ComApartment {
  public:
    ComApartment() { ::CoInitializeEx(/*pvReserved=*/nullptr, COINIT_APARTMENTTHREADED); }
    ~ComApartment() { ::CoUninitialize(); }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;
};

}  // namespace tidemark
