#include "app/picture.h"

#include <cstddef>

#include "platform/win32/system_message.h"

namespace tidemark {

Picture::Picture(const wchar_t* name) {
    const HMODULE module = ::GetModuleHandleW(nullptr);
    const HRSRC resource = ::FindResourceW(module, name, RT_BITMAP);
    if (resource == nullptr) {
        ThrowSystemError(::GetLastError(), "Finding a picture");
    }
    // Neither is to be given back: resources are part of the program's own image.
    const HGLOBAL loaded = ::LoadResource(module, resource);
    const void* const packed = loaded == nullptr ? nullptr : ::LockResource(loaded);
    if (packed == nullptr) {
        ThrowSystemError(::GetLastError(), "Loading a picture");
    }
    info_ = static_cast<const BITMAPINFO*>(packed);
    const BITMAPINFOHEADER& header = info_->bmiHeader;
    const std::size_t colours = header.biClrUsed != 0    ? header.biClrUsed
                                : header.biBitCount <= 8 ? std::size_t{1} << header.biBitCount
                                                         : 0;
    bits_ = static_cast<const std::byte*>(packed) + header.biSize + colours * sizeof(RGBQUAD);
}

Size Picture::Extent() const {
    return {static_cast<int>(info_->bmiHeader.biWidth),
            static_cast<int>(info_->bmiHeader.biHeight)};
}

void Picture::Paint(HDC dc) const {
    const Size extent = Extent();
    ::SetDIBitsToDevice(dc, /*xDest=*/0, /*yDest=*/0, static_cast<DWORD>(extent.width),
                        static_cast<DWORD>(extent.height), /*xSrc=*/0, /*ySrc=*/0,
                        /*StartScan=*/0, static_cast<UINT>(extent.height), bits_, info_,
                        DIB_RGB_COLORS);
}

}  // namespace tidemark
