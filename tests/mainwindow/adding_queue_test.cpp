#include "mainwindow/adding_queue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "lists/keyed_image_list.h"
#include "platform/memory/memory_system.h"
#include "platform/program_error.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Asking the shell for an icon can fail, and can let messages run.
class ActingPictures final : public PictureStore {
  public:
    std::function<void(const std::string& path)> on_ask;

    bool AddSmallIcon(const std::string& path) override {
        if (on_ask) {
            on_ask(path);
        }
        return true;
    }
};

class AddingQueueTest : public testing::Test {
  protected:
    // Files "C:\<name>\1.exe" and so on: each has an icon of its own.
    std::vector<std::string> Files(const std::string& name, int count) {
        std::vector<std::string> paths;
        for (int i = 1; i <= count; ++i) {
            paths.push_back("C:\\" + name + "\\" + std::to_string(i) + ".exe");
            system_.volume.AddFile(paths.back());
        }
        return paths;
    }
    [[nodiscard]] std::vector<std::string> Rows() const {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < rows_.Count(); ++i) {
            texts.push_back(rows_.At(i).text);
        }
        return texts;
    }

    MemorySystem system_;
    Platform platform_ = system_.Parts();
    TidemarkItemCollection items_{platform_};
    ListModel rows_{system_.locale};
    ActingPictures pictures_;
    KeyedImageList images_{pictures_};
    int batches_done_ = 0;
    AddingQueue queue_{platform_, items_, rows_, images_, [this](bool) { ++batches_done_; }};
};

class AddingQueueFailure : public AddingQueueTest, public testing::WithParamInterface<int> {};

// The path that fails is in the middle of its batch, and its last one.
TEST_P(AddingQueueFailure, IsReportedOnceAndTheRowsThereAreCounted) {
    system_.pump.SetAsksPerSlice(0);
    const std::vector<std::string> later = Files("later", 3);
    const std::string failing = "C:\\data\\" + std::to_string(GetParam()) + ".exe";
    pictures_.on_ask = [&](const std::string& path) {
        if (path == failing) {
            throw ProgramError(error_number::kInvalidArgument, "no icon");
        }
    };
    queue_.Append(Files("data", 60));
    queue_.Append(later);
    system_.pump.RunUntilIdle();
    EXPECT_THAT(system_.pump.Failures(), ElementsAre("no icon"));
    EXPECT_EQ(rows_.Count(), static_cast<std::size_t>(GetParam()) + 3);
    EXPECT_EQ(Rows().back(), later.back());
    int counted = 0;
    for (const auto& item : items_) {
        counted += item->CountComplete() ? 1 : 0;
    }
    EXPECT_EQ(counted, GetParam() + 2) << "all but the one that failed";
    EXPECT_EQ(batches_done_, 2);
}

INSTANTIATE_TEST_SUITE_P(At, AddingQueueFailure, testing::Values(50, 60));

TEST_F(AddingQueueTest, EverythingRemovedInsideASliceStaysAway) {
    pictures_.on_ask = [this](const std::string& path) {
        if (path == "C:\\data\\3.exe") {
            queue_.Clear();
            items_.Clear(&rows_);
        }
    };
    queue_.Append(Files("data", 6));
    EXPECT_TRUE(queue_.Empty());
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_EQ(items_.Count(), 0U);
    EXPECT_EQ(batches_done_, 0);
}

TEST_F(AddingQueueTest, ADropInsideASliceWaitsForItsTurn) {
    const std::vector<std::string> later = Files("later", 1);
    pictures_.on_ask = [this, &later](const std::string& path) {
        if (path == "C:\\data\\1.exe") {
            queue_.Append(later);
        }
    };
    queue_.Append(Files("data", 2));
    EXPECT_THAT(Rows(), ElementsAre("C:\\data\\1.exe", "C:\\data\\2.exe", "C:\\later\\1.exe"));
    EXPECT_TRUE(queue_.Empty());
    EXPECT_EQ(batches_done_, 1) << "both ended in one slice";
    for (const auto& item : items_) {
        EXPECT_TRUE(item->CountComplete()) << item->RootItem();
    }
}

}  // namespace
}  // namespace tidemark
