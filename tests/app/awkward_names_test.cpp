#include <ostream>
#include <string>
#include <vector>

#include "app/command_line.h"
#include "controls/drop_files.h"
#include "engine/engine_fixture.h"
#include "engine/tidemark_item_collection.h"
#include "errors/error_rows_fixture.h"
#include "lists/shell_services.h"
#include "mainwindow/file_dialog_names.h"
#include "platform/text.h"
#include "support/repeated.h"

namespace tidemark {
namespace {

// A kind of name that a file system may hold, in the system's own text.
struct NameClass {
    const char* kind;
    std::u16string name;
};
std::ostream& operator<<(std::ostream& out, const NameClass& each) {
    return out << each.kind;
}

// Each kind of name, on a file and on a folder: dropped and dropped again, listed, counted,
// stamped, failing, shown with its error, and dragged out and back in.
class AwkwardNamesTest : public ErrorRowsFixture, public testing::WithParamInterface<NameClass> {
  protected:
    AwkwardNamesTest() {
        name = Utf8FromUtf16(GetParam().name);
        file = "C:\\files\\" + name;
        folder = "C:\\folders\\" + name;
        system.volume.AddFile(file);
        system.volume.AddFile(folder + "\\" + name);
        // Is not to be taken for it.
        system.volume.AddFile("C:\\files\\neighbour");
    }

    // What the program reads of the block that a drag of these paths carries.
    static std::vector<std::string> Dropped(const std::vector<std::string>& paths) {
        const auto read = ParseDropFiles(
            BuildDropFiles(paths), [](std::string_view narrow) { return std::string(narrow); });
        return read.value_or(std::vector<std::string>{"(refused)"});
    }
    void AddDropped(const std::vector<std::string>& paths) {
        for (const std::string& path : Dropped(paths)) {
            const auto item = items.Add(path, &list, nullptr);
            ASSERT_NE(item, nullptr) << path;
            item->Count();
        }
        system.pump.RunUntilIdle();
    }
    void StampAll() {
        for (const auto& item : items) {
            item->Stamp(DayNumber(2021, 3, 2, 13, 45), DayNumber(1999, 12, 31, 23, 59), true,
                        false);
        }
        system.pump.RunUntilIdle();
    }

