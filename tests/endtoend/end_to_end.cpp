#include "endtoend/end_to_end.h"

#include <algorithm>
#include <array>

#include "platform/win32/registry_settings_store.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"
#include "support/local_time.h"
#include "support/poll_until.h"

namespace tidemark {
namespace {

std::string EnvironmentText(const wchar_t* name) {
    std::array<wchar_t, 4096> value{};
    const DWORD length =
        ::GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size()));
    return Utf8FromWide({value.data(), length});
}

}  // namespace

std::string ProgramPath() {
    std::string folder = TestProgramFolder();
    folder.erase(folder.rfind('\\'));
    return folder + "\\tidemark.exe";
}

FileTime LongAgo() {
    return FromLocal(LocalTime(2001, 2, 3, 4, 5));
}

std::string Quoted(const std::string& path) {
    return "\"" + path + "\"";
}

void MakeManyFiles(RealTree& tree, int folders, int files_in_each) {
    for (int folder = 0; folder < folders; ++folder) {
        for (int file = 0; file < files_in_each; ++file) {
            tree.MakeFile("many " + std::to_string(folder) + "\\file " + std::to_string(file) +
                          ".txt");
        }
    }
}

std::string UnwritableFile(RealTree& tree) {
    if (const std::string prepared = EnvironmentText(L"TIDEMARK_UNWRITABLE_FILE");
        !prepared.empty()) {
        return prepared;
    }
    tree.MakeFile("read-only.txt");
    tree.MakeReadOnly("read-only.txt");
    const std::string path = tree.Path("read-only.txt");
    return CanOpenForWriting(path) ? std::string() : path;
}

bool IsInDotFolder(const std::map<std::string, TreeEntry>& entries, const std::string& path) {
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find('\\', start), path.size());
        if (path[start] == '.' && entries.at(path.substr(0, end)).folder) {
            return true;
        }
        start = end + 1;
    }
    return false;
}

RemoteTidemark EndToEnd::Start(const std::string& arguments) {
    return RemoteTidemark(ProgramPath(), arguments);
}

void EndToEnd::StampAll(const RemoteTidemark& program) {
    program.cmdStamp().Click();
    ASSERT_EQ(program.WaitForBox(kWait).value_or("no message"),
              "Stamp complete.\r\n\r\nRemove completed items?");
    ASSERT_TRUE(program.AnswerBox(IDNO, kWait));
}

void EndToEnd::Close(const RemoteTidemark& program) {
    program.Main().Close();
    EXPECT_EQ(program.Process().WaitForExit(kWait), 0U);
}

bool EndToEnd::WaitForStored(const char* key, const std::string& text) {
    return PollUntil(kWait,
                     [&] { return RegistrySettingsStore().ReadText(key, "(missing)") == text; });
}

void EndToEnd::EndSession(const RemoteTidemark& program) {
    EXPECT_EQ(program.Main().Send(WM_QUERYENDSESSION, 0, ENDSESSION_LOGOFF), TRUE);
    program.Main().Send(WM_ENDSESSION, TRUE, ENDSESSION_LOGOFF);
    EXPECT_EQ(program.Process().WaitForExit(kWait), 0U);
}

}  // namespace tidemark
