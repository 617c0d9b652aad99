#pragma once

#include <objidl.h>

#include <string>
#include <vector>

#include "controls/ole_drag_drop.h"
#include "platform/win32/com_object.h"

namespace tidemark {

// The data of a drag that starts here, as OLE hands it to targets: a file list, formats that are
// offered before there is data, and whatever the shell's helpers attach to it. Made with `new`;
// lives until the last target lets go of it.
class FileDataObject final : public ComObject<IDataObject>, public DragSourceData {
  public:
    // `source` hears SetData when a format without data is asked for; not owned.
    explicit FileDataObject(OleDragDropSink& source) : source_(&source) {}

    // The source may go; formats still without data stay so.
    void Disconnect() { source_ = nullptr; }

    // DragSourceData. Files set again replace the ones before.
    bool GetFormat(std::int16_t format) override;
    const std::vector<std::string>& Files() override { return files_; }
    void SetFiles(std::vector<std::string> paths) override;
    void OfferFormat(std::int16_t format) override;
    void Clear() override;

    // IDataObject. Global memory is handed out as copies, streams by reference, other media not at
    // all.
    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override;
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC* format, STGMEDIUM* medium) override;
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override;
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC* in, FORMATETC* out) override;
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC* format, STGMEDIUM* medium, BOOL release) override;
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override;
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink,
                                      DWORD* connection) override;
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD connection) override;
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA** advises) override;

  private:
    // A format and its data; none yet while the medium is empty.
    struct Entry {
        FORMATETC format{};
        STGMEDIUM medium{};
    };

    ~FileDataObject() override;

    Entry* Find(const FORMATETC& format);
    Entry& FindOrAdd(const FORMATETC& format);

    OleDragDropSink* source_;
    std::vector<std::string> files_;
    std::vector<Entry> entries_;
};

}  // namespace tidemark
