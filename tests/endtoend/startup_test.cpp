// From the start of the program to the end of its splash, and its end, seen from outside.

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "endtoend/end_to_end.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"
#include "support/poll_until.h"

namespace tidemark {
namespace {

using std::chrono::milliseconds;
using testing::IsSubsetOf;

constexpr const wchar_t* kOptions = L"Software\\Tidemark\\Options";

void SetOption(const wchar_t* name, const std::wstring& text) {
    ::RegSetKeyValueW(HKEY_CURRENT_USER, kOptions, name, REG_SZ, text.c_str(),
                      static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

std::optional<RemoteWindow> FindWindowOf(const RemoteProcess& process,
                                         const std::wstring& class_name) {
    for (const RemoteWindow& window : TopLevelWindows(process)) {
        if (window.ClassName() == class_name) {
            return window;
        }
    }
    return std::nullopt;
}

bool IsTopmost(HWND window) {
    return (::GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

// What can be seen of a start, look by look.
struct SeenStart {
    std::vector<int> opacities;  // of the splash, each once
    std::string version;         // its labels
    std::string hint;
    bool main_before_opaque = false;  // the main window could be seen too early
    bool splash_owned_by_main = false;
    int looks_above_main = 0;  // those at which both were to be seen, the splash in front
    int looks_below_main = 0;
    bool splash_topmost = false;
    milliseconds opaque_to_main{0};
    milliseconds main_to_fade{0};
    HWND main = nullptr;
    HWND errors = nullptr;
};

// Watches a process until its splash has gone. Nothing when it does not within the time.
std::optional<SeenStart> WatchStart(const RemoteProcess& process, milliseconds limit,
                                    const std::function<void()>& at_each_look) {
    using Clock = std::chrono::steady_clock;
    SeenStart seen;
    HWND splash = nullptr;
    std::optional<Clock::time_point> opaque;
    struct Between {
        Clock::time_point after;
        Clock::time_point by;
    };
    std::optional<Between> main_shown;
    std::optional<Clock::time_point> fading;
    // What is seen has come about since the look before. Counted from there, a span may seem longer
    // when looks come late, but never shorter than it was.
    Clock::time_point this_look = Clock::now();
    const bool gone = PollUntil(limit, [&] {
        const Clock::time_point look_before = std::exchange(this_look, Clock::now());
        at_each_look();
        if (splash == nullptr) {
            const auto found = FindWindowOf(process, L"frmSplash");
            if (!found || !found->Visible()) {
                return false;
            }
            splash = found->Handle();
            const auto labels = found->Descendants();
            seen.version = labels.empty() ? "" : labels[0].Text();
            seen.hint = labels.size() < 2 ? "" : labels[1].Text();
        }
        if (!::IsWindow(splash)) {
            return true;
        }
        // Looked for before the opacity, which may have become full by the time of another look.
        const auto main = seen.main == nullptr ? FindWindowOf(process, L"frmMain") : std::nullopt;
        const bool main_comes = main && main->Visible();
        BYTE opacity = 0;
        if (::GetLayeredWindowAttributes(splash, nullptr, &opacity, nullptr) &&
            (seen.opacities.empty() || seen.opacities.back() != opacity)) {
            seen.opacities.push_back(opacity);
        }
        if (opacity == 255 && !opaque) {
            opaque = look_before;
        }
        if (seen.main == nullptr) {
            if (main_comes) {
                seen.main = main->Handle();
                main_shown = {.after = look_before, .by = Clock::now()};
                seen.main_before_opaque = !opaque;
            }
        } else {
            seen.splash_owned_by_main |= ::GetWindow(splash, GW_OWNER) == seen.main;
            if (opacity == 255) {
                ++(IsAbove(splash, seen.main) ? seen.looks_above_main : seen.looks_below_main);
            }
            seen.splash_topmost |= IsTopmost(splash);
        }
        if (main_shown && opacity < 255 && !fading) {
            fading = Clock::now();
        }
        return false;
    });
    if (!gone || !opaque || !main_shown) {
        return std::nullopt;
    }
    seen.opaque_to_main = std::chrono::duration_cast<milliseconds>(main_shown->by - *opaque);
    if (fading) {
        seen.main_to_fade = std::chrono::duration_cast<milliseconds>(*fading - main_shown->after);
    }
    if (const auto errors = FindWindowOf(process, L"frmErrors")) {
        seen.errors = errors->Handle();
    }
    return seen;
}

class StartupEndToEnd : public EndToEnd {
  protected:
    // Starts the program and watches it until its splash has gone.
    SeenStart StartWatched(
        const std::string& arguments = {}, const std::function<void()>& at_each_look = [] {}) {
        process_ = std::make_unique<RemoteProcess>(ProgramPath(), arguments);
        const auto seen = WatchStart(*process_, kWait, at_each_look);
        EXPECT_TRUE(seen.has_value()) << "the splash did not come and go";
        return seen.value_or(SeenStart{});
    }
    void CloseMain(const SeenStart& seen) {
        ::PostMessageW(seen.main, WM_CLOSE, 0, 0);
        EXPECT_EQ(process_->WaitForExit(kWait), 0U);
    }

    std::unique_ptr<RemoteProcess> process_;
};

TEST_F(StartupEndToEnd, TheSplashFadesInWaitsAndFadesOutAboveTheMainWindow) {
    const SeenStart seen = StartWatched();
    const std::vector<int>& opacities = seen.opacities;
    EXPECT_THAT(std::set<int>(opacities.begin(), opacities.end()),
                IsSubsetOf({0, 64, 128, 192, 255, 223, 191, 159, 127, 95, 63, 31}));
    const auto opaque = std::find(opacities.begin(), opacities.end(), 255);
    EXPECT_TRUE(std::is_sorted(opacities.begin(), opaque));
    EXPECT_TRUE(std::is_sorted(opaque, opacities.end(), std::greater<>()));
    EXPECT_FALSE(seen.main_before_opaque);
    // The clocks of two processes and the looks between: some ten milliseconds either way.
    EXPECT_GE(seen.opaque_to_main, milliseconds(450));
    EXPECT_GE(seen.main_to_fade, milliseconds(300));
    EXPECT_TRUE(seen.splash_owned_by_main);
    // While the main window is being shown it may be in front for a moment.
    EXPECT_GT(seen.looks_above_main, 0);
    EXPECT_GT(seen.looks_above_main, 10 * seen.looks_below_main);
    EXPECT_FALSE(seen.splash_topmost);
    CloseMain(seen);
}

TEST_F(StartupEndToEnd, WindowsCarryTheirTexts) {
    const SeenStart seen = StartWatched();
    EXPECT_EQ(RemoteWindow(*process_, seen.main).Text(), "tidemark clock");
    EXPECT_THAT(seen.version, testing::MatchesRegex("version \\d+\\.\\d+  build \\d+"));
    EXPECT_EQ(seen.hint, "Hold SHIFT to reset window location.");
    CloseMain(seen);
}

TEST_F(StartupEndToEnd, TheErrorsWindowIsLoadedUnseenInTheMiddleOfTheMainWindow) {
    const SeenStart seen = StartWatched();
    ASSERT_NE(seen.errors, nullptr);
    const RemoteWindow errors(*process_, seen.errors);
    EXPECT_EQ(errors.Text(), "errors: tidemark");
    EXPECT_FALSE(errors.Visible());
    const RECT main = PlaceOf(seen.main);
    const RECT place = PlaceOf(seen.errors);
    EXPECT_NEAR(main.left + main.right, place.left + place.right, 2);
    EXPECT_NEAR(main.top + main.bottom, place.top + place.bottom, 2);
    CloseMain(seen);
}

TEST_F(StartupEndToEnd, TheSplashStaysAboveATopmostMainWindow) {
    SetOption(L"AlwaysOnTop", L"True");
    const SeenStart seen = StartWatched();
    // Of the main window itself this cannot be asked everywhere: Wine lets no window become topmost
    // that owns others, and pickers have calendars.
    EXPECT_TRUE(seen.splash_topmost);
    EXPECT_TRUE(seen.splash_owned_by_main);
    CloseMain(seen);
}

TEST_F(StartupEndToEnd, ShiftHeldAtStartResetsThePlacement) {
    SetOption(L"Left", L"1500");
    SetOption(L"Top", L"1500");
    SetOption(L"Width", L"12000");
    SetOption(L"Height", L"9000");
    const SeenStart kept = StartWatched();
    const RECT stored = PlaceOf(kept.main);
    EXPECT_EQ(stored.left, 100);
    EXPECT_EQ(stored.top, 100);
    CloseMain(kept);

    // Pressed again and again: a window that gets the focus asks the display which keys are down.
    const SeenStart seen = StartWatched({}, [] { ::keybd_event(VK_SHIFT, 0, 0, 0); });
    ::keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
    const RECT reset = PlaceOf(seen.main);
    EXPECT_EQ(reset.left, (::GetSystemMetrics(SM_CXSCREEN) - 640) / 2);
    EXPECT_EQ(reset.top, (::GetSystemMetrics(SM_CYSCREEN) - 480) / 2);
    CloseMain(seen);
}

TEST_F(StartupEndToEnd, QuotedPathsStayWholeAndCommasSplit) {
    RealTree tree;
    tree.MakeFile("a b.txt");
    tree.MakeFile("c");
    tree.MakeFile("d");
    const SeenStart seen =
        StartWatched(Quoted(tree.Path("a b.txt")) + "  " + tree.Path("c") + "," + tree.Path("d"));
    const RemoteTidemark program;
    ASSERT_TRUE(program.WaitForCounts(3, kWait));
    EXPECT_EQ(program.lvwItems().Cell(0, 0), tree.Path("a b.txt"));
    EXPECT_EQ(program.lvwItems().Cell(1, 0), tree.Path("c"));
    EXPECT_EQ(program.lvwItems().Cell(2, 0), tree.Path("d"));
    CloseMain(seen);
}

TEST_F(StartupEndToEnd, TheProgramIsRegisteredUnderTheMachinesApplicationPaths) {
    const std::wstring program = WideFromUtf8(ProgramPath());
    const std::wstring folder = program.substr(0, program.rfind(L'\\'));
    const std::wstring key = L"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\" +
                             program.substr(folder.size() + 1);
    for (int start = 0; start < 2; ++start) {
        ::RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), L"Path");
        const SeenStart seen = StartWatched();
        CloseMain(seen);
        wchar_t text[1024] = L"";
        DWORD size = sizeof(text);
        EXPECT_EQ(::RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), L"Path", RRF_RT_REG_SZ, nullptr,
                                 text, &size),
                  ERROR_SUCCESS);
        EXPECT_EQ(std::wstring(text), folder);
    }
}

TEST_F(StartupEndToEnd, ClosingAsSoonAsTheWindowShowsEndsTheProgram) {
    RealTree tree;
    MakeManyFiles(tree, /*folders=*/60, /*files_in_each=*/40);
    std::string arguments;
    for (int i = 0; i < 60; ++i) {
        arguments += Quoted(tree.Path("many " + std::to_string(i))) + " ";
    }
    process_ = std::make_unique<RemoteProcess>(ProgramPath(), arguments);
    std::optional<RemoteWindow> main;
    ASSERT_TRUE(PollUntil(kWait, [&] {
        main = FindWindowOf(*process_, L"frmMain");
        return main && main->Visible();
    }));
    main->Close();
    EXPECT_EQ(process_->WaitForExit(kWait), 0U);
}

TEST_F(StartupEndToEnd, ExitInTheMiddleOfAStampEndsTheProgram) {
    SetOption(L"PromptWhenDone", L"False");  // also when the stamp turns out to be the quicker one
    RealTree tree;
    MakeManyFiles(tree, /*folders=*/60, /*files_in_each=*/40);
    const SeenStart seen = StartWatched(Quoted(tree.Root()));
    const RemoteTidemark program;
    ASSERT_TRUE(program.WaitForCounts(1, kWait));
    program.cmdStamp().Click();
    program.Main().Post(WM_SYSCOMMAND, SC_KEYMENU, 'f');
    ASSERT_TRUE(PollUntil(kWait, [&] { return FindWindowOf(*process_, L"#32768").has_value(); }));
    program.Main().Post(WM_KEYDOWN, 'X');
    EXPECT_EQ(process_->WaitForExit(kWait), 0U);
}

// Makes the Scripting Runtime's component one that cannot be created, while alive. The user's own
// registration of it comes before the machine's; where the system does not look there (Wine), the
// machine's is changed and put back.
class MissingRuntime {
  public:
    MissingRuntime() {
        Set(HKEY_CURRENT_USER, kNowhere);
        if (Read(HKEY_CLASSES_ROOT, kComponent) != kNowhere) {
            machines_own_ = Read(HKEY_LOCAL_MACHINE, kKey);
            if (machines_own_ == kNowhere) {
                machines_own_ = kGenuine;  // a run that was killed has left it so
            }
            Set(HKEY_LOCAL_MACHINE, kNowhere);
        }
    }
    ~MissingRuntime() {
        ::RegDeleteTreeW(HKEY_CURRENT_USER, kParent);
        if (!machines_own_.empty()) {
            Set(HKEY_LOCAL_MACHINE, machines_own_);
        }
    }
    MissingRuntime(const MissingRuntime&) = delete;
    MissingRuntime& operator=(const MissingRuntime&) = delete;

