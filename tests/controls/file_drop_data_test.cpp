#include "controls/file_drop_data.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controls/drop_files.h"
#include "controls/ole_session.h"
#include "support/com_testing.h"
#include "support/drop_files_block.h"

namespace tidemark {
namespace {

using namespace std::string_view_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// "D:\\b" and its ends in wide text.
constexpr std::string_view kWideName = "D\0:\0\\\0b\0\0\0\0\0"sv;

class FileDropDataTest : public ::testing::Test {
  protected:
    ~FileDropDataTest() override { EXPECT_EQ(References(*data_.Get()), 1U) << "data leaked"; }

    std::vector<std::string> Read() { return ReadFileDrop(*data_.Get()); }

    OleSession ole_;
    ComPtr<FakeDataObject> data_ = ComPtr<FakeDataObject>::Adopt(new FakeDataObject);
};

TEST_F(FileDropDataTest, ReadsTenThousandFilesInTheirOrder) {
    std::vector<std::string> paths;
    for (int i = 0; i < 10000; ++i) {
        paths.push_back("C:\\\u6f6e\\file " + std::to_string(i));
    }
    data_->bytes = BuildDropFiles(paths);
    EXPECT_EQ(Read(), paths);
}

TEST_F(FileDropDataTest, ReadsWideAndNarrowBlocks) {
    data_->bytes = DropFilesBlock(20, true, kWideName);
    EXPECT_THAT(Read(), ElementsAre("D:\\b"));
    data_->bytes = DropFilesBlock(20, false, "C:\\a\0D:\\b\0\0"sv);
    EXPECT_THAT(Read(), ElementsAre("C:\\a", "D:\\b"));
}

TEST_F(FileDropDataTest, NarrowNamesAreUtf8OrElseInTheSystemsCodePage) {
    data_->bytes = DropFilesBlock(20, false, "C:\\\xC3\xA4\0\0"sv);
    EXPECT_THAT(Read(), ElementsAre("C:\\\u00e4"));
    data_->bytes = DropFilesBlock(20, false, "C:\\\xE4\0\0"sv);
    const auto paths = Read();
    ASSERT_EQ(paths.size(), 1U);
    const UINT code_page = ::GetACP();
    if (code_page != 1252) {
        GTEST_SKIP() << "the letter is known for code page 1252 only, not for " << code_page;
    }
    EXPECT_EQ(paths.front(), "C:\\\u00e4");
}

TEST_F(FileDropDataTest, DataWithoutAFileListHoldsNoFiles) {
    data_->format = CF_UNICODETEXT;
    EXPECT_THAT(Read(), IsEmpty());
    EXPECT_FALSE(OffersFormat(*data_.Get(), CF_HDROP));
    EXPECT_TRUE(OffersFormat(*data_.Get(), CF_UNICODETEXT));
}

TEST_F(FileDropDataTest, ABlockThatLiesAboutItselfIsRefused) {
    data_->bytes = DropFilesBlock(0x40000000, true, kWideName);
    EXPECT_THAT(Read(), IsEmpty());
    data_->bytes = DropFilesBlock(0xFFFFFFFF, false, "C:\\a\0\0"sv);
    EXPECT_THAT(Read(), IsEmpty());
    data_->bytes = DropFilesBlock(0, false, "C:\\a\0\0"sv);
    EXPECT_THAT(Read(), IsEmpty());
}

TEST_F(FileDropDataTest, ABlockThatIsCutOffAnywhereIsNeverReadPastItsEnd) {
    const auto whole = DropFilesBlock(20, true, kWideName);
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        data_->bytes.assign(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        const auto paths = Read();
        EXPECT_LE(paths.size(), 1U) << size;
        if (!paths.empty()) {
            EXPECT_EQ(paths.front(), "D:\\b") << size;
        }
    }
}

TEST_F(FileDropDataTest, AnotherMediumThanAskedForIsRefusedAndGivenBack) {
    ASSERT_EQ(::CreateStreamOnHGlobal(nullptr, TRUE, data_->stream.Put()), S_OK);
    data_->tymed = TYMED_ISTREAM;
    EXPECT_THAT(Read(), IsEmpty());
    EXPECT_EQ(References(*data_->stream.Get()), 1U);
}

TEST_F(FileDropDataTest, SuccessWithoutAHandleIsRefused) {
    data_->without_handle = true;
    EXPECT_THAT(Read(), IsEmpty());
    data_->tymed = TYMED_NULL;
    EXPECT_THAT(Read(), IsEmpty());
}

TEST_F(FileDropDataTest, MemoryWithNothingInItIsRefused) {
    data_->bytes.clear();
    EXPECT_THAT(Read(), IsEmpty());
}

TEST_F(FileDropDataTest, ADragReadsItsListOnceHoweverOftenItAsks) {
    data_->bytes = DropFilesBlock(20, true, kWideName);
    {
        ReceivedDragData drag(*data_.Get());
        EXPECT_EQ(data_->get_data_calls, 0);
        EXPECT_TRUE(drag.GetFormat(kFileListFormat));
        EXPECT_FALSE(drag.GetFormat(CF_UNICODETEXT));
        for (int i = 0; i < 100; ++i) {
            EXPECT_THAT(drag.Files(), ElementsAre("D:\\b"));
        }
        EXPECT_EQ(References(*data_.Get()), 2U);
    }
    EXPECT_EQ(data_->get_data_calls, 1);
}

}  // namespace
}  // namespace tidemark
