#include "controls/file_data_object.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <shellapi.h>

#include <array>

#include "controls/clipboard_format.h"
#include "controls/file_drop_data.h"
#include "controls/ole_session.h"
#include "platform/win32/wide_text.h"
#include "support/com_testing.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A source that counts what it is asked for and fills the file list late.
class LateSource final : public OleDragDropSink {
  public:
    void SetData(DragSourceData& data, std::int16_t format) override {
        asked.push_back(format);
        if (format == kFileListFormat) {
            data.SetFiles({"C:\\late"});
        }
    }
    std::vector<int> asked;
};

class FileDataObjectTest : public ::testing::Test {
  protected:
    ~FileDataObjectTest() override { EXPECT_EQ(References(*data_.Get()), 1U) << "data leaked"; }

    std::vector<int> OfferedFormats() {
        ComPtr<IEnumFORMATETC> formats;
        EXPECT_EQ(data_->EnumFormatEtc(DATADIR_GET, formats.Put()), S_OK);
        std::vector<int> offered;
        FORMATETC format{};
        while (formats && formats->Next(1, &format, nullptr) == S_OK) {
            offered.push_back(format.cfFormat);
        }
        return offered;
    }

    OleSession ole_;
    LateSource source_;
    ComPtr<FileDataObject> data_ = ComPtr<FileDataObject>::Adopt(new FileDataObject(source_));
};

TEST_F(FileDataObjectTest, WithoutFilesItOffersNothing) {
    EXPECT_FALSE(data_->GetFormat(kFileListFormat));
    EXPECT_FALSE(OffersFormat(*data_.Get(), kFileListFormat));
    EXPECT_THAT(ReadFileDrop(*data_.Get()), IsEmpty());
    EXPECT_THAT(OfferedFormats(), IsEmpty());
}

TEST_F(FileDataObjectTest, TheSystemReadsItsFileList) {
    data_->SetFiles({"C:\\\u6f6e.txt", "D:\\b c\\"});
    FORMATETC format = ContentsIn(CF_HDROP, TYMED_HGLOBAL);
    STGMEDIUM medium{};
    ASSERT_EQ(data_->GetData(&format, &medium), S_OK);
    ASSERT_EQ(medium.tymed, static_cast<DWORD>(TYMED_HGLOBAL));
    const auto drop = static_cast<HDROP>(medium.hGlobal);
    ASSERT_EQ(::DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0), 2U);
    std::array<wchar_t, MAX_PATH> name{};
    ::DragQueryFileW(drop, 0, name.data(), MAX_PATH);
    EXPECT_EQ(Utf8FromWide(name.data()), "C:\\\u6f6e.txt");
    ::DragQueryFileW(drop, 1, name.data(), MAX_PATH);
    EXPECT_EQ(Utf8FromWide(name.data()), "D:\\b c\\");
    ::ReleaseStgMedium(&medium);
    EXPECT_THAT(OfferedFormats(), ElementsAre(CF_HDROP));
}

TEST_F(FileDataObjectTest, FilesSetAgainReplaceTheOnesBefore) {
    data_->SetFiles({"C:\\a", "C:\\b"});
    data_->SetFiles({"C:\\c"});
    EXPECT_THAT(ReadFileDrop(*data_.Get()), ElementsAre("C:\\c"));
    EXPECT_THAT(data_->Files(), ElementsAre("C:\\c"));
    EXPECT_THAT(OfferedFormats(), ElementsAre(CF_HDROP));
}

TEST_F(FileDataObjectTest, AnEmptyFileListIsOfferedAndHoldsNoFiles) {
    data_->SetFiles({});
    EXPECT_TRUE(OffersFormat(*data_.Get(), kFileListFormat));
    EXPECT_THAT(ReadFileDrop(*data_.Get()), IsEmpty());
}

TEST_F(FileDataObjectTest, AFormatOfferedWithoutDataIsAskedOfTheSourceOnce) {
    data_->OfferFormat(kFileListFormat);
    EXPECT_TRUE(data_->GetFormat(kFileListFormat));
    EXPECT_THAT(source_.asked, IsEmpty());
    EXPECT_THAT(ReadFileDrop(*data_.Get()), ElementsAre("C:\\late"));
    EXPECT_THAT(ReadFileDrop(*data_.Get()), ElementsAre("C:\\late"));
    EXPECT_THAT(source_.asked, ElementsAre(CF_HDROP));
}

TEST_F(FileDataObjectTest, AfterTheDragTheSourceIsNotAskedAnyMore) {
    data_->OfferFormat(kFileListFormat);
    data_->Disconnect();
    EXPECT_THAT(ReadFileDrop(*data_.Get()), IsEmpty());
    EXPECT_THAT(source_.asked, IsEmpty());
}

TEST_F(FileDataObjectTest, ASourceThatStillHasNothingLeavesTheFormatEmpty) {
    data_->OfferFormat(CF_UNICODETEXT);
    FORMATETC format = ContentsIn(CF_UNICODETEXT, TYMED_HGLOBAL);
    STGMEDIUM medium{};
    EXPECT_EQ(data_->GetData(&format, &medium), DV_E_FORMATETC);
    EXPECT_THAT(source_.asked, ElementsAre(CF_UNICODETEXT));
}

