#include "errors/error_rows.h"

#include "errors/error_rows_fixture.h"
#include "lists/fakes.h"
#include "platform/memory/memory_user_locale.h"
#include "platform/program_error.h"

namespace tidemark {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

using ErrorRowsTest = ErrorRowsFixture;

TEST_F(ErrorRowsTest, AnEmptyCollectionLeavesTheListEmptyTheStatusUnchangedAndTheTimerOff) {
    rows->AddFromCollection({});
    EXPECT_EQ(system.pump.Timers().NextDue(), std::nullopt);
    system.pump.RunFor(10'000);
    EXPECT_EQ(List().Count(), 0U);
    EXPECT_EQ(display.status, "as it was");
    EXPECT_THAT(display.log, IsEmpty());
}

TEST_F(ErrorRowsTest, AnEmptyCollectionClearsWhatWasShownOrWaiting) {
    Show(Records(3));
    rows->AddFromCollection({});
    EXPECT_EQ(List().Count(), 0U);
    rows->AddFromCollection(Records(3));
    rows->AddFromCollection({});
    EXPECT_EQ(system.pump.Timers().NextDue(), std::nullopt);
    system.pump.RunFor(10'000);
    EXPECT_EQ(List().Count(), 0U);
}

TEST_F(ErrorRowsTest, TheRowsComeOnceTheWindowHadTimeToPaint) {
    rows->AddFromCollection(Records(2));
    EXPECT_EQ(display.status, "  Collecting error data...");
    system.pump.RunFor(99);
    EXPECT_EQ(List().Count(), 0U);
    system.pump.RunFor(1);
    EXPECT_EQ(List().Count(), 2U);
    EXPECT_EQ(display.status, "  2 items had errors.");
}

TEST_F(ErrorRowsTest, TheTimerTicksOnce) {
    Show(Records(2));
    display.log.clear();
    system.pump.RunFor(10'000);
    EXPECT_THAT(display.log, IsEmpty());
}

TEST_F(ErrorRowsTest, ARowShowsPathCodeAndText) {
    system.volume.AddFile("C:\\Dir\\File.TXT");
    Show({Record("C:\\Dir\\File.TXT", 32, "In use."), Record("C:\\Dir\\", -2147024891, "")});
    const ListRow& file = List().At(0);
    EXPECT_EQ(file.key, "c:\\dir\\file.txt");
    EXPECT_EQ(file.text, "C:\\Dir\\File.TXT");
    EXPECT_EQ(file.sub_items[0], "32");
    EXPECT_EQ(file.sub_items[1], "In use.");
    EXPECT_EQ(List().At(1).text, "C:\\Dir\\");
    EXPECT_EQ(List().At(1).sub_items[0], "-2147024891");
}

TEST_F(ErrorRowsTest, TheStatusCountsRecordsWithSeparatorsAndWithoutASingular) {
    Show(Records(1'234));
    EXPECT_EQ(display.status, "  1,234 items had errors.");
    Show(Records(1));
    EXPECT_EQ(display.status, "  1 items had errors.");
}

TEST_F(ErrorRowsTest, TheUserSeesWorkGoingOnBeforeTheFirstRecordIsFilledIn) {
    std::vector<std::string> seen;
    bool drawing = false;
    system.pump.AtCall(1, [&] {
        seen = Column(ErrorColumn::kName);
        drawing = display.redraw;
    });
    Show(Records(3));
    EXPECT_THAT(seen, ElementsAre("Adding items", "", ""));
    EXPECT_TRUE(drawing);
    EXPECT_EQ(List().At(0).text, "C:\\dir\\0.txt");
}

TEST_F(ErrorRowsTest, DrawingIsOffWhileRecordsAreFilledInAndOnAfterwards) {
    std::vector<bool> drawing;
    system.pump.AtEveryCall([&] { drawing.push_back(display.redraw); });
    Show(Records(3));
    EXPECT_THAT(drawing, ElementsAre(true, false, false, false, false));
    EXPECT_THAT(display.log, ElementsAre("  Collecting error data...", "redraw off", "redraw on",
                                         "  3 items had errors."));
}

TEST_F(ErrorRowsTest, MessagesRunAfterEveryRecord) {
    const std::size_t before = system.pump.CallCount();
    Show(Records(50));
    EXPECT_EQ(system.pump.CallCount() - before, 2U + 50U);
}

TEST_F(ErrorRowsTest, ClosingDuringTheFillStopsItAfterTheCurrentRecord) {
    // Two calls come before the records.
    system.pump.AtCall(2 + 4, [&] { rows->Cancel(); });
    Show(Records(10));
    EXPECT_EQ(List().Count(), 10U);
    EXPECT_EQ(List().At(3).text, "C:\\dir\\3.txt");
    EXPECT_EQ(List().At(4).text, "");
    EXPECT_TRUE(display.redraw);
    EXPECT_EQ(display.status, "  10 items had errors.");
}

TEST_F(ErrorRowsTest, ClosingRightBeforeTheRecordsStillFillsTheFirstIn) {
    for (const std::size_t call : {1U, 2U}) {
        system.pump.AtCall(call, [&] { rows->Cancel(); });
        Show(Records(3));
        EXPECT_THAT(Column(ErrorColumn::kName), ElementsAre("C:\\dir\\0.txt", "", "")) << call;
        EXPECT_THAT(Column(ErrorColumn::kError), ElementsAre("5", "", "")) << call;
        EXPECT_TRUE(display.redraw);
        EXPECT_EQ(display.status, "  3 items had errors.");
    }
}

TEST_F(ErrorRowsTest, ARowThatGoesDuringTheFillIsAddedAgainOrStaysAway) {
    StampErrorList errors = Records(3);
    system.volume.AddFolder("C:\\d");
    errors.push_back(Record("C:\\d\\", 9));
    // Two calls come before the records: this is after the second.
    system.pump.AtCall(2 + 2, [&] {
        List().Remove("C:\\dir\\0.txt");  // filled in already
        List().Remove("C:\\d\\");         // still to come
    });
    Show(errors);
    EXPECT_THAT(system.pump.Failures(), IsEmpty());
    EXPECT_THAT(Column(ErrorColumn::kName),
                ElementsAre("C:\\dir\\1.txt", "C:\\dir\\2.txt", "C:\\d\\"));
    EXPECT_EQ(List().At(2).key, "c:\\d\\");
    EXPECT_EQ(List().At(2).sub_items[0], "9");
    EXPECT_EQ(List().At(0).small_icon, 1);
    EXPECT_EQ(List().At(2).small_icon, 2);
    EXPECT_EQ(display.status, "  4 items had errors.");
}

TEST_F(ErrorRowsTest, ClosingBeforeTheFillDropsIt) {
    rows->AddFromCollection(Records(3));
    rows->Cancel();
    system.pump.RunFor(10'000);
    EXPECT_EQ(List().Count(), 0U);
}

TEST_F(ErrorRowsTest, AfterClosingANewCollectionStartsOver) {
    system.pump.AtCall(3, [&] { rows->Cancel(); });
    Show(Records(10));
    system.volume.AddFile("C:\\other.txt");
    rows->AddFromCollection({Record("C:\\other.txt")});
    EXPECT_EQ(List().Count(), 0U);
    system.pump.RunFor(ErrorRows::kFillDelay);
    EXPECT_THAT(Column(ErrorColumn::kName), ElementsAre("C:\\other.txt"));
    EXPECT_EQ(display.status, "  1 items had errors.");
}

TEST_F(ErrorRowsTest, ANewCollectionDuringAFillLeavesNothingOfTheOldOne) {
    system.volume.AddFile("C:\\new.txt");
    system.pump.AtCall(5, [&] { rows->AddFromCollection({Record("C:\\new.txt")}); });
    Show(Records(10));
    EXPECT_EQ(List().Count(), 0U);
    EXPECT_EQ(display.status, "  Collecting error data...");
    EXPECT_TRUE(display.redraw);
    system.pump.RunFor(ErrorRows::kFillDelay);
    EXPECT_THAT(Column(ErrorColumn::kName), ElementsAre("C:\\new.txt"));
    EXPECT_EQ(display.status, "  1 items had errors.");
}

TEST_F(ErrorRowsTest, ANewCollectionFilledInsideAFillIsTheOneThatStays) {
    // As when a message box is open over the first fill: its loop runs the second one.
    system.volume.AddFile("C:\\new.txt");
    system.pump.AtCall(5, [&] { Show({Record("C:\\new.txt")}); });
    Show(Records(10));
    EXPECT_THAT(Column(ErrorColumn::kName), ElementsAre("C:\\new.txt"));
    EXPECT_TRUE(display.redraw);
    EXPECT_EQ(display.status, "  1 items had errors.");
}

TEST_F(ErrorRowsTest, AnEmptyCollectionDuringAFillLeavesTheListEmpty) {
    system.pump.AtCall(5, [&] { rows->AddFromCollection({}); });
    Show(Records(10));
    EXPECT_EQ(List().Count(), 0U);
    EXPECT_TRUE(display.redraw);
}

TEST_F(ErrorRowsTest, PicturesAreSharedByTypeAndProgramsHaveTheirOwn) {
    StampErrorList errors;
    for (const char* path : {"C:\\a.txt", "C:\\one.exe", "C:\\b.txt", "C:\\two.exe"}) {
        system.volume.AddFile(path);
        errors.push_back(Record(path));
    }
    system.volume.AddFolder("C:\\d");
    errors.push_back(Record("C:\\d\\"));
    Show(errors);
    EXPECT_EQ(images.Count(), 4);
    EXPECT_EQ(List().SmallIcons(), &images);
    std::vector<int> shown;
    for (std::size_t i = 0; i < List().Count(); ++i) {
        shown.push_back(List().At(i).small_icon);
    }
    EXPECT_THAT(shown, ElementsAre(1, 2, 1, 3, 4));
}

TEST_F(ErrorRowsTest, ARowOfAVanishedPathShowsTheFirstPicture) {
    StampErrorList errors = Records(1);
    errors.push_back(Record("C:\\gone.txt"));
    Show(errors);
    EXPECT_EQ(List().At(1).small_icon, 1);
}

TEST_F(ErrorRowsTest, SortingByErrorOrdersByNumberAndShowsPlainNumbersAgain) {
    StampErrorList errors = Records(3);
    errors[0] = Record("C:\\dir\\0.txt", 10);
    errors[1] = Record("C:\\dir\\1.txt", 9);
    errors[2] = Record("C:\\dir\\2.txt", 1'000'000);
    Show(errors);
    rows->ColumnClick(ErrorColumn::kError);
    EXPECT_THAT(Column(ErrorColumn::kError), ElementsAre("9", "10", "1000000"));
    rows->ColumnClick(ErrorColumn::kError);
    EXPECT_THAT(Column(ErrorColumn::kError), ElementsAre("1000000", "10", "9"));
    EXPECT_TRUE(rows->Sorting().Descending());
}

TEST_F(ErrorRowsTest, TheListIsDrawnOnceASortIsDone) {
    Show(Records(3));
    display.log.clear();
    rows->ColumnClick(ErrorColumn::kName);
    EXPECT_THAT(display.log, ElementsAre("redraw off", "redraw on"));
}

TEST_F(ErrorRowsTest, NegativeNumbersSortByTheirPaddedText) {
    StampErrorList errors = Records(3);
    errors[0] = Record("C:\\dir\\0.txt", 3);
    errors[1] = Record("C:\\dir\\1.txt", -20);
    errors[2] = Record("C:\\dir\\2.txt", -3);
    Show(errors);
    rows->ColumnClick(ErrorColumn::kError);
    EXPECT_THAT(Column(ErrorColumn::kError), ElementsAre("-3", "-20", "3"));
}

TEST_F(ErrorRowsTest, NamesAndDescriptionsSortAsText) {
    StampErrorList errors = Records(2);
    errors[0] = Record("C:\\dir\\0.txt", 1, "zebra");
    errors[1] = Record("C:\\dir\\1.txt", 2, "Apple");
    Show(errors);
    rows->ColumnClick(ErrorColumn::kDescription);
    EXPECT_THAT(Column(ErrorColumn::kDescription), ElementsAre("Apple", "zebra"));
    rows->ColumnClick(ErrorColumn::kName);
    EXPECT_THAT(Column(ErrorColumn::kDescription), ElementsAre("zebra", "Apple"));
    rows->ColumnClick(ErrorColumn::kName);
    EXPECT_THAT(Column(ErrorColumn::kDescription), ElementsAre("Apple", "zebra"));
}

TEST_F(ErrorRowsTest, SortingDuringTheFillKeepsEveryRowItsOwn) {
    StampErrorList errors = Records(3);
    system.volume.AddFolder("C:\\a");
    errors.push_back(Record("C:\\a\\"));
    system.pump.AtCall(4, [&] {
        rows->ColumnClick(ErrorColumn::kName);
        rows->ColumnClick(ErrorColumn::kName);
    });
    Show(errors);
    EXPECT_THAT(Column(ErrorColumn::kError), Each("5"));
    EXPECT_EQ(List().Find("C:\\a\\")->small_icon, 2);
    EXPECT_EQ(List().Find("C:\\dir\\2.txt")->small_icon, 1);
}

TEST_F(ErrorRowsTest, ARepeatedPathRaisesTheListsErrorAndTheNextCollectionStartsClean) {
    StampErrorList errors = Records(3);
    errors.push_back(Record("C:\\DIR\\1.TXT"));
    Show(errors);
    EXPECT_THAT(system.pump.Failures(), ElementsAre("Key is not unique in collection"));
    EXPECT_EQ(List().Count(), 3U);
    EXPECT_TRUE(display.redraw);

    Show(Records(2));
    EXPECT_EQ(system.pump.Failures().size(), 1U);
    EXPECT_THAT(Column(ErrorColumn::kName), ElementsAre("C:\\dir\\0.txt", "C:\\dir\\1.txt"));
    EXPECT_EQ(display.status, "  2 items had errors.");
}

TEST_F(ErrorRowsTest, AFirstPathWithoutAnIconRaisesTheImageListsErrorAndTheNextStartsClean) {
    StampErrorList errors = {Record("C:\\gone.txt")};
    Show(errors);
    EXPECT_THAT(system.pump.Failures(),
                ElementsAre("ImageList must be initialized before it can be used"));
    EXPECT_EQ(List().Count(), 1U);
    EXPECT_EQ(List().SmallIcons(), nullptr);
    EXPECT_TRUE(display.redraw);

    Show(Records(2));
    EXPECT_EQ(List().Count(), 2U);
    EXPECT_EQ(display.status, "  2 items had errors.");

    // Now there is a picture to stand in.
    Show(errors);
    EXPECT_EQ(system.pump.Failures().size(), 1U);
    EXPECT_EQ(List().At(0).small_icon, 1);
}

// Fails when it is asked for the icon of anything but the first path.
class FailingPictures final : public PictureStore {
  public:
    bool AddSmallIcon(const std::string& path) override {
        if (path != "C:\\first.txt") {
            throw ProgramError(7, "Out of memory");
        }
        return true;
    }
};

TEST_F(ErrorRowsTest, TheListIsDrawnAgainAfterAnErrorAmongTheRecords) {
    FailingPictures failing;
    KeyedImageList failing_images(failing);
    rows = ErrorRows::Create(system.Parts(), failing_images, display);
    for (const char* path : {"C:\\first.txt", "C:\\second.png"}) {
        system.volume.AddFile(path);
    }
    Show({Record("C:\\first.txt"), Record("C:\\second.png")});
    EXPECT_THAT(system.pump.Failures(), ElementsAre("Out of memory"));
    EXPECT_TRUE(display.redraw);
    EXPECT_EQ(List().At(1).text, "C:\\second.png");
}

TEST_F(ErrorRowsTest, AWindowThatGoesDuringTheFillIsNotTouchedAgain) {
    system.pump.AtCall(4, [&] {
        rows->Detach();
        display.log.clear();
    });
    Show(Records(10));
    EXPECT_THAT(display.log, IsEmpty());
}

TEST_F(ErrorRowsTest, TheRowsMayBeLetGoDuringTheFill) {
    system.pump.AtCall(4, [&] {
        rows->Detach();
        rows.reset();
    });
    rows->AddFromCollection(Records(10));
    system.pump.RunFor(10'000);
    EXPECT_EQ(rows, nullptr);
}

TEST_F(ErrorRowsTest, AHundredThousandRecordsAreAllShown) {
    // Quicker look-ups than a whole volume's.
    FakeFileSystem files;
    files.files = {{"C:\\0", "File"}};
    MemoryUserLocale locale;
    rows = ErrorRows::Create({system.files, files, system.pump.Timers(), system.pump, locale},
                             images, display);
    system.volume.AddFile("C:\\0");
    StampErrorList errors;
    for (int i = 0; i < 100'000; ++i) {
        errors.push_back(Record("C:\\" + std::to_string(i), i));
    }
    Show(std::move(errors));
    EXPECT_EQ(List().Count(), 100'000U);
    EXPECT_EQ(List().At(99'999).sub_items[0], "99999");
    EXPECT_EQ(display.status, "  100,000 items had errors.");
}

}  // namespace
}  // namespace tidemark
