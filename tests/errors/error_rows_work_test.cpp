// What a fill of the errors window costs, counted in questions to the system.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "errors/error_rows.h"
#include "errors/error_rows_fixture.h"
#include "lists/counting_file_system.h"
#include "lists/fakes.h"
#include "platform/memory/memory_system.h"

namespace tidemark {
namespace {

using testing::Each;
using testing::ElementsAre;

class ErrorRowsWorkTest : public testing::Test {
  protected:
    // What a fill asked for.
    struct Work {
        std::size_t existence = 0;
        std::size_t types = 0;
        std::size_t icons = 0;
        std::size_t lower_case = 0;
        std::size_t pump = 0;
    };

    // Shows records of the paths, and counts.
    Work Fill(const std::vector<std::string>& paths) {
        StampErrorList errors;
        for (const std::string& path : paths) {
            errors.push_back(std::make_shared<StampError>(StampError{path, false, 5, "Denied."}));
        }
        const Work before = Counted();
        rows_->AddFromCollection(std::move(errors));
        system_.pump.RunFor(ErrorRows::kFillDelay);
        const Work after = Counted();
        EXPECT_EQ(rows_->List().Count(), paths.size());
        return {after.existence - before.existence, after.types - before.types,
                after.icons - before.icons, after.lower_case - before.lower_case,
                after.pump - before.pump};
    }
    // Makes files of five kinds in turn.
    std::vector<std::string> Files(std::size_t count) {
        constexpr std::array<const char*, 5> kKinds = {"txt", "png", "zip", "h", "cpp"};
        std::vector<std::string> paths;
        for (std::size_t i = 0; i < count; ++i) {
            const std::string kind = kKinds[i % kKinds.size()];
            paths.push_back("C:\\" + std::to_string(i) + "." + kind);
            files_.files.emplace(paths.back(), kind + " file");
        }
        return paths;
    }
    [[nodiscard]] std::vector<int> Icons() const {
        std::vector<int> icons;
        for (std::size_t i = 0; i < rows_->List().Count(); ++i) {
            icons.push_back(rows_->List().At(i).small_icon);
        }
        return icons;
    }

    MemorySystem system_{};
    FakeFileSystem files_{};
    CountingFileSystem file_system_{files_};
    CountingLocale locale_{};
    FakePictures pictures_{files_};
    KeyedImageList images_{pictures_};
    RecordedDisplay display_{};
    std::shared_ptr<ErrorRows> rows_ = ErrorRows::Create(
        {system_.files, file_system_, system_.pump.Timers(), system_.pump, locale_}, images_,
        display_);

  private:
    [[nodiscard]] Work Counted() const {
        return {file_system_.existence_asked, file_system_.types_asked, pictures_.asked.size(),
                locale_.lower_cased, system_.pump.CallCount()};
    }
};

TEST_F(ErrorRowsWorkTest, TheShellIsAskedPerKindOfFileAndNotPerRecord) {
    const Work work = Fill(Files(1'000));
    EXPECT_EQ(work.types, 5U);
    EXPECT_EQ(work.icons, 5U);
    EXPECT_EQ(Fill(Files(1'000)).icons, 0U);
}

TEST_F(ErrorRowsWorkTest, WorkGrowsInProportionToTheRecords) {
    const Work few = Fill(Files(1'000));
    const Work many = Fill(Files(10'000));
    // Of each record: is it there, its key stored and looked up once, and a chance for messages.
    EXPECT_EQ(many.existence - few.existence, 9'000U);
    EXPECT_EQ(many.lower_case - few.lower_case, 2 * 9'000U);
    EXPECT_EQ(many.pump - few.pump, 9'000U);
    EXPECT_LE(few.existence, 1'000U + 1U);
    EXPECT_LE(few.lower_case, 2 * 1'000U + 2 * 5U);
    EXPECT_EQ(few.pump, 1'000U + 2U);
}

TEST_F(ErrorRowsWorkTest, TheShellIsNotAskedAboutPathsThatAreGone) {
    std::vector<std::string> paths = Files(1);
    for (int i = 0; i < 100; ++i) {
        paths.push_back("C:\\gone\\" + std::to_string(i));
    }
    const Work work = Fill(paths);
    EXPECT_EQ(work.types, 1U);
    EXPECT_THAT(pictures_.asked, ElementsAre("C:\\0.txt"));
    EXPECT_THAT(Icons(), Each(1));
}

TEST_F(ErrorRowsWorkTest, AFillThatIsClosedAsksTheShellNoMoreAndStillChoosesEveryIcon) {
    std::vector<std::string> paths = Files(2);
    for (int i = 0; i < 10; ++i) {
        paths.push_back("C:\\" + std::to_string(i) + ".ini");
        files_.files.emplace(paths.back(), "ini file");
    }
    paths.emplace_back("C:\\more.png");
    files_.files.emplace(paths.back(), "png file");
    // Two calls come before the records; the second record ends it.
    system_.pump.AtCall(2 + 2, [&] { rows_->Cancel(); });
    const Work work = Fill(paths);
    EXPECT_THAT(pictures_.asked, ElementsAre("C:\\0.txt", "C:\\1.png"));
    EXPECT_THAT(Icons(), ElementsAre(1, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 2));
    EXPECT_EQ(rows_->List().At(2).text, "");
    EXPECT_EQ(work.types, 2U + 1U);
}

TEST_F(ErrorRowsWorkTest, ANewCollectionWhileTheRestOfTheIconsIsChosenIsTheOneThatStays) {
    system_.pump.AtCall(2 + 2, [&] { rows_->Cancel(); });
    system_.pump.AtCall(2 + 4, [&] {
        rows_->AddFromCollection(
            {std::make_shared<StampError>(StampError{"C:\\0.txt", false, 5, "Denied."})});
        system_.pump.RunFor(ErrorRows::kFillDelay);
    });
    StampErrorList errors;
    for (const std::string& path : Files(10)) {
        errors.push_back(std::make_shared<StampError>(StampError{path, false, 5, "Denied."}));
    }
    rows_->AddFromCollection(std::move(errors));
    system_.pump.RunFor(ErrorRows::kFillDelay);
    EXPECT_EQ(rows_->List().Count(), 1U);
    EXPECT_THAT(Icons(), ElementsAre(1));
}

}  // namespace
}  // namespace tidemark
