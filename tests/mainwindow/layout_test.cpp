#include "mainwindow/layout.h"

#include <gtest/gtest.h>

namespace tidemark {
namespace {

constexpr PanelSizes kSizes = {.date_last_modified_height = 21,
                               .date_created_height = 21,
                               .label_width = 68,
                               .label_height = 13,
                               .check_box_width = 66,
                               .check_box_height = 15,
                               .button_height = 25,
                               .frame_height = 0};

TEST(Layout, ControlsOnTopPutThePanelAboveTheList) {
    const FormPlaces places = PlacesInForm(/*controls_on_top=*/true, 640, 68, 440);
    EXPECT_EQ(places.panel, (Bounds{0, 0, 640, 68}));
    EXPECT_EQ(places.list, (Bounds{0, 68, 640, 372}));
}

TEST(Layout, ControlsOnBottomPutThePanelJustAboveTheStatusBarWithNoGap) {
    const FormPlaces places = PlacesInForm(/*controls_on_top=*/false, 640, 68, 440);
    EXPECT_EQ(places.panel, (Bounds{0, 372, 640, 68}));
    EXPECT_EQ(places.list, (Bounds{0, 0, 640, 372}));
    EXPECT_EQ(places.list.top + places.list.height, places.panel.top);
    EXPECT_EQ(places.panel.top + places.panel.height, 440);
}

TEST(Layout, AClientAreaTooSmallGivesANegativeListHeight) {
    EXPECT_LT(PlacesInForm(/*controls_on_top=*/true, 0, 68, 10).list.height, 0);
    EXPECT_LT(PlacesInForm(/*controls_on_top=*/false, 0, 68, 10).list.height, 0);
}

TEST(Layout, WithDateCreatedThePanelHoldsTwoRows) {
    const PanelPlaces places = PlacesInPanel(/*show_date_created=*/true, true, kSizes);
    EXPECT_EQ(places.row_top, 9);
    EXPECT_EQ(places.created_row_top, 9 + 21 + 6);
    EXPECT_EQ(places.panel_height, 21 + 21 + 9 + 6 + 9 + 2);
    EXPECT_EQ(places.label_left, 73 - 68);
    EXPECT_EQ(places.label_top, 9 + 4);
    EXPECT_EQ(places.check_box_left, 78 - 66);
    EXPECT_EQ(places.check_box_top, 36 + 3);
    EXPECT_EQ(places.button_top, (68 - 25) / 2);
}

TEST(Layout, WithoutDateCreatedThePanelHoldsOneRow) {
    const PanelPlaces places = PlacesInPanel(/*show_date_created=*/false, true, kSizes);
    EXPECT_EQ(places.panel_height, 21 + 9 + 9 + 2);
    EXPECT_EQ(places.button_top, (41 - 25) / 2);
}

TEST(Layout, TheRowsSitTwoLowerWhenThePanelIsAtTheBottom) {
    const PanelPlaces top = PlacesInPanel(true, /*controls_on_top=*/true, kSizes);
    const PanelPlaces bottom = PlacesInPanel(true, /*controls_on_top=*/false, kSizes);
    EXPECT_EQ(bottom.row_top, top.row_top + 2);
    EXPECT_EQ(bottom.created_row_top, top.created_row_top + 2);
    EXPECT_EQ(bottom.panel_height, top.panel_height);
}

TEST(Layout, ThePanelsBorderIsTakenOffBeforeTheButtonIsCentred) {
    PanelSizes sizes = kSizes;
    sizes.frame_height = 4;
    EXPECT_EQ(PlacesInPanel(true, true, sizes).button_top, (68 - 4 - 25) / 2);
}

TEST(Layout, TheProgressBarStandsInsideItsPart) {
    EXPECT_EQ(ProgressBarPlace(0, 440, {.left = 250, .top = 2, .width = 300, .height = 18}),
              (Bounds{254, 445, 288, 12}));
}

TEST(Layout, ALabelTooWideForItsPlaceIsNotCutOffAtItsBeginning) {
    const PanelPlaces places = PlacesInPanel(true, true,
                                             {.date_last_modified_height = 21,
                                              .date_created_height = 21,
                                              .label_width = 76,
                                              .label_height = 13,
                                              .check_box_width = 80,
                                              .check_box_height = 13,
                                              .button_height = 25});
    EXPECT_EQ(places.label_left, 0);
    EXPECT_EQ(places.check_box_left, 0);
}

}  // namespace
}  // namespace tidemark
