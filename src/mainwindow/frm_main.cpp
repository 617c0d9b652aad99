// The window itself: its controls, its first display, and its end.

#include "mainwindow/frm_main.h"

#include <utility>

#include "mainwindow/layout.h"
#include "mainwindow/main_menu.h"
#include "mainwindow/status_display.h"
#include "platform/attempt.h"
#include "platform/win32/win32_placed_window.h"
#include "settings/mod_options.h"
#include "settings/window_placement.h"

namespace tidemark {
namespace {

constexpr const wchar_t* kClassName = L"frmMain";
constexpr std::uint32_t kPollInterval = 400;         // milliseconds
constexpr const char* kDesignFont = "MS Shell Dlg";  // the message font takes its place
constexpr double kFontPoints = 8.25;
constexpr int kDateWidth = 111;
constexpr int kTimeWidth = 90;
constexpr int kPickerHeight = 21;
constexpr int kStampLeft = kTimeColumn + kTimeWidth + 15;
constexpr int kStampWidth = 80;
constexpr int kStampHeight = 25;
// The smallest client area, which a first run opens with: the list shows some rows.
constexpr int kSmallestWidth = 480;
constexpr int kSmallestHeight = 320;
constexpr int kCheckBoxGap = 4;  // between the box and its text

}  // namespace

frmMain::frmMain(const MainWindowServices& services)
    : menu(MainMenuTable()),
      rows(services.common.platform.locale),
      lvwItems(rows, ImageList1),
      services_(services),
      oItems(services.common.platform),
      adding_(services.common.platform, oItems, rows, ImageList1.Keyed(),
              [this](bool stamp_due) { OnBatchAdded(stamp_due); }) {}

frmMain::~frmMain() {
    Destroy();
}

void frmMain::Form_Load() {
    Create(kClassName, {.caption = "tidemark clock"});
    font_ = MakeFont(kDesignFont, kFontPoints);
    SetFormFont(font_.Get());
    CreateControls();
    WireMenus();
    WireDialogs();
    WireList();
    oSubclasser.WndProc = [this](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        OnExitSizeMove();
        return std::nullopt;
    };
    oSubclasser.RegisterMessages(Handle(), {WM_EXITSIZEMOVE});
    MinMax1.minimum = SmallestSize();
    MinMax1.AttachTo(Handle());
    taskbar_button_.AttachTo(Handle(), services_.taskbar);
    oTimer = services_.common.platform.timers.NewTimer(TickKind::kBrief);
    oTimer->SetSink(this);
    oTimer->SetInterval(kPollInterval);
    loaded_ = true;
}

void frmMain::CreateControls() {
    SetMenuBar(&menu);
    // The panel and the list overlap while one has moved and the other not yet: neither may paint
    // over the other, nor take a picture of it along.
    constexpr DWORD kKeepsApart = WS_CLIPSIBLINGS;
    picControls.Create(*this, {.style = kKeepsApart});
    lblLastModified.Create(picControls, {.text = "Last &Modified:"});
    // A control that nothing visible names has a hidden label before it.
    const auto name_next = [](ControlSite& site, Label& label, const char* name) {
        label.Create(site, {.text = name, .visible = false});
    };
    const auto create_picker = [this](DateTimePicker& picker, DateTimePicker::Kind kind) {
        const bool date = kind == DateTimePicker::Kind::kDate;
        picker.Create(picControls, kind,
                      {.bounds = {.left = date ? kDateColumn : kTimeColumn,
                                  .width = date ? kDateWidth : kTimeWidth,
                                  .height = kPickerHeight}});
    };
    create_picker(dtDateLastModified, DateTimePicker::Kind::kDate);
    name_next(picControls, lblTimeLastModified, "Last Modified time");
    create_picker(dtTimeLastModified, DateTimePicker::Kind::kTime);
    chkCreated.Create(picControls, {.text = "&Created:"});
    chkCreated.SetChecked(true);
    chkCreated.on_click = [this] { chkCreated_Click(); };
    name_next(picControls, lblDateCreated, "Created date");
    create_picker(dtDateCreated, DateTimePicker::Kind::kDate);
    name_next(picControls, lblTimeCreated, "Created time");
    create_picker(dtTimeCreated, DateTimePicker::Kind::kTime);
    cmdStamp.Create(picControls,
                    {.text = "&Stamp",
                     .bounds = {.left = kStampLeft, .width = kStampWidth, .height = kStampHeight}});
    cmdStamp.on_click = [this] { cmdStamp_Click(); };
    SetDefaultButton(&cmdStamp);

    name_next(*this, lblItems, "Items");
    lvwItems.Create(*this, {.style = kKeepsApart, .extended_style = WS_EX_CLIENTEDGE},
                    {{.header = "Name", .width = 300},
                     {.header = "Contains", .width = 300},
                     {.header = "Status", .width = 300}});
    OLEDropper1.Create(*this, {.style = kKeepsApart, .extended_style = WS_EX_CLIENTEDGE});
    name_next(*this, lblProgress, "Progress");
    ProgressBar1.Create(*this, {.visible = false});
    // It must not paint over the progress bar.
    StatusBar1.Create(*this, {.text = "  Ready", .style = kKeepsApart});

    tipTimes.Create(*this);
    tipTimes.text = [this] { return TimesInWords(); };
    tipTimes.AddTool(cmdStamp);
    tipTimes.AddTool(picControls);  // gets the mouse over a picker that is disabled
    for (DateTimePicker* const picker :
         {&dtDateLastModified, &dtTimeLastModified, &dtDateCreated, &dtTimeCreated}) {
        picker->on_change = [this] { tipTimes.Update(); };
        tipTimes.AddTool(*picker);
    }

    message_font_.Adopt(*this);
    const auto fit = [](Control& control, int beside_text) {
        const Size text = control.TextSize(control.Text());
        control.Move({.width = text.width + beside_text, .height = text.height});
    };
    fit(lblLastModified, 0);
    fit(chkCreated, ::GetSystemMetrics(SM_CXMENUCHECK) + kCheckBoxGap);
}

void frmMain::InitializeDisplay() {
    ShowListOrLabel(/*list=*/false);
    LoadOptions(services_.common.settings, *this);
    const PickedDateTime now = LocalNow();
    const PickedDateTime one_o_clock = {
        .year = now.year, .month = now.month, .day = now.day, .hour = 1};
    dtDateLastModified.SetValue(now);
    dtDateCreated.SetValue(now);
    dtTimeLastModified.SetValue(one_o_clock);
    dtTimeCreated.SetValue(one_o_clock);
    StatusBar1.SetFirstPanelWidth(StatusBar1.WidthFor(kWidestStatusText));
    ProgressBar1.ChangeExtendedStyle(0, WS_EX_STATICEDGE | WS_EX_CLIENTEDGE);
    menu["mnuListPopup"].SetVisible(false);
    menu["mnuItemPopup"].SetVisible(false);
    menu["mnuBadItemPopup"].SetVisible(false);
    oTimer_Timer();
    UpdateControls();
    bRestoringPlacement = false;
}

void frmMain::LoadPosition(bool reset) {
    struct Restoring {
        bool& flag;
        ~Restoring() { flag = false; }
    };
    bRestoringPlacement = true;
    const Restoring restoring{bRestoringPlacement};
    Win32PlacedWindow window(Handle(), services_.screen);
    LoadWindowPlacement(services_.common.settings, services_.screen, window, reset);
}

void frmMain::OnExitSizeMove() {
    if (!bRestoringPlacement) {
        SaveWindowPlacement(services_.common.settings,
                            Win32PlacedWindow(Handle(), services_.screen));
    }
}

Size frmMain::SmallestSize() const {
    RECT outer{0, 0, kSmallestWidth, kSmallestHeight};
    ::AdjustWindowRectEx(&outer, Style(), /*bMenu=*/TRUE, ExtendedStyle());
    return {static_cast<int>(outer.right - outer.left), static_cast<int>(outer.bottom - outer.top)};
}

void frmMain::OnFirstFocus() {
    picControls.Focus();
}

void frmMain::OnResize(Size /*client*/) {
    Form_Resize();
}

void frmMain::OnClose() {
    if (oTimer) {
        Form_QueryUnload();
    }
    Destroy();
}

void frmMain::Form_QueryUnload() {
    // Closing is never refused: whatever fails, the steps after it are still done.
    Attempt([this] { oSubclasser.StopSubclassing(); });
    oTimer.reset();
    stamp_starting_ = false;
    adding_.Clear();
    Attempt([this] { oItems.Clear(nullptr); });
    Attempt([this] { SaveColumnWidths(services_.common.settings, *this, ColumnSet::kItemList); });
    Attempt([this] { services_.shut_down(/*unload_main=*/false); });
}

void frmMain::OnDestroy() {
    if (std::exchange(loaded_, false)) {
        services_.closed();
    }
}

}  // namespace tidemark
