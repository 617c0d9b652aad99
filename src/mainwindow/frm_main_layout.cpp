// Layout: where the panel, the list and the controls in the panel go.

#include "mainwindow/frm_main.h"
#include "mainwindow/layout.h"
#include "settings/mod_options.h"

namespace tidemark {

void frmMain::Form_Resize() {
    StatusBar1.FollowForm();
    const FormPlaces places =
        PlacesInForm(menu["mnuViewControlsOnTop"].Checked(), ClientSize().width,
                     picControls.Position().height, StatusBar1.Position().top);
    if (places.list.width < 0 || places.list.height < 0) {
        return;
    }
    picControls.Move(places.panel);
    picControls.Invalidate();  // strips that its controls left may have moved along with it
    lvwItems.Move(places.list);
    OLEDropper1.Move(places.list);
    PositionProgressBar();
}

void frmMain::ArrangeControls(bool showDateCreated, bool controlsOnTop) {
    chkCreated.SetVisible(showDateCreated);
    chkCreated.SetEnabled(showDateCreated);
    dtDateCreated.SetVisible(showDateCreated);
    dtTimeCreated.SetVisible(showDateCreated);

    const auto move_to = [](Control& control, int left, int top) {
        const Bounds now = control.Position();
        control.Move({.left = left, .top = top, .width = now.width, .height = now.height});
    };
    const Bounds panel = picControls.Position();
    const PanelPlaces places =
        PlacesInPanel(showDateCreated, controlsOnTop,
                      {.date_last_modified_height = dtDateLastModified.Position().height,
                       .date_created_height = dtDateCreated.Position().height,
                       .label_width = lblLastModified.Position().width,
                       .label_height = lblLastModified.Position().height,
                       .check_box_width = chkCreated.Position().width,
                       .check_box_height = chkCreated.Position().height,
                       .button_height = cmdStamp.Position().height,
                       .frame_height = panel.height - picControls.ClientSize().height});
    move_to(dtDateLastModified, kDateColumn, places.row_top);
    move_to(dtTimeLastModified, kTimeColumn, places.row_top);
    move_to(lblLastModified, places.label_left, places.label_top);
    if (showDateCreated) {
        move_to(dtDateCreated, kDateColumn, places.created_row_top);
        move_to(dtTimeCreated, kTimeColumn, places.created_row_top);
        move_to(chkCreated, places.check_box_left, places.check_box_top);
    }
    // Tab follows the eye.
    if (controlsOnTop) {
        picControls.BringToFront();
    } else {
        picControls.PlaceAfter(OLEDropper1);
    }
    picControls.Move({.left = panel.left,
                      .top = panel.top,
                      .width = panel.width,
                      .height = places.panel_height});
    move_to(cmdStamp, cmdStamp.Position().left, places.button_top);

    MenuItem& sync = menu["mnuOptionsSyncFolders"];
    sync.SetEnabled(!showDateCreated);
    if (showDateCreated) {
        sync.SetChecked(false);  // the stored option stays, for when the pickers go out of view
    } else {
        LoadOption(services_.common.settings, *this, Option::SyncFolderCreatedDates,
                   /*useDefault=*/false);
    }
}

void frmMain::ShowListOrLabel(bool list) {
    if (!list && lvwItems.HasFocus()) {
        picControls.Focus();  // no key would reach anything in a hidden list
    }
    lvwItems.SetVisible(list);
    OLEDropper1.SetVisible(!list);
}

void frmMain::PositionProgressBar() {
    if (StatusBar1.Simple()) {
        return;
    }
    const Bounds bar = StatusBar1.Position();
    ProgressBar1.Move(ProgressBarPlace(bar.left, bar.top, StatusBar1.PanelBounds(1)));
}

}  // namespace tidemark
