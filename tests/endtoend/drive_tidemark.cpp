// Drives the program that is running, through its real window, for ./run and for the check of the
// packages.
//
// drive_tidemark stamp    waits for the counts, presses Stamp, waits for the end and prints what
//                         the window shows; the program goes on
// drive_tidemark close    closes the window and waits until the program has ended
//
// Exits with 0 when all of that happened.

#include <cstdio>
#include <cstring>

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

void Stamp() {
    const RemoteTidemark program;
    // How many of the paths the window takes is its own decision, so any row will do.
    const bool listed =
        PollUntil(kLongWait, [&program] { return program.lvwItems().Rows() > 0; }) &&
        program.WaitForCounts(program.lvwItems().Rows(), kLongWait);
    if (!listed) {
        throw RemoteError("the list was not counted in time");
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
        if (count == 2 && std::strcmp(arguments[1], "stamp") == 0) {
            tidemark::Stamp();
        } else if (count == 2 && std::strcmp(arguments[1], "close") == 0) {
            tidemark::Close();
        } else {
            std::printf("usage: drive_tidemark stamp|close\n");
            return 2;
        }
    } catch (const std::exception& failure) {
        std::printf("%s\n", failure.what());
        return 1;
    }
    return 0;
}
