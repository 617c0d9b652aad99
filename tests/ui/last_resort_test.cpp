#include "ui/last_resort.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "platform/program_error.h"
#include "support/box_answerer.h"
#include "support/last_resort_recorder.h"
#include "support/pump.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

constexpr UINT kFail = WM_APP + 1;

class LastResort : public ::testing::Test {
  protected:
    LastResort() {
        form_.on_message = [](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == kFail) {
                throw ProgramError(error_number::kDuplicateKey, "key taken");
            }
            return std::nullopt;
        };
    }

    LastResortRecorder recorder_;
    TestForm form_;
};

TEST_F(LastResort, AnExceptionInAWindowProcedureIsReportedOnceAndTheWindowLivesOn) {
    EXPECT_EQ(form_.Send(kFail), 0);
    ASSERT_EQ(recorder_.reports.size(), 1U);
    EXPECT_EQ(recorder_.reports[0].owner, form_.Handle());
    EXPECT_EQ(recorder_.reports[0].number, error_number::kDuplicateKey);
    EXPECT_EQ(recorder_.reports[0].description, "key taken");
    EXPECT_TRUE(form_.Exists());
    form_.SetText("still here");
    EXPECT_EQ(form_.Text(), "still here");
}

TEST_F(LastResort, TheSameErrorLaterIsReportedAgain) {
    form_.Send(kFail);
    form_.Send(kFail);
    EXPECT_EQ(recorder_.reports.size(), 2U);
}

TEST_F(LastResort, AProgramErrorIsShownWithNumberAndDescription) {
    EXPECT_EQ((LastResortReport{nullptr, 35602, "key taken"}).Text(), "Error: 35602\nkey taken");
}

TEST_F(LastResort, OtherExceptionsAreReportedInTheProgramsWords) {
    Guarded(nullptr, [] { throw std::runtime_error("plain"); });
    Guarded(nullptr, [] { throw 7; });
    Guarded(nullptr, [] { throw std::bad_alloc(); });
    ASSERT_EQ(recorder_.reports.size(), 3U);
    EXPECT_EQ(recorder_.reports[0].Text(), "Error: 51\nplain");
    EXPECT_EQ(recorder_.reports[1].Text(), "Error: 51\nInternal error");
    EXPECT_EQ(recorder_.reports[2].Text(), "Error: 7\nOut of memory");
}

TEST_F(LastResort, GuardedGivesTheFallbackOnlyOnFailure) {
    EXPECT_EQ(Guarded(nullptr, -1, [] { return 5; }), 5);
    EXPECT_EQ(Guarded(nullptr, -1, []() -> int { throw std::runtime_error("no"); }), -1);
    EXPECT_EQ(recorder_.reports.size(), 1U);
}

TEST_F(LastResort, WhileOneReportIsShownRepeatsAreDroppedAndOthersWaitTheirTurn) {
    std::vector<std::string> shown;
    int depth = 0;
    const auto before = SetLastResortReporter([&](const LastResortReport& report) {
        EXPECT_EQ(++depth, 1);
        shown.push_back(report.description);
        if (shown.size() == 1) {
            form_.Send(kFail);
            Guarded(nullptr, [] { throw std::runtime_error("another"); });
            Guarded(nullptr, [] { throw std::runtime_error("another"); });
        }
        --depth;
    });
    form_.Send(kFail);
    SetLastResortReporter(before);
    EXPECT_EQ(shown, (std::vector<std::string>{"key taken", "another"}));
}

TEST_F(LastResort, AFailingPaintIsReportedOnceAndNotAskedForAgain) {
    int paints = 0;
    form_.on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_PAINT) {
            ++paints;
            throw std::runtime_error("cannot paint");
        }
        return std::nullopt;
    };
    form_.SetVisible(true);
    ASSERT_TRUE(PumpUntil([&] { return paints > 0; }));
    const int after_first = paints;
    form_.Invalidate();
    ::UpdateWindow(form_.Handle());
    EXPECT_EQ(paints, after_first + 1);
    EXPECT_FALSE(::GetUpdateRect(form_.Handle(), nullptr, FALSE));
}

TEST_F(LastResort, TheProgramsOwnReporterShowsABoxOverTheWindow) {
    form_.SetVisible(true);
    const auto before = SetLastResortReporter({});
    form_.on_message = [](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == kFail) {
            throw ProgramError(6, "Überlauf");
        }
        return std::nullopt;
    };
    const BoxAnswerer answerer(IDOK);
    form_.Send(kFail);
    SetLastResortReporter(before);
    EXPECT_EQ(answerer.caption, "tidemark");
    EXPECT_EQ(answerer.text, "Error: 6\nÜberlauf");
    EXPECT_EQ(answerer.owner, form_.Handle());
}

TEST_F(LastResort, AReportForWhichThereIsNoMemoryTellsThatAndTheNextOneHasItsTurn) {
    form_.SetVisible(true);
    int shown = 0;
    const auto before = SetLastResortReporter([&](const LastResortReport& /*report*/) {
        if (++shown == 1) {
            throw std::bad_alloc();
        }
    });
    const BoxAnswerer answerer(IDOK);
    form_.Send(kFail);
    EXPECT_EQ(answerer.caption, "tidemark");
    EXPECT_EQ(answerer.text, "Error: 7\nOut of memory");
    EXPECT_EQ(answerer.owner, form_.Handle());
    form_.Send(kFail);
    EXPECT_EQ(shown, 2);
    SetLastResortReporter(before);
}

}  // namespace
}  // namespace tidemark
