#include "mainwindow/control_states.h"

namespace tidemark {

ControlStates StatesFor(const ControlSituation& situation) {
    ControlStates states;
    states.stamp_enabled = situation.list_has_rows;
    states.list_shown = situation.list_has_rows;
    if (situation.stamping) {
        states.stamp_button = kCancelCaption;
        states.stamp_menu = kCancelCaption;
        states.escape_cancels = true;
        return states;
    }
    states.stamp_button = kStampCaption;
    states.stamp_menu = "&Stamp\tEnter";
    states.last_modified_enabled = true;
    states.created_pickers_enabled = situation.created_checked;
    states.created_check_enabled = true;
    states.clear_read_only_enabled = true;
    states.reset_enabled = true;
    states.sync_folders_enabled = !situation.date_created_shown;
    return states;
}

MenuStates MenuStatesFor(const MenuSituation& situation) {
    return {.remove_selected = situation.selected_rows,
            .remove_completed = situation.any_stamp_complete_without_errors,
            .remove_all = situation.rows,
            .select_all = situation.rows,
            .select_none = situation.selected_rows,
            .recount = situation.items && situation.any_count_complete,
            .errors = situation.errors_exist};
}

}  // namespace tidemark
