// The window itself: its controls, its first display, and its end.

#include "mainwindow/frm_main.h"

#include "mainwindow/layout.h"
#include "mainwindow/main_menu.h"
#include "mainwindow/status_display.h"
#include "settings/mod_options.h"

namespace tidemark {
namespace {

constexpr const wchar_t* kClassName = L"frmMain";
constexpr std::uint32_t kPollInterval = 400;  // milliseconds
constexpr double kFontPoints = 8.25;
constexpr int kDateWidth = 111;
constexpr int kTimeWidth = 90;
constexpr int kPickerHeight = 21;
constexpr int kStampLeft = kTimeColumn + kTimeWidth + 15;
constexpr int kStampWidth = 80;
constexpr int kStampHeight = 25;
constexpr int kCheckBoxGap = 4;  // between the box and its text

}  // namespace

frmMain::frmMain(const MainWindowServices& services)
    : menu(MainMenuTable()),
      rows(services.platform.locale),
      lvwItems(rows, ImageList1),
      services_(services),
      oItems(services.platform) {}

frmMain::~frmMain() {
    Destroy();
}

void frmMain::Form_Load() {
    Create(kClassName, {.caption = "tidemark clock"});
    font_ = MakeFont(MessageFontName(), kFontPoints);
    SetFormFont(font_.Get());
    CreateControls();
    WireMenus();
    oTimer = services_.platform.timers.NewTimer(TickKind::kBrief);
    oTimer->SetSink(this);
    oTimer->SetInterval(kPollInterval);
}

void frmMain::CreateControls() {
    SetMenuBar(&menu);
    picControls.Create(*this, {});
    lblLastModified.Create(picControls, {.text = "Last &Modified:"});
    const auto create_picker = [this](DateTimePicker& picker, DateTimePicker::Kind kind) {
        const bool date = kind == DateTimePicker::Kind::kDate;
        picker.Create(picControls, kind,
                      {.bounds = {.left = date ? kDateColumn : kTimeColumn,
                                  .width = date ? kDateWidth : kTimeWidth,
                                  .height = kPickerHeight}});
    };
    create_picker(dtDateLastModified, DateTimePicker::Kind::kDate);
    create_picker(dtTimeLastModified, DateTimePicker::Kind::kTime);
    chkCreated.Create(picControls, {.text = "&Created:"});
    chkCreated.SetChecked(true);
    chkCreated.on_click = [this] { chkCreated_Click(); };
    create_picker(dtDateCreated, DateTimePicker::Kind::kDate);
    create_picker(dtTimeCreated, DateTimePicker::Kind::kTime);
    cmdStamp.Create(picControls,
                    {.text = "&Stamp",
                     .bounds = {.left = kStampLeft, .width = kStampWidth, .height = kStampHeight}});
    cmdStamp.on_click = [this] { cmdStamp_Click(); };
    SetDefaultButton(&cmdStamp);

    lvwItems.Create(*this, {},
                    {{.header = "Name", .width = 300},
                     {.header = "Contains", .width = 300},
                     {.header = "Status", .width = 300}});
    StatusBar1.Create(*this, {.text = "  Ready"});
    ProgressBar1.Create(*this, {.visible = false});

    const auto fit = [](Control& control, int beside_text) {
        const Size text = control.TextSize(control.Text());
        control.Move({.width = text.width + beside_text, .height = text.height});
    };
    fit(lblLastModified, 0);
    fit(chkCreated, ::GetSystemMetrics(SM_CXMENUCHECK) + kCheckBoxGap);
}

void frmMain::InitializeDisplay() {
    lvwItems.SetVisible(false);
    LoadOptions(services_.settings, *this);
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
}

void frmMain::OnResize(Size /*client*/) {
    Form_Resize();
}

void frmMain::OnClose() {
    if (oTimer) {
        oTimer.reset();
        stamp_starting_ = false;
        oItems.Clear(nullptr);
        services_.shut_down(/*unload_main=*/false);
    }
    Destroy();
}

void frmMain::OnDestroy() {
    services_.closed();
}

}  // namespace tidemark
