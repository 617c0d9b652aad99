// Drives the program that is running, through its real window, for ./run and for the check of the
// packages.
//
// drive_tidemark stamp [ROWS [TIME]]
//                         waits until that many rows (one, unless said) are listed and counted,
//                         sets Last Modified ("2019-07-14 13:45"), presses Stamp, waits for the
//                         end and prints what the windows show; the program goes on
// drive_tidemark close    closes the window and waits until the program has ended
//
// Exits with 0 when all of that happened.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "support/local_time.h"
#include "support/poll_until.h"
#include "support/remote_errors_window.h"
#include "support/remote_tidemark.h"

namespace tidemark {
namespace {

constexpr std::chrono::minutes kLongWait{9};
constexpr std::chrono::seconds kShortWait{30};

void PrintWindow(const RemoteTidemark& program) {
    std::printf("status bar: \"%s\"\n", program.StatusBar1().Text().c_str());
    const RemoteListView items = program.lvwItems();
    for (int row = 0; row < items.Rows(); ++row) {
        std::printf("%s | %s | %s\n", items.Cell(row, 0).c_str(), program.Contains(row).c_str(),
                    program.Status(row).c_str());
    }
}

bool AnyRowHasErrors(const RemoteTidemark& program) {
    const int rows = program.lvwItems().Rows();
    for (int row = 0; row < rows; ++row) {
        if (program.Status(row).ends_with("(with errors)")) {
            return true;
        }
    }
    return false;
}

// What the errors window lists, which opens by itself.
void PrintErrors(const RemoteTidemark& program) {
    const RemoteErrorsWindow window(program, kShortWait);
    std::optional<std::string> said;
    const bool collected = PollUntil(kLongWait, [&] {
        return window.StatusBar1().Text() != "  Collecting error data..." ||
               (said = program.WaitForBox(std::chrono::milliseconds(0))).has_value();
    });
    if (!collected) {
        throw RemoteError("the errors were not collected in time");
    }
    // Errors of a file that is listed twice over, in its folder and by itself, are not collected.
    if (said) {
        throw RemoteError("the errors window says: " + *said);
    }
    for (const std::vector<std::string>& row : window.Rows()) {
        std::printf("not stamped:\t%s\t%s\t%s\n", row[0].c_str(), row[1].c_str(), row[2].c_str());
    }
}

void SetLastModified(const RemoteTidemark& program, const char* text) {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0;
    if (std::sscanf(text, "%d-%d-%d %d:%d", &year, &month, &day, &hour, &minute) != 5) {
        throw RemoteError(std::string("not a time: ") + text);
    }
    const SYSTEMTIME time = LocalTime(year, month, day, hour, minute);
    program.dtDateLastModified().SetTime(time);
    program.dtTimeLastModified().SetTime(time);
}

void Stamp(int rows, const char* time) {
    const RemoteTidemark program;
    if (!PollUntil(kShortWait, [&] { return program.lvwItems().Rows() == rows; })) {
        throw RemoteError("the list has " + std::to_string(program.lvwItems().Rows()) +
                          " rows, not " + std::to_string(rows));
    }
    if (!program.WaitForCounts(rows, kLongWait)) {
        throw RemoteError("the list was not counted in time");
    }
    if (time != nullptr) {
        SetLastModified(program, time);
    }
    program.cmdStamp().Click();
    const std::optional<std::string> said = program.WaitForBox(kLongWait);
    if (!said) {
        throw RemoteError("the end of the stamp was not told in time");
    }
    std::printf("message: \"%s\"\n", said->c_str());
    // The list stays, for the picture.
    if (!program.AnswerBox(IDNO, kShortWait)) {
        throw RemoteError("the message box did not close");
    }
    if (!PollUntil(kShortWait,
                   [&program] { return program.StatusBar1().Text() == "  Stamp Complete"; })) {
        throw RemoteError("the status bar reads \"" + program.StatusBar1().Text() + "\"");
    }
    PrintWindow(program);
    if (AnyRowHasErrors(program)) {
        PrintErrors(program);
    }
}

void Close() {
    const RemoteTidemark program;
    program.Main().Close();
    const std::optional<DWORD> code = program.Process().WaitForExit(kShortWait);
    if (!code || *code != 0) {
        throw RemoteError(code ? "the program ended with code " + std::to_string(*code)
                               : "the program did not end");
    }
}

}  // namespace
}  // namespace tidemark

int main(int count, char** arguments) {
    try {
        if (count >= 2 && count <= 4 && std::strcmp(arguments[1], "stamp") == 0) {
            tidemark::Stamp(count > 2 ? std::atoi(arguments[2]) : 1,
                            count > 3 ? arguments[3] : nullptr);
        } else if (count == 2 && std::strcmp(arguments[1], "close") == 0) {
            tidemark::Close();
        } else {
            std::printf("usage: drive_tidemark stamp [ROWS [TIME]] | close\n");
            return 2;
        }
    } catch (const std::exception& failure) {
        std::printf("%s\n", failure.what());
        return 1;
    }
    return 0;
}
