// The program is killed in the middle of things: its settings are whole afterwards, and it starts.

#include <cstdlib>
#include <string>
#include <vector>

#include "endtoend/end_to_end.h"
#include "platform/win32/registry_settings_store.h"
#include "settings/mod_options.h"
#include "support/poll_until.h"
#include "support/size_from_environment.h"

namespace tidemark {
namespace {

class KilledEndToEnd : public EndToEnd {
  protected:
    static constexpr DWORD kKilled = 77;

    // What the program is in the middle of.
    enum Moment { kStarting, kCounting, kStamping, kMoving, kChoosing, kClosing, kMoments };

    // False when it had ended by itself, which it then did well.
    static bool Kill(const RemoteProcess& process) {
        ::TerminateProcess(process.Handle(), kKilled);
        const DWORD code = process.WaitForExit(kWait).value_or(STILL_ACTIVE);
        EXPECT_TRUE(code == kKilled || code == 0) << code;
        return code == kKilled;
    }

    // Starts the program, lets it come to the moment and kills it. `turn` varies how far into it.
    // False when it was too late.
    static bool KillIn(Moment moment, int turn, const std::string& folder) {
        if (moment == kStarting) {
            const RemoteProcess process(ProgramPath(), Quoted(folder));
            ::Sleep(static_cast<DWORD>(turn * 37 % 1500));
            return Kill(process);
        }
        const RemoteTidemark program = Start(Quoted(folder));
        const RemoteWindow main = program.Main();
        switch (moment) {
            case kStamping:
                EXPECT_TRUE(program.WaitForCounts(1, kWait));
                program.cmdStamp().Post(BM_CLICK);
                EXPECT_TRUE(PollUntil(kWait, [&] {
                    return program.cmdStamp().Text() == "Cancel" || program.Shown(L"#32770");
                }));
                break;
            case kMoving:
                ::SetWindowPos(main.Handle(), nullptr, 40 + turn % 200, 50 + turn % 150,
                               600 + turn % 100, 460, SWP_NOZORDER | SWP_NOACTIVATE);
                main.Post(WM_EXITSIZEMOVE);
                break;
            case kChoosing:
                // An option is stored as soon as it is chosen.
                EXPECT_TRUE(program.ChooseFromMenu('o', turn % 5, kWait));
                break;
            case kClosing:
                main.Post(WM_CLOSE);
                break;
            default:
                break;
        }
        ::Sleep(static_cast<DWORD>(turn / kMoments % 7 * 3));
        return Kill(program.Process());
    }

    // Every value is one that the program writes, from its first to its last character.
    void ExpectSettingsWhole() const {
        for (const OptionDefinition& option : OptionDefinitions()) {
            const std::string text = store_.ReadText(option.key, "True");
            EXPECT_TRUE(text == "True" || text == "False") << option.key << "=" << text;
        }
        for (const std::string& key : NumberKeys()) {
            const std::string text = store_.ReadText(key, "0");
            char* end = nullptr;
            EXPECT_LT(std::abs(std::strtod(text.c_str(), &end)), 100000) << key << "=" << text;
            EXPECT_TRUE(!text.empty() && *end == '\0') << key << "=" << text;
        }
    }
    static std::vector<std::string> NumberKeys() {
        std::vector<std::string> keys = {"Left", "Top", "Width", "Height"};
        for (const char* kind : {"ColumnWidth", "ErrorColumnWidth"}) {
            for (int column = 1; column <= 3; ++column) {
                keys.push_back(std::to_string(column) + kind);
            }
        }
        return keys;
    }

    RegistrySettingsStore store_;
    RealTree tree_;
};

// TIDEMARK_KILLS sets how often.
TEST_F(KilledEndToEnd, SettingsAreWholeAndTheNextStartWorks) {
    const int kills = SizeFromEnvironment("TIDEMARK_KILLS", kMoments);
    MakeManyFiles(tree_, /*folders=*/10, /*files_in_each=*/kills > kMoments ? 100 : 20);
    int killed = 0;
    for (int turn = 0; killed < kills; ++turn) {
        SCOPED_TRACE("start " + std::to_string(turn));
        killed += KillIn(static_cast<Moment>(turn % kMoments), turn, tree_.Root()) ? 1 : 0;
        ExpectSettingsWhole();
        if (HasFailure()) {
            return;
        }
    }
    // What the end of a stamp shows depends on the options that were toggled.
    for (const OptionDefinition& option : OptionDefinitions()) {
        store_.WriteText(option.key, option.default_text);
    }
    const RemoteTidemark program = Start(Quoted(tree_.Root()));
    EXPECT_TRUE(program.WaitForCounts(1, kWait));
    StampAll(program);
    EXPECT_EQ(program.Status(0), "Complete");
    Close(program);
    ExpectSettingsWhole();
}

}  // namespace
}  // namespace tidemark
