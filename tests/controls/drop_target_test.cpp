#include "controls/drop_target.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ole2.h>

#include <functional>
#include <memory>
#include <new>
#include <stdexcept>

#include "controls/drop_files.h"
#include "platform/program_error.h"
#include "support/com_testing.h"
#include "support/drop_files_block.h"
#include "support/failing_allocation.h"
#include "support/last_resort_recorder.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RecordingSink : public OleDragDropSink {
  public:
    struct Call {
        int state;  // -1: a drop
        std::int32_t effect;
        int button;
        int shift;
        float x;
        float y;
        std::vector<std::string> files;
    };

    void DragOver(DragData& data, std::int32_t& effect, std::int16_t button, std::int16_t shift,
                  float& x, float& y, std::int16_t state) override {
        calls.push_back({state, effect, button, shift, x, y, data.Files()});
        Answer(data, effect);
    }
    void DragDrop(DragData& data, std::int32_t& effect, std::int16_t button, std::int16_t shift,
                  float& x, float& y) override {
        calls.push_back({-1, effect, button, shift, x, y, data.Files()});
        Answer(data, effect);
    }

    std::vector<Call> calls;
    std::function<void()> during;  // what the host does inside a notification

  private:
    void Answer(DragData& data, std::int32_t& effect) {
        if (during) {
            during();
        }
        AcceptFiles(data, effect);
    }
};

class DropTargetTest : public ::testing::Test {
  protected:
    DropTargetTest() {
        data_->bytes = BuildDropFiles(std::vector<std::string>{"C:\\a", "C:\\b"});
        drop_target_ = std::make_unique<DropTarget>(form_.Handle(), sink_);
        target_ = ComPtr<IDropTarget>(RegisteredTarget(form_.Handle()));
    }
    ~DropTargetTest() override {
        drop_target_.reset();
        if (target_) {
            EXPECT_EQ(References(*target_.Get()), 1U) << "the target leaked";
        }
        EXPECT_EQ(References(*data_.Get()), 1U) << "the data leaked";
    }

    POINTL AtClient(int x, int y) const {
        POINT point{x, y};
        ::ClientToScreen(form_.Handle(), &point);
        return {point.x, point.y};
    }

    TestForm form_;
    RecordingSink sink_;
    OleSession ole_;
    ComPtr<FakeDataObject> data_ = ComPtr<FakeDataObject>::Adopt(new FakeDataObject);
    std::unique_ptr<DropTarget> drop_target_;
    ComPtr<IDropTarget> target_;
};

