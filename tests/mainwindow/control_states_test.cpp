#include "mainwindow/control_states.h"

#include <gtest/gtest.h>

namespace tidemark {
namespace {

TEST(ControlStates, AnEmptyListDisablesStampAndShowsTheDropLabel) {
    const ControlStates states = StatesFor({.list_has_rows = false});
    EXPECT_FALSE(states.stamp_enabled);
    EXPECT_FALSE(states.list_shown);
    EXPECT_EQ(states.stamp_button, "Stamp");
}

TEST(ControlStates, AStampTurnsTheButtonIntoCancelAndDisablesThePickers) {
    const ControlStates states =
        StatesFor({.stamping = true, .created_checked = true, .list_has_rows = true});
    EXPECT_EQ(states.stamp_button, "Cancel");
    EXPECT_EQ(states.stamp_menu, "Cancel");
    EXPECT_TRUE(states.escape_cancels);
    EXPECT_TRUE(states.stamp_enabled);
    EXPECT_FALSE(states.last_modified_enabled);
    EXPECT_FALSE(states.created_pickers_enabled);
    EXPECT_FALSE(states.created_check_enabled);
    EXPECT_FALSE(states.clear_read_only_enabled);
    EXPECT_FALSE(states.sync_folders_enabled);
    EXPECT_FALSE(states.reset_enabled);
}

TEST(ControlStates, AtRestTheMenuNamesEnterAndEscapeDoesNothing) {
    const ControlStates states = StatesFor({.list_has_rows = true});
    EXPECT_EQ(states.stamp_menu, "&Stamp\tEnter");
    EXPECT_FALSE(states.escape_cancels);
    EXPECT_TRUE(states.last_modified_enabled);
    EXPECT_TRUE(states.created_check_enabled);
    EXPECT_TRUE(states.clear_read_only_enabled);
    EXPECT_TRUE(states.reset_enabled);
    EXPECT_TRUE(states.list_shown);
}

TEST(ControlStates, TheCreatedPickersFollowTheirCheckBox) {
    EXPECT_TRUE(StatesFor({.created_checked = true}).created_pickers_enabled);
    EXPECT_FALSE(StatesFor({.created_checked = false}).created_pickers_enabled);
}

TEST(ControlStates, FolderDatesFollowOnlyWhileTheCreatedPickersAreOutOfView) {
    EXPECT_TRUE(StatesFor({.date_created_shown = false}).sync_folders_enabled);
    EXPECT_FALSE(StatesFor({.date_created_shown = true}).sync_folders_enabled);
}

TEST(MenuStates, WithNothingSelectedRemoveSelectedIsDisabled) {
    const MenuStates states = MenuStatesFor({.rows = true, .items = true});
    EXPECT_FALSE(states.remove_selected);
    EXPECT_FALSE(states.select_none);
    EXPECT_TRUE(states.remove_all);
    EXPECT_TRUE(states.select_all);
}

TEST(MenuStates, RecountIsDisabledUntilAnItemHasFinishedCounting) {
    EXPECT_FALSE(MenuStatesFor({.items = true, .any_count_complete = false}).recount);
    EXPECT_TRUE(MenuStatesFor({.items = true, .any_count_complete = true}).recount);
    EXPECT_FALSE(MenuStatesFor({.items = false, .any_count_complete = true}).recount);
}

TEST(MenuStates, ErrorsAndRemoveCompletedFollowTheCollection) {
    EXPECT_TRUE(MenuStatesFor({.errors_exist = true}).errors);
    EXPECT_FALSE(MenuStatesFor({}).errors);
    EXPECT_TRUE(MenuStatesFor({.any_stamp_complete_without_errors = true}).remove_completed);
    EXPECT_FALSE(MenuStatesFor({}).remove_completed);
}

}  // namespace
}  // namespace tidemark
