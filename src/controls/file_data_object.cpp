#include "controls/file_data_object.h"

#include <ole2.h>
#include <shlobj.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <new>
#include <span>
#include <utility>

#include "controls/clipboard_format.h"
#include "controls/drop_files.h"
#include "ui/last_resort.h"

namespace tidemark {
namespace {

HGLOBAL GlobalCopy(std::span<const std::byte> bytes) {
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    if (memory == nullptr) {
        return nullptr;
    }
    void* const address = ::GlobalLock(memory);
    std::memcpy(address, bytes.data(), bytes.size());
    ::GlobalUnlock(memory);
    return memory;
}

// A second medium with the same data: a copy of global memory, a reference to a stream.
HRESULT Duplicate(const FORMATETC& format, const STGMEDIUM& from, STGMEDIUM& to) {
    to = {};
    switch (from.tymed) {
        case TYMED_HGLOBAL:
            to.hGlobal = ::OleDuplicateData(from.hGlobal, format.cfFormat, 0);
            if (to.hGlobal == nullptr) {
                return E_OUTOFMEMORY;
            }
            break;
        case TYMED_ISTREAM:
            to.pstm = from.pstm;
            to.pstm->AddRef();
            break;
        default:
            return DV_E_TYMED;
    }
    to.tymed = from.tymed;
    return S_OK;
}

}  // namespace

FileDataObject::~FileDataObject() {
    Clear();
}

FileDataObject::Entry* FileDataObject::Find(const FORMATETC& format) {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.format.cfFormat == format.cfFormat &&
               entry.format.dwAspect == format.dwAspect && entry.format.lindex == format.lindex;
    });
    return found == entries_.end() ? nullptr : &*found;
}

FileDataObject::Entry& FileDataObject::FindOrAdd(const FORMATETC& format) {
    if (Entry* entry = Find(format)) {
        return *entry;
    }
    Entry entry;
    entry.format = format;
    // Data that is kept is not bound to the device that someone once had in mind.
    entry.format.ptd = nullptr;
    return entries_.emplace_back(entry);
}

bool FileDataObject::GetFormat(std::int16_t format) {
    return Find(ContentsIn(format, TYMED_HGLOBAL)) != nullptr;
}

void FileDataObject::SetFiles(std::vector<std::string> paths) {
    const HGLOBAL memory = GlobalCopy(BuildDropFiles(paths));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    Entry& entry = FindOrAdd(ContentsIn(kFileListFormat, TYMED_HGLOBAL));
    ::ReleaseStgMedium(&entry.medium);
    entry.format.tymed = TYMED_HGLOBAL;
    entry.medium = {};
    entry.medium.tymed = TYMED_HGLOBAL;
    entry.medium.hGlobal = memory;
    files_ = std::move(paths);
}

void FileDataObject::OfferFormat(std::int16_t format) {
    FindOrAdd(ContentsIn(format, TYMED_HGLOBAL));
}

void FileDataObject::Clear() {
    for (Entry& entry : entries_) {
        ::ReleaseStgMedium(&entry.medium);
    }
    entries_.clear();
    files_.clear();
}

HRESULT FileDataObject::GetData(FORMATETC* format, STGMEDIUM* medium) {
    if (format == nullptr || medium == nullptr) {
        return E_INVALIDARG;
    }
    *medium = {};
    const HRESULT offered = QueryGetData(format);
    if (offered != S_OK) {
        return offered;
    }
    if (Find(*format)->medium.tymed == TYMED_NULL && source_ != nullptr) {
        Guarded(nullptr,
                [&] { source_->SetData(*this, static_cast<std::int16_t>(format->cfFormat)); });
    }
    const Entry* entry = Find(*format);  // anew: the source may have rearranged everything
    if (entry == nullptr || entry->medium.tymed == TYMED_NULL) {
        return DV_E_FORMATETC;
    }
    return Duplicate(entry->format, entry->medium, *medium);
}

HRESULT FileDataObject::GetDataHere(FORMATETC* /*format*/, STGMEDIUM* /*medium*/) {
    return DATA_E_FORMATETC;
}

HRESULT FileDataObject::QueryGetData(FORMATETC* format) {
    if (format == nullptr) {
        return E_INVALIDARG;
    }
    const Entry* entry = Find(*format);
    if (entry == nullptr) {
        return DV_E_FORMATETC;
    }
    return (entry->format.tymed & format->tymed) != 0 ? S_OK : DV_E_TYMED;
}

HRESULT FileDataObject::GetCanonicalFormatEtc(FORMATETC* in, FORMATETC* out) {
    if (in == nullptr || out == nullptr) {
        return E_INVALIDARG;
    }
    *out = *in;
    out->ptd = nullptr;
    return DATA_S_SAMEFORMATETC;
}

HRESULT FileDataObject::SetData(FORMATETC* format, STGMEDIUM* medium, BOOL release) {
    if (format == nullptr || medium == nullptr) {
        return E_INVALIDARG;
    }
    return Guarded(nullptr, HRESULT{E_OUTOFMEMORY}, [&] {
        STGMEDIUM kept = *medium;
        if (!release) {
            const HRESULT copied = Duplicate(*format, *medium, kept);
            if (FAILED(copied)) {
                return copied;
            }
        }
        Entry& entry = FindOrAdd(*format);
        ::ReleaseStgMedium(&entry.medium);
        entry.format.tymed = kept.tymed;
        entry.medium = kept;
        return HRESULT{S_OK};
    });
}

HRESULT FileDataObject::EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) {
    if (formats == nullptr) {
        return E_INVALIDARG;
    }
    *formats = nullptr;
    if (direction != DATADIR_GET) {
        return E_NOTIMPL;
    }
    return Guarded(nullptr, HRESULT{E_OUTOFMEMORY}, [&] {
        std::vector<FORMATETC> offered;
        std::transform(entries_.begin(), entries_.end(), std::back_inserter(offered),
                       [](const Entry& entry) { return entry.format; });
        return ::SHCreateStdEnumFmtEtc(static_cast<UINT>(offered.size()), offered.data(), formats);
    });
}

HRESULT FileDataObject::DAdvise(FORMATETC* /*format*/, DWORD /*flags*/, IAdviseSink* /*sink*/,
                                DWORD* /*connection*/) {
    return OLE_E_ADVISENOTSUPPORTED;
}

HRESULT FileDataObject::DUnadvise(DWORD /*connection*/) {
    return OLE_E_ADVISENOTSUPPORTED;
}

HRESULT FileDataObject::EnumDAdvise(IEnumSTATDATA** /*advises*/) {
    return OLE_E_ADVISENOTSUPPORTED;
}

}  // namespace tidemark
