// Work: adding items, Stamp and Cancel, the poll, and what follows the end of a stamp.

#include <utility>

#include "mainwindow/control_states.h"
#include "mainwindow/end_of_stamp.h"
#include "mainwindow/frm_main.h"
#include "mainwindow/stamp_times.h"
#include "mainwindow/status_display.h"

namespace tidemark {

void frmMain::AddItems(const std::vector<std::string>& paths) {
    struct Adding {
        int& depth;
        explicit Adding(int& count) : depth(++count) {}
        Adding(const Adding&) = delete;
        Adding& operator=(const Adding&) = delete;
        ~Adding() { --depth; }
    };
    {
        // Both loops let messages run. A count that began inside one would keep the rest from the
        // list until its whole tree is walked; the poll runs on meanwhile.
        const Adding adding(adding_);
        const LongTicksHeld held(services_.common.platform.timers);
        CountItems(ListItems(paths));
    }
    UpdateControls();
}

std::vector<std::shared_ptr<TidemarkItem>> frmMain::ListItems(
    const std::vector<std::string>& paths) {
    UpdateControls();
    std::vector<std::shared_ptr<TidemarkItem>> added;
    for (const std::string& path : paths) {
        if (!oTimer) {
            return {};  // the window closed meanwhile
        }
        if (std::shared_ptr<TidemarkItem> item = oItems.Add(path, &rows, &ImageList1.Keyed())) {
            added.push_back(std::move(item));
        }
        // Icons and type names come from the shell, one path at a time: thousands of paths dropped
        // at once must not hold up the window.
        services_.common.platform.pump.LetPendingMessagesRun();
    }
    return added;
}

void frmMain::CountItems(const std::vector<std::shared_ptr<TidemarkItem>>& items) {
    UpdateControls();
    for (const std::shared_ptr<TidemarkItem>& item : items) {
        // Removed meanwhile, by the user or with the window?
        const bool listed = oItems.Item(item->RootItem()) == item;
        if (listed && !item->CountInProgress() && !item->CountComplete()) {
            item->Count();
        }
        services_.common.platform.pump.LetPendingMessagesRun();
    }
}

void frmMain::cmdStamp_Click() {
    if (oItems.Count() == 0) {
        return;
    }
    if (cmdStamp.Text() == kStampCaption) {
        StampItems();
    } else {
        CancelStamps();
    }
    UpdateControls();
}

void frmMain::StampItems() {
    const auto times = [this] {
        return std::pair(CombineDateAndTime(services_.common.platform.locale,
                                            dtDateLastModified.Value(), dtTimeLastModified.Value()),
                         CombineDateAndTime(services_.common.platform.locale, dtDateCreated.Value(),
                                            dtTimeCreated.Value()));
    };
    times();  // throws, if at all, before anything is forgotten
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
            const auto [last_modified, created] = times();
            // Pressed while paths are being added: the count to come would wipe the stamp away.
            if (!item->CountInProgress() && !item->CountComplete()) {
                item->Count();
            }
            item->Stamp(last_modified, created, menu["mnuOptionsClearReadOnly"].Checked(),
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
    const bool busy = oItems.Busy() || stamp_starting_ || adding_ > 0;
    // A command that the user gives while messages run in here starts the poll anew.
    const unsigned restarts = poll_restarts_;
    RefreshRows();
    services_.common.platform.pump.RunPendingMessagesNow();
    ShowControls();
    if (!oTimer) {
        return;  // closed meanwhile
    }
    oTimer->SetEnabled(false);
    ShowStatus();
    services_.common.platform.pump.RunPendingMessagesNow();
    if (oTimer) {
        oTimer->SetEnabled(busy || poll_restarts_ != restarts);
    }
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
    ControlSituation situation = {.stamping = oItems.BusyStamping() || stamp_starting_,
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