  private:
    static constexpr const wchar_t* kNowhere = L"{7E0F9C7A-51A5-4D7C-9C8E-3F2B4C0F1D55}";
    static constexpr const wchar_t* kGenuine = L"{0D43FE01-F093-11CF-8940-00A0C9054228}";
    static constexpr const wchar_t* kParent = L"Software\\Classes\\Scripting.FileSystemObject";
    static constexpr const wchar_t* kKey = L"Software\\Classes\\Scripting.FileSystemObject\\CLSID";
    static constexpr const wchar_t* kComponent = L"Scripting.FileSystemObject\\CLSID";

    static void Set(HKEY root, const std::wstring& id) {
        ::RegSetKeyValueW(root, kKey, nullptr, REG_SZ, id.c_str(),
                          static_cast<DWORD>((id.size() + 1) * sizeof(wchar_t)));
    }
    static std::wstring Read(HKEY root, const wchar_t* key) {
        std::array<wchar_t, 64> id{};
        DWORD size = sizeof(id);
        ::RegGetValueW(root, key, nullptr, RRF_RT_REG_SZ, nullptr, id.data(), &size);
        return id.data();
    }

    std::wstring machines_own_;
};

TEST_F(StartupEndToEnd, AMissingRuntimeIsToldAndNoMainWindowIsMade) {
    const MissingRuntime missing;
    const RemoteProcess process(ProgramPath(), "");
    bool main_seen = false;
    bool splash_opaque = false;
    std::optional<RemoteWindow> box;
    ASSERT_TRUE(PollUntil(kWait, [&] {
        main_seen |= FindWindowOf(process, L"frmMain").has_value();
        if (const auto splash = FindWindowOf(process, L"frmSplash")) {
            BYTE opacity = 0;
            ::GetLayeredWindowAttributes(splash->Handle(), nullptr, &opacity, nullptr);
            splash_opaque |= opacity == 255;
        }
        box = FindWindowOf(process, L"#32770");
        return (box && box->Visible()) || main_seen;
    }));
    ASSERT_FALSE(main_seen);
    EXPECT_TRUE(splash_opaque);
    EXPECT_EQ(box->Text(), "tidemark");
    std::string text;
    for (const RemoteWindow& child : box->Descendants()) {
        if (child.Text().starts_with("The Microsoft")) {
            text = child.Text();
        }
    }
    EXPECT_THAT(text, testing::StartsWith("The Microsoft Scripting Runtime is not available.\n\n"));
    EXPECT_THAT(text, testing::EndsWith("\n\nThe tidemark will now exit."));
    box->Post(WM_COMMAND, IDOK);
    EXPECT_EQ(process.WaitForExit(kWait), 0U);
}

}  // namespace
}  // namespace tidemark
