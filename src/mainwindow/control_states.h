#pragma once

#include <string>

namespace tidemark {

// What decides how the controls look.
struct ControlSituation {
    bool stamping = false;
    bool created_checked = false;     // the "Created:" check box
    bool date_created_shown = false;  // the Date Created view
    bool list_has_rows = false;
};

// Captions and enabled states of the controls and menu items that depend on it.
struct ControlStates {
    std::string stamp_button;  // caption
    std::string stamp_menu;    // caption, with its accelerator
    bool stamp_enabled = false;
    bool escape_cancels = false;
    bool last_modified_enabled = false;
    bool created_pickers_enabled = false;
    bool created_check_enabled = false;
    bool clear_read_only_enabled = false;
    bool sync_folders_enabled = false;
    bool reset_enabled = false;
    bool list_shown = false;  // else the drop label
};

[[nodiscard]] ControlStates StatesFor(const ControlSituation& situation);

// The button's captions; a press is read by them.
inline constexpr const char* kStampCaption = "Stamp";
inline constexpr const char* kCancelCaption = "Cancel";

// What the File, Edit and View menus ask when they open.
struct MenuSituation {
    bool rows = false;
    bool selected_rows = false;
    bool items = false;
    bool any_count_complete = false;
    bool any_stamp_complete_without_errors = false;
    bool errors_exist = false;
};

struct MenuStates {
    bool remove_selected = false;
    bool remove_completed = false;
    bool remove_all = false;
    bool select_all = false;
    bool select_none = false;
    bool recount = false;
    bool errors = false;
};

[[nodiscard]] MenuStates MenuStatesFor(const MenuSituation& situation);

}  // namespace tidemark
