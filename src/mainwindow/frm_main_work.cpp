// Work: adding items, Stamp and Cancel, the poll, and what follows the end of a stamp.

#include <utility>

#include "mainwindow/control_states.h"
#include "mainwindow/end_of_stamp.h"
#include "mainwindow/frm_main.h"
#include "mainwindow/stamp_times.h"
#include "mainwindow/status_display.h"
#include "platform/program_error.h"

namespace tidemark {

void frmMain::AddItems(std::vector<std::string> paths) {
    if (!oTimer) {
        return;  // the window has closed
    }
    sort_when_listed_ = sort_when_listed_ && !adding_.Empty();
    adding_.Append(std::move(paths));
    if (!adding_.Empty()) {
        UpdateControls();  // the rows listed so far can be worked with
    }
}

void frmMain::OnBatchAdded(bool stamp_due) {
    if (sort_when_listed_ && adding_.Empty()) {
        sort_when_listed_ = false;
        SortRows();
    }
    if (stamp_due && oItems.Count() > 0) {
        StampItems();
    }
    UpdateControls();
}

bool frmMain::Busy() const {
    return !adding_.Empty() || stamp_starting_ || oItems.Busy();
}

bool frmMain::Stamping() const {
    return oItems.BusyStamping() || stamp_starting_ || adding_.StampWaits();
}

void frmMain::cmdStamp_Click() {
    if (oItems.Count() == 0) {
        return;
    }
    if (cmdStamp.Text() == kStampCaption) {
        RequestStamp();
    } else {
        CancelStamps();
    }
    UpdateControls();
}

void frmMain::RequestStamp() {
    TakeOverTypedDigits();
    StampTimes(services_.common.platform.locale).Combine(PickedNow());  // throws before any change
    if (adding_.Empty()) {
        StampItems();
    } else {
        adding_.StampWhenListed();
    }
}

PickedTimes frmMain::PickedNow() const {
    return {.last_modified_date = dtDateLastModified.Value(),
            .last_modified_time = dtTimeLastModified.Value(),
            .created_date = dtDateCreated.Value(),
            .created_time = dtTimeCreated.Value()};
}

void frmMain::TakeOverTypedDigits() const {
    for (const DateTimePicker* const picker :
         {&dtDateLastModified, &dtTimeLastModified, &dtDateCreated, &dtTimeCreated}) {
        picker->TakeOverTypedDigits();
    }
}

std::string frmMain::TimesInWords() const {
    for (const DateTimePicker* const picker :
         {&dtDateLastModified, &dtTimeLastModified, &dtDateCreated, &dtTimeCreated}) {
        if (picker->Typing()) {
            return {};  // a press would take over the digits, and a tip must not
        }
    }
    try {
        StampTimes times(services_.common.platform.locale);
        times.Combine(PickedNow());
        return DescribeTimes(times, services_.common.platform.locale);
    } catch (const ProgramError& error) {
        return error.Description();  // what a press of Stamp would say
    }
}

void frmMain::StampItems() {
    StampTimes times(services_.common.platform.locale);
    // Listed files are stamped inside the loop, so it lets messages run between items, and while
    // it runs the button already reads "Cancel". Folders begin when it is through.
    const LongTicksHeld held(services_.common.platform.timers);
    for (const std::shared_ptr<TidemarkItem>& item : oItems) {
        item->ForgetStamp();  // all of them at once: nothing shows half of the stamp before
    }
    stamp_starting_ = true;
    UpdateControls();
    try {
        for (const std::shared_ptr<TidemarkItem>& item : oItems.ItemsNow()) {
            times.Combine(PickedNow());
            // Its path was gone when it was counted: a later count would wipe the stamp away.
            if (!item->CountInProgress() && !item->CountComplete()) {
                item->Count();
            }
            item->Stamp(times.LastModified(), times.Created(),
                        menu["mnuOptionsClearReadOnly"].Checked(),
                        menu["mnuOptionsSyncFolders"].Checked());
            services_.common.platform.pump.LetPendingMessagesRun();
            if (!stamp_starting_) {
                return;  // cancelled, or the window closed
            }
        }
    } catch (...) {
        stamp_starting_ = false;
        throw;
    }
    stamp_starting_ = false;
    bStampRequested = true;
}

void frmMain::CancelStamps() {
    stamp_starting_ = false;
    adding_.CancelStamp();
    bStampRequested = false;
    for (const std::shared_ptr<TidemarkItem>& item : oItems) {
        item->CancelStamp();
    }
    services_.common.platform.pump.RunPendingMessagesNow();
}

void frmMain::chkCreated_Click() {
    dtDateCreated.SetEnabled(chkCreated.Checked());
    dtTimeCreated.SetEnabled(chkCreated.Checked());
}

void frmMain::oTimer_Timer() {
    if (!oTimer) {
        return;
    }
    oTimer->SetEnabled(false);
    const bool busy = Busy();
    // A command that the user gives while messages run in here starts the poll anew.
    const unsigned restarts = poll_restarts_;
    RefreshRows();
    // The timer is on while messages run: a box that one of them opens may stand for minutes, and
    // work goes on inside its loop.
    oTimer->SetEnabled(busy);
    services_.common.platform.pump.RunPendingMessagesNow();
    ShowControls();
    if (!oTimer) {
        return;  // a message closed the window
    }
    oTimer->SetEnabled(false);
    ShowStatus();
    oTimer->SetEnabled(busy || poll_restarts_ != restarts);
    services_.common.platform.pump.RunPendingMessagesNow();
}

void frmMain::RefreshRows() {
    for (std::size_t position = 0; position < rows.Count(); ++position) {
        const ListRow& row = rows.At(position);
        if (const TidemarkItem* const item = oItems.ItemOf(row)) {
            rows.SetSubItem(row, 0, item->CountString());
            rows.SetSubItem(row, 1, item->StatusString());
        }
    }
}

void frmMain::ShowStatus() {
    TidemarkItemCollection::Totals totals = oItems.TotalsOfWork();
    totals.stamping = totals.stamping || stamp_starting_;
    totals.counting = totals.counting || !adding_.Empty();
    const StatusDisplay display = DisplayOf(totals, services_.common.platform.locale);
    taskbar_button_.Show(TaskbarProgressOf(display));
    if (!display.shows_progress) {
        StatusBar1.SetSimpleText(display.text);
        StatusBar1.SetSimple(true);
        ProgressBar1.SetVisible(false);
        return;
    }
    ProgressBar1.SetMaximum(display.progress_maximum);
    ProgressBar1.SetMinimum(0);
    ProgressBar1.SetValue(display.progress_value);
    StatusBar1.SetPanelText(0, display.text);
    StatusBar1.SetSimple(false);
    PositionProgressBar();  // the panel has a place only now
    ProgressBar1.SetVisible(true);
}

void frmMain::UpdateControls() {
    ++poll_restarts_;
    ShowControls();
}

void frmMain::ShowControls() {
    if (!oTimer) {
        return;  // the window is closing
    }
    ControlSituation situation = {.stamping = Stamping(),
                                  .created_checked = chkCreated.Checked(),
                                  .date_created_shown = menu["mnuViewDateCreated"].Checked(),
                                  .list_has_rows = rows.Count() > 0};
    ControlStates states = StatesFor(situation);
    cmdStamp.SetText(states.stamp_button);
    SetCancelButton(states.escape_cancels ? &cmdStamp : nullptr);
    menu["mnuFileStamp"].SetCaption(states.stamp_menu);
    dtDateLastModified.SetEnabled(states.last_modified_enabled);
    dtTimeLastModified.SetEnabled(states.last_modified_enabled);
    dtDateCreated.SetEnabled(states.created_pickers_enabled);
    dtTimeCreated.SetEnabled(states.created_pickers_enabled);
    chkCreated.SetEnabled(states.created_check_enabled);
    menu["mnuOptionsClearReadOnly"].SetEnabled(states.clear_read_only_enabled);
    menu["mnuOptionsReset"].SetEnabled(states.reset_enabled);
    menu["mnuOptionsSyncFolders"].SetEnabled(states.sync_folders_enabled);

    if (!situation.stamping && bStampRequested) {
        bStampRequested = false;
        // However long a message box then stands, the window shows that the work is done, and the
        // poll follows what still counts.
        RefreshRows();
        ShowStatus();
        oTimer->SetEnabled(true);
        HandleEndOfStamp();
        if (!oTimer) {
            return;  // closed from inside a message box
        }
        situation.list_has_rows = rows.Count() > 0;
        states = StatesFor(situation);
    }

    cmdStamp.SetEnabled(states.stamp_enabled);
    menu["mnuFileStamp"].SetEnabled(states.stamp_enabled);
    ShowListOrLabel(states.list_shown);
    cmdStamp.Invalidate();
    oTimer->SetEnabled(true);
}

void frmMain::HandleEndOfStamp() {
    const auto ask = [this](const BoxRequest& request) {
        return services_.boxes.Show(this, request);
    };
    const EndOfStampStep step =
        StepAtEndOfStamp({.prompt_when_done = menu["mnuOptionsPrompt"].Checked(),
                          .clear_automatically = menu["mnuOptionsClearAutomatically"].Checked()});
    switch (step) {
        case EndOfStampStep::kTell:
            ask({.text = "Stamp Complete"});
            break;
        case EndOfStampStep::kAskToRemove:
            if (ask({.text = "Stamp complete.\r\n\r\nRemove completed items?",
                     .buttons = BoxButtons::kYesNo,
                     .icon = BoxIcon::kQuestion}) == BoxAnswer::kYes) {
                mnuFileRemoveCompleted_Click();
            }
            break;
        case EndOfStampStep::kRemoveWithoutAsking:
            mnuFileRemoveCompleted_Click();
            break;
        case EndOfStampStep::kNothing:
            break;
    }
    if (oTimer && menu["mnuOptionsShowErrorsAutomatically"].Checked()) {
        mnuView_Click();
        if (menu["mnuViewErrors"].Enabled()) {
            mnuViewErrors_Click();
        }
    }
}

}  // namespace tidemark
