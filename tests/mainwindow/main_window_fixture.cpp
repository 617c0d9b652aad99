#include "mainwindow/main_window_fixture.h"

#include "platform/raise.h"
#include "support/row_state.h"
#include "ui/message_loop.h"

namespace tidemark {

std::string Numbered(const std::string& text, int number) {
    return text + std::to_string(number);
}

MainWindowTest::MainWindowTest() {
    MakeWindow(screen_, popup_menus_);
}

void MainWindowTest::MakeWindow(const Screen& screen, PopupMenuSystem& popup_menus,
                                Platform& platform) {
    window_ = std::make_unique<frmMain>(MainWindowServices{
        .common = {.platform = platform,
                   .settings = settings_,
                   .command_runner = commands_,
                   .popup_menus = popup_menus,
                   .drag_files = [this](OleDragDropSink& source,
                                        std::int16_t button) { drag_files_(source, button); }},
        .boxes = boxes_,
        .screen = screen,
        .process = process_,
        .taskbar = [this] { return ComPtr<ITaskbarList3>(taskbar_.Get()); },
        .errors_list_columns = [this]() -> ListColumns& { return errors_columns_; },
        .show_errors =
            [this](const StampErrorList& errors, bool topmost) {
                errors_shown_.push_back(errors);
                errors_topmost_ = topmost;
            },
        .show_about = [this](bool topmost) { about_shown_.push_back(topmost); },
        .shut_down =
            [this](bool unload_main) {
                shut_downs_.push_back(unload_main);
                Raise(on_shut_down_);
                if (unload_main) {
                    window_->Close();
                }
            },
        .closed = [this] { ++closed_; }});
}

MainWindowTest::~MainWindowTest() {
    EXPECT_EQ(system_.pump.Failures(), std::vector<std::string>());
    window_.reset();
    EXPECT_EQ(system_.volume.OpenFileCount(), 0U);
    EXPECT_EQ(system_.volume.OpenSearchCount(), 0U);
    PumpPending();
}

void MainWindowTest::Load(bool reset) {
    window_->Form_Load();
    window_->InitializeDisplay();
    window_->LoadPosition(reset);
    window_->SetVisible(true);
    ::SetForegroundWindow(window_->Handle());
    PumpPending();
    Finish();
}

void MainWindowTest::LoadWithFiles(int count) {
    Load();
    std::vector<std::string> paths;
    for (int i = 1; i <= count; ++i) {
        paths.push_back("C:\\data\\file" + std::to_string(i) + ".txt");
        system_.volume.AddFile(paths.back());
    }
    List(paths);
}

void MainWindowTest::AddTree(const std::string& name, int files) {
    system_.volume.AddFolder("C:\\trees\\" + name);
    for (int i = 0; i < files; ++i) {
        system_.volume.AddFile("C:\\trees\\" + name + "\\f" + std::to_string(i));
    }
}

void MainWindowTest::List(const std::vector<std::string>& paths) {
    window_->AddItems(paths);
    Finish();
}

void MainWindowTest::Open(const char* top) {
    int position = 0;
    for (const char* name : {"mnuFile", "mnuEdit", "mnuView", "mnuOptions", "mnuHelp"}) {
        if (std::string(name) == top) {
            break;
        }
        ++position;
    }
    const HMENU popup = ::GetSubMenu(window_->menu.Bar(), position);
    ASSERT_NE(popup, nullptr);
    window_->Send(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), MAKELPARAM(position, FALSE));
}

void MainWindowTest::Choose(const char* top, const char* name) {
    Open(top);
    ASSERT_TRUE(Item(name).Enabled()) << name;
    window_->Send(WM_COMMAND, Item(name).Id());
    PumpPending();
}

void MainWindowTest::Press(UINT key, UINT message) {
    MSG press{::GetFocus(), message, key, 1, 0, {}};
    RouteMessage(press);
    PumpPending();
}

void MainWindowTest::Finish() {
    system_.pump.RunUntilIdle();
    PumpPending();
}

void MainWindowTest::SelectRow(const std::string& key, bool selected) {
    const ListModel& rows = window_->rows;
    std::size_t position = 0;
    while (position < rows.Count() && rows.At(position).key != key) {
        ++position;
    }
    ASSERT_LT(position, rows.Count()) << key;
    ChangeRowState(window_->lvwItems, position, LVIS_SELECTED, selected);
    ASSERT_EQ(rows.At(position).selected, selected) << key;
}

std::vector<std::string> MainWindowTest::RowTexts() const {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < window_->rows.Count(); ++i) {
        texts.push_back(window_->rows.At(i).text);
    }
    return texts;
}

void MainWindowTest::StartSlowStamp() {
    AddTree("slow", 20);
    List({"C:\\trees\\slow"});
    window_->cmdStamp_Click();
}

}  // namespace tidemark