    std::string name;
    std::string file;
    std::string folder;
    ListModel list{system.locale};
    TidemarkItemCollection items{system.Parts()};
};

TEST_P(AwkwardNamesTest, IsDroppedListedCountedAndStamped) {
    AddDropped({file, folder});
    EXPECT_EQ(items.Count(), 2U);
    EXPECT_EQ(list.At(0).text, file);
    EXPECT_EQ(list.At(1).text, folder + "\\");
    EXPECT_EQ(items.CountedItems(), 3);
    StampAll();
    EXPECT_EQ(items.StampedItems(), 2);
    EXPECT_FALSE(items.ErrorsExist());
    for (const std::string& path : {file, folder, folder + "\\" + name}) {
        const MemoryTimes times = system.volume.TimesOf(path);
        EXPECT_EQ(times.written, SystemTime(2021, 3, 2, 13, 45)) << path;
        EXPECT_EQ(times.created, SystemTime(1999, 12, 31, 23, 59)) << path;
    }
    const MemoryTimes neighbour = system.volume.TimesOf("C:\\files\\neighbour");
    EXPECT_EQ(neighbour.written, kMemoryBuildTime);
    EXPECT_EQ(neighbour.created, kMemoryBuildTime);
}

TEST_P(AwkwardNamesTest, KeepsItsWholeNameInErrors) {
    AddDropped({file, folder});
    system.volume.Lock(file);
    system.volume.Lock(folder + "\\" + name);
    StampAll();
    const StampErrorList errors = items.ErrorList();
    ASSERT_EQ(errors.size(), 2U);
    EXPECT_EQ(errors[0]->ItemName, file);
    EXPECT_EQ(errors[1]->ItemName, folder + "\\" + name);
    Show(errors);
    EXPECT_THAT(Column(ErrorColumn::kName), testing::ElementsAre(file, folder + "\\" + name));
    EXPECT_THAT(Column(ErrorColumn::kError), testing::ElementsAre("32", "32"));
    List().SelectAll();
    EXPECT_EQ(ExistingSelectedPaths(List(), system.file_system).size(), 2U);
}

TEST_P(AwkwardNamesTest, IsDraggedOutAndBackInAsTheSameItem) {
    AddDropped({file, folder});
    list.SelectAll();
    const std::vector<std::string> dragged = ExistingSelectedPaths(list, system.file_system);
    EXPECT_EQ(dragged.size(), 2U);
    EXPECT_EQ(Dropped(dragged), dragged);
    AddDropped(dragged);
    EXPECT_EQ(items.Count(), 2U);
    EXPECT_EQ(list.Count(), 2U);
    EXPECT_EQ(items.CountedItems(), 3);
}

TEST_P(AwkwardNamesTest, IsReadFromTheFileDialogAndFoundForItsFolder) {
    std::string buffer = "C:\\files";
    buffer += '\0';
    buffer += name;
    buffer += '\0';
    buffer += "neighbour";
    buffer.append(2, '\0');
    EXPECT_EQ(PathsFromFileDialog(buffer).front(), file);
    AddDropped({file});
    list.NoteSelected(0, 0, true);
    EXPECT_EQ(ContainingFolderCommand(&list, system.file_system),
              "explorer ,\"" + list.At(0).key + "\",/select");
}

// Blanks stay in quotes. Commas split a path even there, and blanks at its ends go: such names can
// be dropped, but not given on the command line.
TEST_P(AwkwardNamesTest, IsReadFromTheCommandLineWhereThatCanHoldIt) {
    const std::vector<std::string> paths = SplitCommandLine("\"" + file + "\" \"" + folder + "\"");
    if (name.find(',') == std::string::npos && name.back() != ' ') {
        EXPECT_THAT(paths, testing::ElementsAre(file, folder));
    } else {
        for (const std::string& path : paths) {
            EXPECT_EQ(items.Add(path, &list, nullptr), nullptr) << path;
        }
        EXPECT_EQ(items.Count(), 0U);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Names, AwkwardNamesTest,
    testing::Values(NameClass{"CjkOf87Letters", Repeated(u"\u8A9E", 87) + u".txt"},
                    NameClass{"CjkOf255Letters", Repeated(u"\u6F22", 255)},
                    NameClass{"LatinOf255Letters", Repeated(u"n", 255)},
                    NameClass{"Emoji", u"\U0001F30A \U0001F570\uFE0F.txt"},
                    NameClass{"EmojiOf254Units", Repeated(u"\U0001F600", 127)},
                    NameClass{"CombiningMarks", u"e\u0301\u0323 a\u0308"},
                    NameClass{"RightToLeft", u"\u05D0\u05D1\u202E\u0627 x"},
                    NameClass{"LoneHighSurrogate", std::u16string{u'l', 0xD800, u'x'}},
                    NameClass{"LoneLowSurrogate", std::u16string{0xDC00}},
                    NameClass{"SurrogatesInTheWrongOrder", std::u16string{0xDFFF, 0xD800}},
                    NameClass{"TrailingDot", u"trailing dot."},
                    NameClass{"TrailingBlank", u"trailing blank "},
                    NameClass{"LeadingBlank", u" leading blank"}, NameClass{"Device", u"nul"},
                    NameClass{"DeviceWithExtension", u"con.txt"},
                    NameClass{"PercentAndAmpersand", u"100% &more &&%s%n"},
                    NameClass{"Comma", u"a,b, c"},
                    NameClass{"QuotesAndBrackets", u"'quoted' `x` (1) [2] {3}; = + ^ ~ !"},
                    NameClass{"InvisibleMarks", u"\u200B\uFEFFzero\u00A0width"},
                    NameClass{"PrivateAndUnassigned", u"\uE000\uFFFE\U000E0001"}),
    testing::PrintToStringParamName());

}  // namespace
}  // namespace tidemark
