#pragma once

#include "platform/geometry.h"

namespace tidemark {

// Where the main window's two big parts go. The drop label always covers the list.
struct FormPlaces {
    Bounds panel;
    Bounds list;
};

// Fills the client area between the panel and the status bar with the list. The results can have
// negative sizes when the client area is too small; the caller then moves nothing.
[[nodiscard]] FormPlaces PlacesInForm(bool controls_on_top, int client_width, int panel_height,
                                      int status_bar_top);

// Sizes of the controls in the picker panel, as they are before they are arranged.
struct PanelSizes {
    int date_last_modified_height = 0;
    int date_created_height = 0;
    int label_width = 0;
    int label_height = 0;
    int check_box_width = 0;
    int check_box_height = 0;
    int button_height = 0;
    int frame_height = 0;  // what the panel's border takes from its height
};

// Where the controls in the panel go. Only positions change; sizes stay, but for the panel's
// height. The Created row's places mean something only when it is shown.
struct PanelPlaces {
    int row_top = 0;  // of the Last-Modified pickers
    int created_row_top = 0;
    int label_left = 0;
    int label_top = 0;
    int check_box_left = 0;
    int check_box_top = 0;
    int panel_height = 0;
    int button_top = 0;
};

inline constexpr int kDateColumn = 78;   // left edge of the date pickers
inline constexpr int kTimeColumn = 195;  // left edge of the time pickers

[[nodiscard]] PanelPlaces PlacesInPanel(bool show_date_created, bool controls_on_top,
                                        const PanelSizes& sizes);

// The progress bar inside a part of the status bar, whose rectangle is relative to the bar.
[[nodiscard]] Bounds ProgressBarPlace(int status_bar_left, int status_bar_top, const Bounds& part);

}  // namespace tidemark