TEST_F(FileDataObjectTest, ClearWithdrawsEverything) {
    data_->SetFiles({"C:\\a"});
    data_->OfferFormat(CF_UNICODETEXT);
    data_->Clear();
    EXPECT_THAT(OfferedFormats(), IsEmpty());
    EXPECT_THAT(data_->Files(), IsEmpty());
}

TEST_F(FileDataObjectTest, AnotherMediumThanTheKeptOneIsRefused) {
    data_->SetFiles({"C:\\a"});
    FORMATETC format = ContentsIn(CF_HDROP, TYMED_ISTREAM);
    STGMEDIUM medium{};
    EXPECT_EQ(data_->QueryGetData(&format), DV_E_TYMED);
    EXPECT_EQ(data_->GetData(&format, &medium), DV_E_TYMED);
    EXPECT_EQ(data_->GetData(nullptr, &medium), E_INVALIDARG);
    EXPECT_EQ(data_->GetData(&format, nullptr), E_INVALIDARG);
}

TEST_F(FileDataObjectTest, WhatHelpersAttachIsKeptAndHandedOutAsCopies) {
    const auto own = static_cast<int>(::RegisterClipboardFormatW(L"Tidemark Test Format"));
    FORMATETC format = ContentsIn(static_cast<std::int16_t>(own), TYMED_HGLOBAL);
    const std::vector<std::byte> bytes{std::byte{1}, std::byte{2}};
    STGMEDIUM mine{};
    mine.tymed = TYMED_HGLOBAL;
    mine.hGlobal = GlobalBytes(bytes);
    // Copied, then handed over: the second replaces the first.
    ASSERT_EQ(data_->SetData(&format, &mine, FALSE), S_OK);
    ASSERT_EQ(data_->SetData(&format, &mine, TRUE), S_OK);

    STGMEDIUM first{};
    STGMEDIUM second{};
    ASSERT_EQ(data_->GetData(&format, &first), S_OK);
    ASSERT_EQ(data_->GetData(&format, &second), S_OK);
    EXPECT_NE(first.hGlobal, mine.hGlobal);
    EXPECT_NE(first.hGlobal, second.hGlobal);
    EXPECT_EQ(*static_cast<const char*>(::GlobalLock(second.hGlobal)), 1);
    ::GlobalUnlock(second.hGlobal);
    ::ReleaseStgMedium(&first);
    ::ReleaseStgMedium(&second);
    EXPECT_THAT(OfferedFormats(), ElementsAre(own));
}

TEST_F(FileDataObjectTest, StreamsAreHandedOutByReferenceAndLetGo) {
    ComPtr<IStream> stream;
    ASSERT_EQ(::CreateStreamOnHGlobal(nullptr, TRUE, stream.Put()), S_OK);
    FORMATETC format = ContentsIn(CF_UNICODETEXT, TYMED_ISTREAM);
    STGMEDIUM mine{};
    mine.tymed = TYMED_ISTREAM;
    mine.pstm = stream.Get();
    ASSERT_EQ(data_->SetData(&format, &mine, FALSE), S_OK);
    STGMEDIUM out{};
    ASSERT_EQ(data_->GetData(&format, &out), S_OK);
    EXPECT_EQ(out.pstm, stream.Get());
    EXPECT_EQ(References(*stream.Get()), 3U);
    ::ReleaseStgMedium(&out);
    data_->Clear();
    EXPECT_EQ(References(*stream.Get()), 1U);
}

TEST_F(FileDataObjectTest, FilesReplaceWhatWasAttachedInTheirFormatOnAnotherMedium) {
    ComPtr<IStream> stream;
    ASSERT_EQ(::CreateStreamOnHGlobal(nullptr, TRUE, stream.Put()), S_OK);
    FORMATETC format = ContentsIn(CF_HDROP, TYMED_ISTREAM);
    STGMEDIUM medium{};
    medium.tymed = TYMED_ISTREAM;
    medium.pstm = stream.Get();
    ASSERT_EQ(data_->SetData(&format, &medium, /*release=*/FALSE), S_OK);
    data_->SetFiles({"C:\\a"});
    EXPECT_THAT(ReadFileDrop(*data_.Get()), ElementsAre("C:\\a"));
}

TEST_F(FileDataObjectTest, ItAnswersForItsInterfacesOnly) {
    ComPtr<IUnknown> unknown;
    EXPECT_EQ(data_->QueryInterface(IID_IUnknown, unknown.PutVoid()), S_OK);
    ComPtr<IDropTarget> target;
    EXPECT_EQ(data_->QueryInterface(IID_IDropTarget, target.PutVoid()), E_NOINTERFACE);
    EXPECT_FALSE(target);
    EXPECT_EQ(data_->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    FORMATETC format = ContentsIn(CF_HDROP, TYMED_HGLOBAL);
    STGMEDIUM medium{};
    EXPECT_TRUE(FAILED(data_->GetDataHere(&format, &medium)));
    DWORD connection = 0;
    EXPECT_EQ(data_->DAdvise(&format, 0, nullptr, &connection), OLE_E_ADVISENOTSUPPORTED);
    ComPtr<IEnumFORMATETC> formats;
    EXPECT_EQ(data_->EnumFormatEtc(DATADIR_SET, formats.Put()), E_NOTIMPL);
    FORMATETC canonical{};
    EXPECT_EQ(data_->GetCanonicalFormatEtc(&format, &canonical), DATA_S_SAMEFORMATETC);
    EXPECT_EQ(canonical.cfFormat, CF_HDROP);
}

}  // namespace
}  // namespace tidemark
