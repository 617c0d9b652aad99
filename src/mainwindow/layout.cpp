#include "mainwindow/layout.h"

#include <algorithm>

namespace tidemark {
namespace {

constexpr int kMargin = 9;           // above and below the rows
constexpr int kRowGap = 6;           // between the two rows
constexpr int kExtraHeight = 2;      // room for the shift at the bottom
constexpr int kBottomShift = 2;      // the row sits lower when the panel is below the list
constexpr int kLabelRightEdge = 73;  // 5 before the date column

}  // namespace

FormPlaces PlacesInForm(bool controls_on_top, int client_width, int panel_height,
                        int status_bar_top) {
    FormPlaces places;
    places.panel = {.left = 0, .top = 0, .width = client_width, .height = panel_height};
    places.list = {.left = 0,
                   .top = panel_height,
                   .width = client_width,
                   .height = status_bar_top - panel_height};
    if (!controls_on_top) {
        places.panel.top = status_bar_top - panel_height;
        places.list.top = 0;
        places.list.height = places.panel.top;
    }
    return places;
}

PanelPlaces PlacesInPanel(bool show_date_created, bool controls_on_top, const PanelSizes& sizes) {
    const int row_height = sizes.date_last_modified_height;
    PanelPlaces places;
    places.row_top = kMargin + (controls_on_top ? 0 : kBottomShift);
    // A label too wide for its place keeps its beginning and comes nearer to the pickers.
    places.label_left = std::max(0, kLabelRightEdge - sizes.label_width);
    places.label_top = places.row_top + (row_height - sizes.label_height) / 2;
    places.panel_height = row_height + kMargin + kMargin + kExtraHeight;

    places.created_row_top = places.row_top + row_height + kRowGap;
    places.check_box_left = std::max(0, kDateColumn - sizes.check_box_width);
    places.check_box_top =
        places.created_row_top + (sizes.date_created_height - sizes.check_box_height) / 2;
    if (show_date_created) {
        places.panel_height += sizes.date_created_height + kRowGap;
    }

    places.button_top = (places.panel_height - sizes.frame_height - sizes.button_height) / 2;
    return places;
}

Bounds ProgressBarPlace(int status_bar_left, int status_bar_top, const Bounds& part) {
    return {.left = status_bar_left + part.left + 4,
            .top = status_bar_top + part.top + 3,
            .width = part.width - 12,
            .height = part.height - 6};
}

}  // namespace tidemark
