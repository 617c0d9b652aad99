#pragma once

#include <cstdint>
#include <string_view>

namespace tidemark {

// The three column headers of a list, counted from 0; widths in the list's own units (pixels).
class ListColumns {
  public:
    static constexpr int kCount = 3;

    [[nodiscard]] virtual std::int32_t ColumnWidth(int column) const = 0;
    virtual void SetColumnWidth(int column, std::int32_t width) = 0;

  protected:
    ~ListColumns() = default;
};

// What the options ask of the main window. Each operation may throw ProgramError.
class OptionsHost {
  public:
    // The check mark of a menu item, by its name in the window.
    [[nodiscard]] virtual bool IsChecked(std::string_view item) const = 0;
    virtual void SetChecked(std::string_view item, bool checked) = 0;

    // Arranges the pickers inside their panel.
    virtual void ArrangeControls(bool showDateCreated, bool controlsOnTop) = 0;
    // Keeps the main window above all others, or no longer; its place and size stay.
    virtual void SetTopmost(bool on) = 0;
    // What the main window does when its size changes.
    virtual void Form_Resize() = 0;

    [[nodiscard]] virtual ListColumns& ItemListColumns() = 0;
    // Creates the errors window first, without showing it, when there is none.
    [[nodiscard]] virtual ListColumns& ErrorsListColumns() = 0;

  protected:
    ~OptionsHost() = default;
};

}  // namespace tidemark
