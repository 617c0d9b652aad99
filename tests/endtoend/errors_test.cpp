// The errors window of the program that ships, seen from outside.

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>
#include <vector>

#include "endtoend/end_to_end.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"
#include "support/paused_thread.h"
#include "support/poll_until.h"
#include "support/remote_errors_window.h"

namespace tidemark {
namespace {

using testing::ElementsAreArray;

// The system's own text, in the words in which it gives it to everybody.
std::string SystemText(DWORD code) {
    std::array<wchar_t, 512> buffer{};
    const DWORD length =
        ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                         0, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
    std::wstring_view text(buffer.data(), length);
    if (text.ends_with(L"\r\n")) {
        text.remove_suffix(2);
    }
    return Utf8FromWide(text);
}

std::string UpperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

// Cells of one row.
using Row = std::vector<std::string>;

Row RowFor(const std::string& path, DWORD code) {
    return {path, std::to_string(code), SystemText(code)};
}

class ErrorsEndToEnd : public EndToEnd {
  protected:
    static constexpr const char* kFirst = "many\\0.txt";
    static constexpr const char* kLast = "many\\z.txt";

    // A folder of three entries: the last one is listed with the others, and reached late.
    void MakeMany() {
        for (int i = 0; i < 700; ++i) {
            beside_.MakeFile("many\\between\\" + std::to_string(i) + ".txt");
        }
        beside_.MakeFile(kFirst);
        beside_.MakeFile(kLast);
    }
    // Presses Stamp, and has the last file vanish after the program has listed its folder, before
    // it comes to the file. False when the program came to it too soon.
    [[nodiscard]] bool StampWhileTheLastVanishes(const RemoteTidemark& program) {
        beside_.SetTimes(LongAgo());
        const PausedThread thread(program.Main().Handle());
        program.cmdStamp().Click();
        const bool under_way = PollUntil(kWait, [&] {
            thread.RunABit();
            return !(EntryOf(beside_.Path(kFirst)).written == LongAgo());
        });
        return under_way && EntryOf(beside_.Path(kLast)).written == LongAgo() &&
               ::DeleteFileW(WideFromUtf8(beside_.Path(kLast)).c_str()) != FALSE;
    }
    static void KeepTheList(const RemoteTidemark& program) {
        ASSERT_TRUE(program.WaitForBox(kWait).has_value());
        ASSERT_TRUE(program.AnswerBox(IDNO, kWait));
    }
    static void WaitForErrorsWindow(const RemoteTidemark& program) {
        ASSERT_TRUE(program.WaitForWindow(L"frmErrors", kWait));
    }
    static void CloseByUser(const RemoteWindow& errors) {
        errors.Close();
        ASSERT_TRUE(PollUntil(kWait, [&] { return !errors.Visible(); }));
        EXPECT_TRUE(errors.Exists());
    }

    RealTree tree_;
    RealTree beside_;
};

// Everything behind one start of the program: first with a file that is listed twice over, in its
// folder and by itself, then without the second mention and with a file that vanishes.
TEST_F(ErrorsEndToEnd, TheErrorsWindowOpensByItselfWithEveryPathCodeAndText) {
    tree_.MakeFile("a locked.txt");
    tree_.MakeFile("fine.txt");
    tree_.MakeFile("sub\\locked by its owner.dat");
    MakeMany();
    const std::string unwritable = UnwritableFile(beside_);
    const LockedFile locked(tree_.Path("a locked.txt"));
    const LockedFile owned(tree_.Path("sub\\locked by its owner.dat"), /*others_may_read=*/false);
    std::vector<std::string> listed = {tree_.Root(), beside_.Path("many")};
    if (!unwritable.empty()) {
        listed.push_back(unwritable);
    }
    listed.push_back(UpperCase(tree_.Path("a locked.txt")));
    std::string arguments;
    for (const std::string& path : listed) {
        arguments += Quoted(path) + " ";
    }
    const RemoteTidemark program = Start(arguments);
    const int items = static_cast<int>(listed.size());
    ASSERT_TRUE(program.WaitForCounts(items, kWait));

    std::vector<Row> expected = {
        RowFor(tree_.Path("a locked.txt"), ERROR_SHARING_VIOLATION),
        RowFor(tree_.Path("sub\\locked by its owner.dat"), ERROR_SHARING_VIOLATION)};
    if (!unwritable.empty()) {
        expected.push_back(RowFor(unwritable, ERROR_ACCESS_DENIED));
    }

    // The list takes no second row for the file, and says so; the rows until then stay.
    StampAll(program);
    const RemoteErrorsWindow errors(program, kWait);
    ASSERT_EQ(program.WaitForBox(kWait).value_or("no message"),
              "Error: 35602\nKey is not unique in collection");
    ASSERT_TRUE(program.AnswerBox(IDOK, kWait));
    EXPECT_THAT(errors.Rows(), testing::SizeIs(expected.size()));
    EXPECT_EQ(errors.StatusBar1().Text(), "  Collecting error data...");
    CloseByUser(errors);

    const RemoteListView list = program.lvwItems();
    list.Select({items - 1});
    list.Post(WM_KEYDOWN, VK_DELETE);
    ASSERT_TRUE(PollUntil(kWait, [&] { return list.Rows() == items - 1; }));
    bool vanished = StampWhileTheLastVanishes(program);
    for (int attempt = 1; attempt < 5 && !vanished; ++attempt) {
        KeepTheList(program);
        WaitForErrorsWindow(program);
        CloseByUser(errors);
        vanished = StampWhileTheLastVanishes(program);
    }
    ASSERT_TRUE(vanished);
    KeepTheList(program);
    WaitForErrorsWindow(program);
    expected.insert(expected.begin() + 2, RowFor(beside_.Path(kLast), ERROR_FILE_NOT_FOUND));
    const std::string done = "  " + std::to_string(expected.size()) + " items had errors.";
    EXPECT_TRUE(PollUntil(kWait, [&] { return errors.StatusBar1().Text() == done; }))
        << errors.StatusBar1().Text();
    EXPECT_THAT(errors.Rows(), ElementsAreArray(expected));
    EXPECT_TRUE(PollUntil(kWait, [&] { return program.Status(0) == "Complete (with errors)"; }));
    Close(program);
    if (unwritable.empty()) {
        GTEST_SKIP() << "a file that may not be written: root opens read-only files all the same, "
                        "and no immutable file is at hand; everything else was shown";
    }
}

}  // namespace
}  // namespace tidemark