TEST_F(DropTargetTest, ADragIsReportedFromEnterToDropInClientPositions) {
    ASSERT_TRUE(target_);
    DWORD effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    ASSERT_EQ(target_->DragEnter(data_.Get(), MK_LBUTTON, AtClient(10, 20), &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
    effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    ASSERT_EQ(target_->DragOver(MK_RBUTTON | MK_SHIFT, AtClient(30, 40), &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
    effect = DROPEFFECT_MOVE;
    ASSERT_EQ(target_->Drop(data_.Get(), MK_CONTROL, AtClient(31, 41), &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_MOVE));

    ASSERT_EQ(sink_.calls.size(), 3U);
    EXPECT_EQ(sink_.calls[0].state, drag_state::kEnter);
    EXPECT_EQ(sink_.calls[0].effect, 3);
    EXPECT_EQ(sink_.calls[0].button, 1);
    EXPECT_EQ(sink_.calls[0].shift, 0);
    EXPECT_EQ(sink_.calls[0].x, 10.0F);
    EXPECT_EQ(sink_.calls[0].y, 20.0F);
    EXPECT_EQ(sink_.calls[1].state, drag_state::kOver);
    EXPECT_EQ(sink_.calls[1].effect, 3);
    EXPECT_EQ(sink_.calls[1].button, 2);
    EXPECT_EQ(sink_.calls[1].shift, 1);
    EXPECT_EQ(sink_.calls[2].state, -1);
    EXPECT_EQ(sink_.calls[2].effect, 2) << "what the source allows at the drop";
    EXPECT_EQ(sink_.calls[2].shift, 2);
    EXPECT_EQ(sink_.calls[2].x, 31.0F);
    EXPECT_EQ(sink_.calls[2].y, 41.0F);
    EXPECT_THAT(sink_.calls[2].files, ElementsAre("C:\\a", "C:\\b"));
}

TEST_F(DropTargetTest, LeavingIsReportedWithTheLastPositionAndEndsTheDrag) {
    DWORD effect = DROPEFFECT_COPY;
    target_->DragEnter(data_.Get(), MK_LBUTTON, AtClient(5, 6), &effect);
    EXPECT_GT(References(*data_.Get()), 1U);
    ASSERT_EQ(target_->DragLeave(), S_OK);
    EXPECT_EQ(References(*data_.Get()), 1U);
    ASSERT_EQ(sink_.calls.size(), 2U);
    EXPECT_EQ(sink_.calls[1].state, drag_state::kLeave);
    EXPECT_EQ(sink_.calls[1].x, 5.0F);
    EXPECT_EQ(sink_.calls[1].y, 6.0F);
    EXPECT_EQ(sink_.calls[1].button, 1);

    // Without a drag over the window there is nothing to report.
    effect = DROPEFFECT_COPY;
    target_->DragOver(MK_LBUTTON, AtClient(5, 6), &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    EXPECT_EQ(sink_.calls.size(), 2U);
}

TEST_F(DropTargetTest, DataWithoutFilesIsRefused) {
    data_->format = CF_UNICODETEXT;
    DWORD effect = DROPEFFECT_COPY;
    target_->DragEnter(data_.Get(), MK_LBUTTON, AtClient(5, 6), &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    effect = DROPEFFECT_COPY;
    target_->Drop(data_.Get(), 0, AtClient(5, 6), &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    EXPECT_THAT(sink_.calls.back().files, IsEmpty());
}

TEST_F(DropTargetTest, AListThatLiesAboutItsSizeIsRefused) {
    data_->bytes = DropFilesBlock(0x7FFFFFF0, true, "abc");
    DWORD effect = DROPEFFECT_COPY;
    target_->DragEnter(data_.Get(), MK_LBUTTON, AtClient(5, 6), &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    effect = DROPEFFECT_COPY;
    target_->Drop(data_.Get(), 0, AtClient(5, 6), &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
}

TEST_F(DropTargetTest, TenThousandFilesAreReadOncePerDragAndOncePerDrop) {
    std::vector<std::string> paths;
    for (int i = 0; i < 10000; ++i) {
        paths.push_back("C:\\folder\\file " + std::to_string(i));
    }
    data_->bytes = BuildDropFiles(paths);
    DWORD effect = DROPEFFECT_COPY;
    target_->DragEnter(data_.Get(), MK_LBUTTON, AtClient(5, 6), &effect);
    for (int i = 0; i < 20; ++i) {
        effect = DROPEFFECT_COPY;
        target_->DragOver(MK_LBUTTON, AtClient(i, 6), &effect);
    }
    effect = DROPEFFECT_COPY;
    target_->Drop(data_.Get(), 0, AtClient(5, 6), &effect);
    EXPECT_EQ(sink_.calls.back().files, paths);
    EXPECT_EQ(data_->get_data_calls, 2);
}

TEST_F(DropTargetTest, DestroyingTheWindowUndoesTheRegistration) {
    form_.Destroy();
    EXPECT_EQ(References(*target_.Get()), 2U) << "only the test and the object hold it";
    DWORD effect = DROPEFFECT_COPY;
    EXPECT_EQ(target_->Drop(data_.Get(), 0, {0, 0}, &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    EXPECT_THAT(sink_.calls, IsEmpty());
}

TEST_F(DropTargetTest, DroppingTheObjectUndoesTheRegistrationAndAnotherMayFollow) {
    drop_target_.reset();
    EXPECT_EQ(RegisteredTarget(form_.Handle()), nullptr);
    EXPECT_EQ(References(*target_.Get()), 1U);
    drop_target_ = std::make_unique<DropTarget>(form_.Handle(), sink_);
    EXPECT_NE(RegisteredTarget(form_.Handle()), nullptr);
}

TEST_F(DropTargetTest, ASecondRegistrationOfAWindowFailsWithTheSystemsCode) {
    try {
        DropTarget second(form_.Handle(), sink_);
        FAIL() << "registered twice";
    } catch (const ProgramError& error) {
        EXPECT_EQ(error.Number(), DRAGDROP_E_ALREADYREGISTERED);
    }
    EXPECT_EQ(RegisteredTarget(form_.Handle()), target_.Get());
}

TEST_F(DropTargetTest, AHostMayDestroyTheWindowInsideANotification) {
    sink_.during = [this] { form_.Destroy(); };
    DWORD effect = DROPEFFECT_COPY;
    EXPECT_EQ(target_->DragEnter(data_.Get(), MK_LBUTTON, AtClient(5, 6), &effect), S_OK);
    EXPECT_EQ(References(*target_.Get()), 2U) << "the system lets go of it";
}

TEST_F(DropTargetTest, AHostMayDropTheObjectInsideADrop) {
    DWORD effect = DROPEFFECT_COPY;
    target_->DragEnter(data_.Get(), MK_LBUTTON, AtClient(5, 6), &effect);
    sink_.during = [this] { drop_target_.reset(); };
    effect = DROPEFFECT_COPY;
    EXPECT_EQ(target_->Drop(data_.Get(), 0, AtClient(5, 6), &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
}

TEST_F(DropTargetTest, AnExceptionOfTheHostRefusesTheDropAndIsReported) {
    LastResortRecorder recorder;
    sink_.during = [] { throw std::runtime_error("host failed"); };
    DWORD effect = DROPEFFECT_COPY;
    EXPECT_EQ(target_->DragEnter(data_.Get(), MK_LBUTTON, AtClient(5, 6), &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    effect = DROPEFFECT_COPY;
    EXPECT_EQ(target_->Drop(data_.Get(), 0, AtClient(5, 6), &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    ASSERT_EQ(recorder.reports.size(), 2U);
    EXPECT_EQ(recorder.reports[0].description, "host failed");
}

TEST_F(DropTargetTest, ADragForWhichThereIsNoMemoryIsRefusedAndReported) {
    LastResortRecorder recorder;
    DWORD effect = DROPEFFECT_COPY;
    HRESULT result = E_UNEXPECTED;
    bool failed = false;
    try {
        const FailingAllocation no_memory;
        result = target_->DragEnter(data_.Get(), MK_LBUTTON, {0, 0}, &effect);
        failed = FailingAllocation::Failed();
    } catch (const std::bad_alloc&) {
        ADD_FAILURE() << "an exception reached the system";
    }
    EXPECT_TRUE(failed);
    EXPECT_EQ(result, S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    EXPECT_THAT(sink_.calls, IsEmpty());
    EXPECT_EQ(recorder.reports.size(), 1U);
}

TEST_F(DropTargetTest, MissingArgumentsAreRefused) {
    DWORD effect = DROPEFFECT_COPY;
    EXPECT_EQ(target_->DragEnter(nullptr, 0, {0, 0}, &effect), E_INVALIDARG);
    EXPECT_EQ(target_->DragEnter(data_.Get(), 0, {0, 0}, nullptr), E_INVALIDARG);
    EXPECT_EQ(target_->DragOver(0, {0, 0}, nullptr), E_INVALIDARG);
    EXPECT_EQ(target_->Drop(nullptr, 0, {0, 0}, &effect), E_INVALIDARG);
    EXPECT_EQ(target_->Drop(data_.Get(), 0, {0, 0}, nullptr), E_INVALIDARG);
}

}  // namespace
}  // namespace tidemark
